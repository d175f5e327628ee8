// The registry: settings of the installation, read from an INI file. Every call sees
// the file as it is now.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CRegistry : public CObject<CRegistry>, public IObjectInfoImpl<CRegistry>, public IRegistry, public IRegistryEx {
public:
    static constexpr wchar_t kObjectName[] = L"Registry";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IRegistry>, Entry<IRegistryEx>>;

    int32_t get_Value(IString* section, IString* key, IString** value) override;
    // The section's values as a named collection: item names are the keys, items the
    // values as strings, in the order of the file.
    int32_t get_Section(IString* section, INamedCollection** entries) override;
    // Copies at most REGISTRY_STRING_BYTES, terminator included; a longer value is cut.
    int32_t get_String(const wchar_t* section, const wchar_t* key, wchar_t* buffer) override;
};
