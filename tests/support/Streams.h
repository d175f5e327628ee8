// What several suites do with the framework's streams: read what a memory stream
// holds, read a text in place, and take a folder stream through a file.
#pragma once
#include <filesystem>
#include <string>

#include "support/Fixture.h"

namespace vxtest {

// The bytes a memory stream holds.
inline std::string Buffer(IDataStream* stream)
{
    void* data = nullptr;
    unsigned long size = 0;
    stream->GetBuffer(&data, &size);
    return data ? std::string(static_cast<const char*>(data), size) : std::string();
}

// The wide text a memory stream holds, as the XML stream writes it.
inline std::wstring WideBuffer(IDataStream* stream)
{
    std::string bytes = Buffer(stream);
    return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
}

// An XML stream reading the text in place: the text must outlive the stream.
inline SmartPtr<IDataStream> XMLReader(std::wstring& text)
{
    auto stream = Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
    return stream;
}

// Names the file of an object that answers IFileArchive, then saves or loads it.
inline int32_t ArchiveSave(IUnknown* object, const std::filesystem::path& file)
{
    auto archive = QueryAs<IFileArchive>(object);
    archive->put_Filename(Str(file.wstring()));
    return archive->Save();
}

inline int32_t ArchiveLoad(IUnknown* object, const std::filesystem::path& file)
{
    auto archive = QueryAs<IFileArchive>(object);
    archive->put_Filename(Str(file.wstring()));
    return archive->Load();
}

// The stream saved to the file, and a new folder stream loaded from it.
inline SmartPtr<IDataStream> ThroughFile(IDataStream* stream, const std::filesystem::path& file)
{
    EXPECT_GE(ArchiveSave(stream, file), 0);
    auto fresh = Create<IDataStream>(L"FolderStream");
    EXPECT_GE(ArchiveLoad(fresh, file), 0);
    return fresh;
}

} // namespace vxtest
