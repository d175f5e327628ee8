#include "framework/CollectionsEx/FolderZipRead.h"

#include "framework/CollectionsEx/ZipLibrary.h"

#include <algorithm>
#include <unordered_map>

#include "framework/CollectionsEx/FolderEntryNames.h"
#include "framework/CollectionsEx/WideUTF8.h"
#include "persistence/LargeBuffer.h"
#include "runtime/Result.h"

namespace {

class TreeBuilder {
public:
    explicit TreeBuilder(zip_t* archive) : m_Archive(archive) {}

    bool AddEntry(zip_uint64_t index);
    FolderNode& Root() { return m_Root; }

private:
    FolderNode* Descend(FolderNode* folder, const std::wstring& name);
    bool ReadItem(zip_uint64_t index, std::vector<unsigned char>* bytes);
    std::wstring Comment(zip_uint64_t index, FolderItemKind* kind);

    zip_t* m_Archive;
    FolderNode m_Root;
    // Each folder's names, so that finding a name doesn't walk the folder.
    std::unordered_map<const FolderNode*, std::unordered_map<std::wstring, size_t>> m_Names;
    size_t m_Total = 0;
};

// The sub-folder of that name, made when it isn't there yet; null if an item
// already has the name.
FolderNode* TreeBuilder::Descend(FolderNode* folder, const std::wstring& name)
{
    auto& names = m_Names[folder];
    auto found = names.find(name);
    if (found != names.end()) {
        FolderItem& item = folder->m_Items[found->second];
        return item.IsFolder() ? item.m_Folder.get() : nullptr;
    }
    names.emplace(name, folder->m_Items.size());
    FolderItem& item = folder->m_Items.emplace_back();
    item.m_Name = name;
    item.m_Kind = FolderItemKind::Folder;
    item.m_Folder = std::make_shared<FolderNode>();
    return item.m_Folder.get();
}

std::wstring TreeBuilder::Comment(zip_uint64_t index, FolderItemKind* kind)
{
    zip_uint32_t length = 0;
    const char* comment = ZipLib().zip_file_get_comment(m_Archive, index, &length, 0);
    if (!comment)
        length = 0;
    if (kind)
        *kind = KindFromComment(comment, length);
    return UTF8ToWide(reinterpret_cast<const unsigned char*>(comment), length);
}

// Inflates one item, trusting no size the archive states: the bytes arrive in steps,
// and must be exactly as many as stated, with nothing behind them.
bool TreeBuilder::ReadItem(zip_uint64_t index, std::vector<unsigned char>* bytes)
{
    zip_stat_t stat;
    ZipLib().zip_stat_init(&stat);
    if (ZipLib().zip_stat_index(m_Archive, index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_SIZE))
        return false;
    if (stat.size > kFolderItemLimit || stat.size > kFolderArchiveLimit - m_Total)
        return false;
    zip_file_t* file = ZipLib().zip_fopen_index(m_Archive, index, 0);
    if (!file)
        return false;
    size_t size = size_t(stat.size);
    bool good = true;
    // The stated size is within the limits checked above: room for it at once, so
    // that the steps below don't move the bytes again and again.
    bytes->reserve(size);
    LargeBufferAdvise(bytes->data(), bytes->capacity());
    constexpr size_t kStep = 64 * 1024;
    while (good && bytes->size() < size) {
        size_t have = bytes->size();
        size_t step = std::min(kStep, size - have);
        bytes->resize(have + step);
        zip_int64_t got = ZipLib().zip_fread(file, bytes->data() + have, step);
        good = got > 0;
        bytes->resize(have + (got > 0 ? size_t(got) : 0));
    }
    // Reading past the end is what makes the library check the item's checksum.
    unsigned char extra = 0;
    good = good && ZipLib().zip_fread(file, &extra, 1) == 0;
    good = ZipLib().zip_fclose(file) == 0 && good;
    m_Total += bytes->size();
    return good;
}

bool TreeBuilder::AddEntry(zip_uint64_t index)
{
    const char* path = ZipLib().zip_get_name(m_Archive, index, 0);
    std::vector<std::wstring> names;
    bool isFolder = false;
    if (!path || !DecodeEntryPath(path, &names, &isFolder) || names.size() > kFolderDepthLimit)
        return false;
    FolderNode* folder = &m_Root;
    size_t parents = isFolder ? names.size() : names.size() - 1;
    for (size_t i = 0; i < parents && folder; ++i)
        folder = Descend(folder, names[i]);
    if (!folder)
        return false;
    if (isFolder) {
        folder->m_Component = Comment(index, nullptr);
        return true;
    }
    auto& known = m_Names[folder];
    if (known.count(names.back()))
        return false;
    FolderItem item;
    item.m_Name = names.back();
    Comment(index, &item.m_Kind);
    if (!ReadItem(index, &item.m_Bytes))
        return false;
    known.emplace(item.m_Name, folder->m_Items.size());
    folder->m_Items.push_back(std::move(item));
    return true;
}

} // namespace

int32_t FolderTreeFromZip(const unsigned char* bytes, size_t size, FolderNode* root)
{
    // An empty file is no archive, not even an empty one: a save always writes the end record.
    if (!bytes || size == 0 || size > kFolderArchiveLimit)
        return E_FAIL;
    if (!ZipLibraryLoaded())
        return E_FAIL;
    zip_error_t error;
    ZipLib().zip_error_init(&error);
    zip_source_t* source = ZipLib().zip_source_buffer_create(bytes, size, 0, &error);
    zip_t* archive =
        source ? ZipLib().zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error) : nullptr;
    ZipLib().zip_error_fini(&error);
    if (!archive) {
        ZipLib().zip_source_free(source);
        return E_FAIL;
    }
    zip_int64_t count = ZipLib().zip_get_num_entries(archive, 0);
    bool good = count >= 0 && size_t(count) <= kFolderEntryLimit;
    TreeBuilder builder(archive);
    for (zip_int64_t i = 0; good && i < count; ++i)
        good = builder.AddEntry(zip_uint64_t(i));
    ZipLib().zip_discard(archive);
    if (!good)
        return E_FAIL;
    root->m_Items = std::move(builder.Root().m_Items);
    return S_OK;
}
