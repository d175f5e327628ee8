#include "framework/CollectionsEx/INIFile.h"

#include "framework/CollectionsEx/INIText.h"
#include "persistence/ParametersImpl.h"
#include "runtime/Factories.h"

namespace {

CREFString View(const std::wstring& text) { return CREFString(text.data(), int32_t(text.size())); }

SmartPtr<IParameters> NewValues() { return SmartPtr<IParametersCreatable>::Adopt(BASEObject::CreateParameters()).As<IParameters>(); }

// The text of a stored value: a string as it stands, a number as ISCreate writes it.
std::wstring TextOf(IVariant* value)
{
    if (!value)
        return {};
    SmartPtr<IUnknown> held;
    SmartPtr<IString> text;
    if (value->IsString())
        value->get_String(text.Receive());
    else if (value->IsObject())
        value->get_Object(held.Receive());
    else
        text.Attach(ISCreate(value));
    if (text)
        held = SmartPtr<IUnknown>(text.get());
    CREFString view(held.get());
    return view.IsEmpty() ? std::wstring() : std::wstring(view.m_Buffer, size_t(view.m_Length));
}

} // namespace

int32_t CINIFile::FinalConstruct()
{
    m_Filter.Attach(ISCreate(L"INI file (*.ini)|*.ini||"));
    return S_OK;
}

IParameters* CINIFile::Current()
{
    for (Section& section : m_Sections) {
        if (ParameterNameEquals(View(section.m_Name), View(m_Section)))
            return section.m_Values.get();
    }
    SmartPtr<IParameters> values = NewValues();
    if (!values)
        return nullptr;
    m_Sections.push_back(Section{m_Section, values});
    return m_Sections.back().m_Values.get();
}

int32_t CINIFile::Load()
{
    CREFString file(m_Filename.get());
    if (file.IsEmpty())
        return E_FAIL;
    INIDocument document;
    int32_t result = INILoadFile(file, &document);
    if (result < 0)
        return result;
    std::vector<Section> sections;
    for (const INISection& read : document) {
        SmartPtr<IParameters> values = NewValues();
        auto creatable = values.As<IParametersCreatable>();
        if (!creatable)
            return E_FAIL;
        for (const INIEntry& entry : read.m_Entries) {
            auto key = SmartPtr<IString>::Adopt(ISCreate(View(entry.m_Key)));
            auto text = SmartPtr<IString>::Adopt(ISCreate(View(entry.m_Value)));
            creatable->Add(key, text, nullptr, 0);
        }
        sections.push_back(Section{read.m_Name, values});
    }
    m_Sections.swap(sections);
    m_HasFile = 1;
    m_Modified = 0;
    return S_OK;
}

int32_t CINIFile::Save()
{
    CREFString file(m_Filename.get());
    if (file.IsEmpty())
        return E_FAIL;
    INIDocument document;
    for (const Section& section : m_Sections) {
        int count = 0;
        section.m_Values->get_Count(&count);
        // A section only looked at is no part of the file.
        if (count < 1)
            continue;
        INISection written{section.m_Name, {}};
        for (int i = 0; i < count; ++i) {
            SmartPtr<IString> name;
            SmartPtr<IVariant> value;
            if (section.m_Values->Iterate(i, name.Receive(), value.Receive(), nullptr, nullptr) < 0)
                continue;
            CREFString key(name.get());
            written.m_Entries.push_back(
                INIEntry{key.IsEmpty() ? std::wstring() : std::wstring(key.m_Buffer, size_t(key.m_Length)),
                         TextOf(value)});
        }
        document.push_back(std::move(written));
    }
    int32_t result = INISaveFile(file, document);
    if (result >= 0) {
        m_HasFile = 1;
        m_Modified = 0;
    }
    return result;
}

int32_t CINIFile::put_Section(IString* section)
{
    CREFString name(section);
    m_Section.assign(name.IsEmpty() ? L"" : name.m_Buffer, size_t(name.IsEmpty() ? 0 : name.m_Length));
    return S_OK;
}

int32_t CINIFile::Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags)
{
    IParameters* values = Current();
    auto creatable = QueryAs<IParametersCreatable>(values);
    return creatable ? creatable->Add(name, value, descriptor, flags) : E_FAIL;
}

// Every operation below is the chosen section's.

