// The component registry: records of components, and the collection of them all.
#pragma once
#include "runtime/interfaces/Values.h"

// Fields of a component record.
constexpr int COMPONENT_FIELD_NAME = 1;
constexpr int COMPONENT_FIELD_MODULE = 4;

struct IComponentString : IUnknown {
    static const IID& Iid() { return IID_IComponentString; }
    // Binds the record to an object, whose component it then describes.
    virtual int32_t put_Object(IUnknown* object) = 0;
    virtual int32_t get_Field(int index, IString** value) = 0;
    virtual int32_t CreateObject(const IID& iid, void** out) = 0;
    virtual int32_t put_Field(int index, tagREFString value) = 0;
};

struct IComponentCollection : IUnknown {
    static const IID& Iid() { return IID_IComponentCollection; }
    virtual int32_t get_Count(int* count) = 0;
    virtual int32_t get_Item(int index, IUnknown** item) = 0;
    // key: the component's name as an IString; negative if unknown.
    virtual int32_t get_Index(IUnknown* key, int* index) = 0;
    // Creates the named component as iid, hands out a named global object, or with a
    // null iid delivers the component's record.
    virtual int32_t CreateObject(tagREFString name, IID* iid, void** out) = 0;
};
