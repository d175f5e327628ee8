// An INI file as parameters: Load reads every section, put_Section chooses the one
// that IParameters shows and that Add fills, Save writes them all back.
#pragma once
#include <string>
#include <vector>

#include "persistence/FileArchiveImpl.h"
#include "runtime/ObjectInfo.h"

class CINIFile : public CObject<CINIFile>,
                 public IObjectInfoImpl<CINIFile>,
                 public IFileArchiveImpl<CINIFile, IFileArchive>,
                 public IINIFile,
                 public IParameters,
                 public IParametersCreatable {
public:
    static constexpr wchar_t kObjectName[] = L"INIFile";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<IFileArchiveImpl<CINIFile, IFileArchive>>, Entry<IINIFile>,
                              Entry<ISimpleCollection, IParameters>, Entry<INamedCollection, IParameters>,
                              Entry<IParameters>, Entry<IParametersCreatable>>;

    int32_t FinalConstruct() override;

    // IFileArchive: the file form is always INI, whatever the extension.
    int32_t Load() override;
    int32_t Save() override;

    // IINIFile
    int32_t put_Section(IString* section) override;

    // IParametersCreatable: adds to the chosen section.
    int32_t Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags) override;

    // IParameters, of the chosen section.
    int32_t get_Count(int* count) override;
    int32_t get_Item(int index, IUnknown** item) override;
    int32_t get_Index(IUnknown* key, int* index) override;
    int32_t get_ItemName(int index, IString** name) override;
    int32_t Rename(int index, IString* name) override;
    int32_t CollectionLock() override;
    int32_t CollectionUnlock() override;
    int32_t IsCollectionLocked() override;
    int32_t Iterate(int index, IString** name, IVariant** value, IUnknown** descriptor, int* flags) override;
    int32_t get_ItemVariant(int index, IVariant** out) override;
    int32_t put_Item(int index, IUnknown* value) override;
    int32_t get_ItemDescriptor(int index, IUnknown** descriptor) override;
    int32_t put_ItemDescriptor(int index, IUnknown* descriptor) override;
    int32_t get_ItemFlags(int index, int* flags) override;
    int32_t put_ItemFlags(int index, int flags) override;
    int32_t Get(IUnknown* key, IUnknown** value, IUnknown** descriptor, int* flags, int mode) override;
    int32_t AddNOLOCK(IString* name, IUnknown* value, IUnknown* descriptor, int flags) override;
    int32_t get_ItemNOLOCK(int index, IUnknown** out) override;
    int32_t put_ItemNOLOCK(int index, IUnknown* value) override;
    int32_t get_ItemNameNOLOCK(int index, IString** name) override;
    int32_t Copy(IParameters* source) override;
    int32_t Sort(int mode) override;
    int32_t Params_SaveCSV(IDataStream* stream, int mode) override;
    int32_t Params_SaveXML(IDataStream* stream, int mode) override;
    int32_t Params_LoadXML(IDataStream* stream, int mode, int reserved) override;
    int32_t Params_SaveFolderStream(IDataStream* stream, int mode) override;
    int32_t Params_LoadFolderStream(IDataStream* stream, int mode) override;
    int32_t Params_SaveXMLUnk(IDataStream* stream, int mode) override;
    int32_t Params_LoadXMLUnk(IDataStream* stream, int mode) override;
    int32_t getParameter(PARAMETEROBJECT* item, IUnknown** out) override;

private:
    struct Section {
        std::wstring m_Name;
        SmartPtr<IParameters> m_Values;
    };

    // The chosen section, made empty when the file has none of that name; null only
    // when no parameter collection can be had.
    IParameters* Current();

    // An operation of the chosen section; E_FAIL with no section to be had.
    template <class C, class... Args, class... Given>
    int32_t InSection(int32_t (C::*operation)(Args...), Given... given)
    {
        IParameters* values = Current();
        return values ? (values->*operation)(given...) : E_FAIL;
    }

    std::vector<Section> m_Sections;
    std::wstring m_Section;
};
