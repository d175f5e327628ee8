// A text file as a list of lines: Load cuts the file at the separator, each line
// an IString; Save writes the lines back, one a line. Lines can also be added by
// hand and saved as a new file.
#pragma once
#include "framework/Collections/ItemList.h"
#include "framework/Collections/LineString.h"
#include "persistence/FileArchiveImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"

class CStringCollection : public CObject<CStringCollection>,
                          public IObjectInfoImpl<CStringCollection>,
                          public IStringCollection,
                          public ICreatableSimpleCollection,
                          public ISimpleCollection,
                          public IFileArchiveImpl<CStringCollection, IFileArchive> {
public:
    static constexpr wchar_t kObjectName[] = L"StringCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IStringCollection>, Entry<ICreatableSimpleCollection>,
                             Entry<ISimpleCollection>, Chain<IFileArchiveImpl<CStringCollection, IFileArchive>>>;

    // The collection.
    int32_t get_Count(int* count) override { return m_Lines.Count(count); }
    int32_t get_Item(int index, IUnknown** line) override { return m_Lines.Item(index, line); }
    int32_t Add(IUnknown* line) override;
    int32_t put_Separator(int character) override;

    // The file: name, flags and get_Name are the archive's; the text forms are ours.
    int32_t Load() override;
    int32_t Save() override;
    int32_t Control(int code, int value) override;
    int32_t Inquire(int code, int* value) override;
    int32_t Unload() override;
    int32_t SaveFolderStream() override;
    int32_t LoadFolderStream() override;

    // ARCHIVE_ENCODING values: how Save writes the text.
    static constexpr int kEncodingUTF8 = 8;
    static constexpr int kEncodingUTF16 = 16;

private:
    void CutLines(const SharedText& shared, CREFString text);
    std::wstring LineEnding() const;
    std::wstring JoinLines() const;
    std::string JoinLinesUTF8() const;

    CItemList m_Lines;
    wchar_t m_Separator = L'\n';
    int m_TextEncoding = kEncodingUTF8;
};
