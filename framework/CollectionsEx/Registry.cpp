#include "framework/CollectionsEx/Registry.h"

#include "framework/CollectionsEx/RegistryFile.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"

namespace {

CREFString View(const std::wstring& text) { return CREFString(text.data(), int32_t(text.size())); }

const INIEntry* FindValue(const INIDocument& document, tagREFString section, tagREFString key)
{
    const INISection* found = INIFindSection(document, section);
    return found ? INIFindEntry(*found, key) : nullptr;
}

} // namespace

int32_t CRegistry::get_Value(IString* section, IString* key, IString** value)
{
    if (!value)
        return E_POINTER;
    if (!section || !key)
        return E_INVALIDARG;
    auto document = RegistryDocument();
    const INIEntry* entry = FindValue(*document, CREFString(section), CREFString(key));
    if (!entry)
        return E_FAIL;
    *value = ISCreate(View(entry->m_Value));
    return *value ? S_OK : E_FAIL;
}

int32_t CRegistry::get_Section(IString* section, INamedCollection** entries)
{
    if (!entries)
        return E_POINTER;
    if (!section)
        return E_INVALIDARG;
    auto document = RegistryDocument();
    const INISection* found = INIFindSection(*document, CREFString(section));
    if (!found)
        return E_FAIL;
    auto parameters = SmartPtr<IParametersCreatable>::Adopt(BASEObject::CreateParameters());
    if (!parameters)
        return E_FAIL;
    for (const INIEntry& entry : found->m_Entries) {
        auto name = SmartPtr<IString>::Adopt(ISCreate(View(entry.m_Key)));
        auto text = SmartPtr<IString>::Adopt(ISCreate(View(entry.m_Value)));
        parameters->Add(name, text, nullptr, 0);
    }
    *entries = parameters.As<INamedCollection>().Detach();
    return *entries ? S_OK : E_FAIL;
}

int32_t CRegistry::get_String(const wchar_t* section, const wchar_t* key, wchar_t* buffer)
{
    if (!buffer)
        return E_POINTER;
    if (!section || !key)
        return E_INVALIDARG;
    auto document = RegistryDocument();
    const INIEntry* entry = FindValue(*document, CREFString(section), CREFString(key));
    if (!entry)
        return E_FAIL;
    constexpr size_t kRoom = REGISTRY_STRING_BYTES / sizeof(wchar_t);
    size_t length = entry->m_Value.size() < kRoom - 1 ? entry->m_Value.size() : kRoom - 1;
    entry->m_Value.copy(buffer, length);
    buffer[length] = L'\0';
    return S_OK;
}
