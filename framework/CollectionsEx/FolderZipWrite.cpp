#include "framework/CollectionsEx/FolderZipWrite.h"

#include "framework/CollectionsEx/ZipLibrary.h"

#include <cstdio>
#include <string>

#include "framework/CollectionsEx/FolderEntryNames.h"
#include "framework/CollectionsEx/WideUTF8.h"
#include "runtime/Result.h"

namespace {

bool SetComment(zip_t* archive, zip_int64_t index, const std::string& comment)
{
    if (comment.empty())
        return true;
    if (comment.size() > 0xFFFF)
        return false;
    return ZipLib().zip_file_set_comment(archive, zip_uint64_t(index), comment.data(), zip_uint16_t(comment.size()),
                                ZIP_FL_ENC_UTF_8) == 0;
}

bool AddItem(zip_t* archive, const std::string& path, const FolderItem& item, bool compress)
{
    // The item's bytes stay in the tree until the archive is closed, so the source
    // borrows them.
    zip_source_t* source = ZipLib().zip_source_buffer(archive, item.m_Bytes.data(), item.m_Bytes.size(), 0);
    if (!source)
        return false;
    zip_int64_t index = ZipLib().zip_file_add(archive, path.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        ZipLib().zip_source_free(source);
        return false;
    }
    if (ZipLib().zip_set_file_compression(archive, zip_uint64_t(index), compress ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) != 0)
        return false;
    const char* kind = KindComment(item.m_Kind);
    return SetComment(archive, index, kind ? std::string(kind) : std::string());
}

bool AddFolder(zip_t* archive, const std::string& prefix, const FolderNode& folder, bool compress)
{
    for (const FolderItem& item : folder.m_Items) {
        std::string path = prefix + EncodeEntryName(item.m_Name);
        if (!item.IsFolder()) {
            if (!AddItem(archive, path, item, compress))
                return false;
            continue;
        }
        path += '/';
        zip_int64_t index = ZipLib().zip_dir_add(archive, path.c_str(), ZIP_FL_ENC_UTF_8);
        const FolderNode& child = *item.m_Folder;
        if (index < 0 || !SetComment(archive, index, WideToUTF8(child.m_Component.data(), child.m_Component.size())))
            return false;
        if (!AddFolder(archive, path, child, compress))
            return false;
    }
    return true;
}

// The bytes that the closed archive left in its memory source.
bool ReadSource(zip_source_t* source, std::vector<unsigned char>* bytes)
{
    if (ZipLib().zip_source_open(source) != 0)
        return false;
    bool done = false;
    if (ZipLib().zip_source_seek(source, 0, SEEK_END) == 0) {
        zip_int64_t size = ZipLib().zip_source_tell(source);
        if (size >= 0 && ZipLib().zip_source_seek(source, 0, SEEK_SET) == 0) {
            bytes->resize(size_t(size));
            done = size == 0 || ZipLib().zip_source_read(source, bytes->data(), zip_uint64_t(size)) == size;
        }
    }
    ZipLib().zip_source_close(source);
    return done;
}

} // namespace

int32_t FolderTreeToZip(const FolderNode& root, bool compress, std::vector<unsigned char>* archive)
{
    archive->clear();
    if (root.m_Items.empty()) {
        // Nothing to hold: only the end record of an empty archive, which the library
        // would not write at all.
        static const unsigned char kEmpty[22] = {'P', 'K', 5, 6};
        archive->assign(kEmpty, kEmpty + sizeof(kEmpty));
        return S_OK;
    }
    if (!ZipLibraryLoaded())
        return E_FAIL;
    zip_error_t error;
    ZipLib().zip_error_init(&error);
    zip_source_t* source = ZipLib().zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* zip = source ? ZipLib().zip_open_from_source(source, ZIP_TRUNCATE, &error) : nullptr;
    ZipLib().zip_error_fini(&error);
    if (!zip) {
        ZipLib().zip_source_free(source);
        return E_FAIL;
    }
    // The source outlives the archive, to be read when the archive is closed.
    ZipLib().zip_source_keep(source);
    bool written = AddFolder(zip, std::string(), root, compress);
    if (written && ZipLib().zip_close(zip) == 0) {
        written = ReadSource(source, archive);
    } else {
        ZipLib().zip_discard(zip);
        written = false;
    }
    ZipLib().zip_source_free(source);
    if (!written)
        archive->clear();
    return written ? S_OK : E_FAIL;
}
