// Value objects: strings, variants, monikers.
#pragma once
#include "runtime/interfaces/Unknown.h"

struct INamedCollection;

struct IString : IUnknown {
    static const IID& Iid() { return IID_IString; }
    // A view of the text, valid until the object changes or dies; not terminated by contract.
    virtual int32_t GetBuffer(wchar_t** text, int* length) = 0;
};

struct ICreatableString : IString {
    static const IID& Iid() { return IID_ICreatableString; }
    virtual int32_t Clone(tagREFString text) = 0;
    virtual int32_t Append(tagREFString text) = 0;
};

// Variant types.
constexpr short VARIANT_NONE = 0;
constexpr short VARIANT_INTEGER = 1;
constexpr short VARIANT_DOUBLE = 2;

struct IVariant : IUnknown {
    static const IID& Iid() { return IID_IVariant; }
    virtual short get_Type() = 0;
    virtual double get_Double() = 0;
    virtual int get_Integer() = 0;
    virtual int32_t put_Integer(int value) = 0;
    virtual int32_t put_Double(double value) = 0;
    virtual short IsObject() = 0;
    virtual int32_t get_Object(IUnknown** out) = 0;
    virtual int32_t put_Object(IUnknown* value) = 0;
    virtual short IsString() = 0;
    virtual int32_t get_String(IString** out) = 0;
    virtual int32_t put_String(IString* value) = 0;
};

struct ICollectionMoniker : IUnknown {
    static const IID& Iid() { return IID_ICollectionMoniker; }
    virtual int32_t Bind(INamedCollection* collection, int mode) = 0;
    virtual int32_t get_Object(const IID& iid, void** out) = 0;
    virtual int32_t get_Name(IString** out) = 0;
};
