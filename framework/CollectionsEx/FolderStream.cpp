#include "framework/CollectionsEx/FolderStream.h"

#include <vector>

#include "framework/CollectionsEx/FolderFile.h"
#include "framework/CollectionsEx/FolderZipRead.h"
#include "framework/CollectionsEx/FolderZipWrite.h"
#include "framework/CollectionsEx/WideUTF8.h"
#include "runtime/ValueConversion.h"

std::string CFolderStream::Path() const
{
    CREFString name(m_Filename.get());
    if (name.m_Length < 1 || !name.m_Buffer)
        return {};
    return WideToUTF8(name.m_Buffer, size_t(name.m_Length));
}

int32_t CFolderStream::get_Filename(IString** name)
{
    if (!name)
        return E_POINTER;
    *name = m_Filename.Copy();
    return *name ? S_OK : E_FAIL;
}

int32_t CFolderStream::put_Filename(IString* name)
{
    // A copy: the caller may go on to change its string.
    CREFString text(name);
    m_Filename = nullptr;
    if (name)
        m_Filename = SmartPtr<IString>::Adopt(ISCreate(text));
    return S_OK;
}

int32_t CFolderStream::get_Filter(IString**, short) { return E_NOTIMPL; }
int32_t CFolderStream::get_Name(IString**) { return E_NOTIMPL; }
int32_t CFolderStream::Unload() { return E_NOTIMPL; }
int32_t CFolderStream::SaveFolderStream() { return E_NOTIMPL; }
int32_t CFolderStream::LoadFolderStream() { return E_NOTIMPL; }

int32_t CFolderStream::Load()
{
    std::string path = Path();
    if (path.empty())
        return E_FAIL;
    std::vector<unsigned char> bytes;
    int32_t result = ReadWholeFile(path, kFolderArchiveLimit, &bytes);
    if (result < 0)
        return result;
    return TakeArchive(bytes.data(), bytes.size());
}

int32_t CFolderStream::Save()
{
    std::string path = Path();
    if (path.empty())
        return E_FAIL;
    std::vector<unsigned char> bytes;
    int32_t result = FolderTreeToZip(*m_Node, m_Compress, &bytes);
    if (result < 0)
        return result;
    return ReplaceFile(path, bytes.data(), bytes.size());
}

int32_t CFolderStream::Control(int code, int value)
{
    if (code != ARCHIVE_COMPRESS)
        return E_INVALIDARG;
    m_Compress = value != 0;
    return S_OK;
}

int32_t CFolderStream::Inquire(int code, int* value)
{
    if (code != ARCHIVE_COMPRESS)
        return E_INVALIDARG;
    if (!value)
        return E_POINTER;
    *value = m_Compress ? 1 : 0;
    return S_OK;
}
