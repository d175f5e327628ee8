#include "framework/CollectionsEx/StringTable.h"

#include <map>
#include <mutex>
#include <string>

#include "framework/CollectionsEx/RegistryFile.h"
#include "runtime/ValueConversion.h"

namespace {

// The tables made from one reading of the file. A new reading (the file changed)
// starts the set afresh; the tables of the old one go with the callers' references.
struct MadeTables {
    std::shared_ptr<const INIDocument> m_Document;
    std::map<std::wstring, SmartPtr<INamedCollection>> m_Tables;
};

SmartPtr<INamedCollection> MakeTable(const INISection& section)
{
    auto texts = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
    if (!texts)
        return nullptr;
    for (const INIEntry& entry : section.m_Entries) {
        auto id = SmartPtr<IString>::Adopt(ISCreate(CREFString(entry.m_Key.data(), int32_t(entry.m_Key.size()))));
        auto text = SmartPtr<IString>::Adopt(ISCreate(CREFString(entry.m_Value.data(), int32_t(entry.m_Value.size()))));
        texts->Add(id, text, nullptr, 0);
    }
    return texts.As<INamedCollection>();
}

} // namespace

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
    // Every verse of every song asks for its table: it is made once for each reading
    // of the file and handed out again. Kept to the end of the process on purpose.
    static std::mutex gGuard;
    static MadeTables* const gMade = new MadeTables;
    std::lock_guard<std::mutex> lock(gGuard);
    if (gMade->m_Document != document) {
        gMade->m_Tables.clear();
        gMade->m_Document = document;
    }
    CREFString name(key);
    SmartPtr<INamedCollection>& made =
        gMade->m_Tables[name.m_Length > 0 && name.m_Buffer ? std::wstring(name.m_Buffer, size_t(name.m_Length)) : std::wstring()];
    if (!made)
        made = MakeTable(*section);
    *table = made.Copy();
    return *table ? S_OK : E_FAIL;
}
