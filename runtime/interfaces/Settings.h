// Settings: the registry, string tables, INI files.
#pragma once
#include "runtime/interfaces/Collections.h"

struct IRegistry : IUnknown {
    static const IID& Iid() { return IID_IRegistry; }
    virtual int32_t get_Value(IString* section, IString* key, IString** value) = 0;
    virtual int32_t get_Section(IString* section, INamedCollection** entries) = 0;
};

// Room, in bytes, of the caller's buffer for IRegistryEx::get_String.
constexpr int REGISTRY_STRING_BYTES = 712;

struct IRegistryEx : IUnknown {
    static const IID& Iid() { return IID_IRegistryEx; }
    // Copies a text value into the caller's zeroed buffer of REGISTRY_STRING_BYTES;
    // the buffer stays empty when there is none.
    virtual int32_t get_String(const wchar_t* section, const wchar_t* key, wchar_t* buffer) = 0;
};

struct IStringTable : IUnknown {
    static const IID& Iid() { return IID_IStringTable; }
    virtual int32_t get_Table(IString* key, INamedCollection** table) = 0;
};

struct IINIFile : IUnknown {
    static const IID& Iid() { return IID_IINIFile; }
    // The section for the following load or save.
    virtual int32_t put_Section(IString* section) = 0;
};
