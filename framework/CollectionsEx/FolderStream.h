// "FolderStream": named, ordered items in a zip archive. The root of the tree is
// also the archive's file: IFileArchive names it, loads it whole and saves it.
#pragma once
#include "framework/CollectionsEx/FolderStreamBase.h"
#include "runtime/ObjectInfo.h"

class CFolderStream : public CObject<CFolderStream>,
                      public IObjectInfoImpl<CFolderStream>,
                      public CFolderStreamBase,
                      public IFileArchive {
public:
    static constexpr wchar_t kObjectName[] = L"FolderStream";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<CFolderStreamBase>, Entry<IFileArchive>>;

    int32_t get_Filename(IString** name) override;
    int32_t put_Filename(IString* name) override;
    int32_t get_Filter(IString** filter, short index) override;
    int32_t get_Name(IString** name) override;
    // Reads the whole archive into the tree; a file that fails leaves the tree as it was.
    int32_t Load() override;
    // Writes a new file beside the old one and renames it over, so a failed save
    // leaves the old file whole.
    int32_t Save() override;
    // ARCHIVE_COMPRESS: 1 deflates the items on the next save, 0 stores them.
    int32_t Control(int code, int value) override;
    int32_t Inquire(int code, int* value) override;
    int32_t Unload() override;
    int32_t SaveFolderStream() override;
    int32_t LoadFolderStream() override;

private:
    std::string Path() const;

    SmartPtr<IString> m_Filename;
    bool m_Compress = false;
};
