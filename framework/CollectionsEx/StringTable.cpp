#include "framework/CollectionsEx/StringTable.h"

#include "framework/CollectionsEx/RegistryFile.h"
#include "runtime/ValueConversion.h"

int32_t CStringTable::get_Table(IString* key, INamedCollection** table)
{
    if (!table)
        return E_POINTER;
    *table = nullptr;
    if (!key)
        return E_INVALIDARG;
    // VX_STRINGTABLE names another file, as VX_REGISTRY does for the registry.
    auto document = CachedINIDocument(FileBesideModules("VX_STRINGTABLE", "stringtable.ini"));
    const INISection* section = INIFindSection(*document, CREFString(key));
    if (!section)
        return E_FAIL;
    auto texts = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
    if (!texts)
        return E_FAIL;
    for (const INIEntry& entry : section->m_Entries) {
        auto id = SmartPtr<IString>::Adopt(ISCreate(CREFString(entry.m_Key.data(), int32_t(entry.m_Key.size()))));
        auto text = SmartPtr<IString>::Adopt(ISCreate(CREFString(entry.m_Value.data(), int32_t(entry.m_Value.size()))));
        texts->Add(id, text, nullptr, 0);
    }
    *table = texts.As<INamedCollection>().Detach();
    return *table ? S_OK : E_FAIL;
}