int32_t CINIFile::get_Count(int* count) { return InSection(&IParameters::get_Count, count); }
int32_t CINIFile::get_Item(int index, IUnknown** item) { return InSection(&IParameters::get_Item, index, item); }
int32_t CINIFile::get_Index(IUnknown* key, int* index) { return InSection(&IParameters::get_Index, key, index); }
int32_t CINIFile::get_ItemName(int index, IString** name) { return InSection(&IParameters::get_ItemName, index, name); }
int32_t CINIFile::Rename(int index, IString* name) { return InSection(&IParameters::Rename, index, name); }
int32_t CINIFile::CollectionLock() { return InSection(&IParameters::CollectionLock); }
int32_t CINIFile::CollectionUnlock() { return InSection(&IParameters::CollectionUnlock); }
int32_t CINIFile::IsCollectionLocked() { return InSection(&IParameters::IsCollectionLocked); }
int32_t CINIFile::Iterate(int index, IString** name, IVariant** value, IUnknown** descriptor, int* flags)
{
    return InSection(&IParameters::Iterate, index, name, value, descriptor, flags);
}
int32_t CINIFile::get_ItemVariant(int index, IVariant** out) { return InSection(&IParameters::get_ItemVariant, index, out); }
int32_t CINIFile::put_Item(int index, IUnknown* value) { return InSection(&IParameters::put_Item, index, value); }
int32_t CINIFile::get_ItemDescriptor(int index, IUnknown** descriptor)
{
    return InSection(&IParameters::get_ItemDescriptor, index, descriptor);
}
int32_t CINIFile::put_ItemDescriptor(int index, IUnknown* descriptor)
{
    return InSection(&IParameters::put_ItemDescriptor, index, descriptor);
}
int32_t CINIFile::get_ItemFlags(int index, int* flags) { return InSection(&IParameters::get_ItemFlags, index, flags); }
int32_t CINIFile::put_ItemFlags(int index, int flags) { return InSection(&IParameters::put_ItemFlags, index, flags); }
int32_t CINIFile::Get(IUnknown* key, IUnknown** value, IUnknown** descriptor, int* flags, int mode)
{
    IParameters* values = Current();
    return values ? values->Get(key, value, descriptor, flags, mode) : -1;
}
int32_t CINIFile::AddNOLOCK(IString* name, IUnknown* value, IUnknown* descriptor, int flags)
{
    return InSection(&IParameters::AddNOLOCK, name, value, descriptor, flags);
}
int32_t CINIFile::get_ItemNOLOCK(int index, IUnknown** out) { return InSection(&IParameters::get_ItemNOLOCK, index, out); }
int32_t CINIFile::put_ItemNOLOCK(int index, IUnknown* value) { return InSection(&IParameters::put_ItemNOLOCK, index, value); }
int32_t CINIFile::get_ItemNameNOLOCK(int index, IString** name) { return InSection(&IParameters::get_ItemNameNOLOCK, index, name); }
int32_t CINIFile::Copy(IParameters* source) { return InSection(&IParameters::Copy, source); }
int32_t CINIFile::Sort(int mode) { return InSection(&IParameters::Sort, mode); }
int32_t CINIFile::Params_SaveCSV(IDataStream* stream, int mode) { return InSection(&IParameters::Params_SaveCSV, stream, mode); }
int32_t CINIFile::Params_SaveXML(IDataStream* stream, int mode) { return InSection(&IParameters::Params_SaveXML, stream, mode); }
int32_t CINIFile::Params_LoadXML(IDataStream* stream, int mode, int reserved)
{
    return InSection(&IParameters::Params_LoadXML, stream, mode, reserved);
}
int32_t CINIFile::Params_SaveFolderStream(IDataStream* stream, int mode)
{
    return InSection(&IParameters::Params_SaveFolderStream, stream, mode);
}
int32_t CINIFile::Params_LoadFolderStream(IDataStream* stream, int mode)
{
    return InSection(&IParameters::Params_LoadFolderStream, stream, mode);
}
int32_t CINIFile::Params_SaveXMLUnk(IDataStream* stream, int mode) { return InSection(&IParameters::Params_SaveXMLUnk, stream, mode); }
int32_t CINIFile::Params_LoadXMLUnk(IDataStream* stream, int mode) { return InSection(&IParameters::Params_LoadXMLUnk, stream, mode); }
int32_t CINIFile::getParameter(PARAMETEROBJECT* item, IUnknown** out) { return InSection(&IParameters::getParameter, item, out); }
