#include "host/HostSongLibrary.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>

#include "host/HostPrint.h"
#include "host/HostSong.h"
#include "persistence/FileBuffer.h"
#include "persistence/TextDetect.h"
#include "runtime/ValueConversion.h"

namespace {

namespace fs = std::filesystem;

bool IsSongFile(const fs::path& path)
{
    std::string extension = path.extension().string();
    for (char& c : extension)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return extension == ".sng" || extension == ".txt";
}

// A file's bytes in a buffer that is used again for the next file.
struct FileBytes {
    std::vector<unsigned char> m_Buffer;
    size_t m_Count = 0;
};

// Reads the whole file; false if it can't be opened or read.
bool ReadBytes(const std::string& path, FileBytes* bytes)
{
    int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    bytes->m_Count = 0;
    bool read = true;
    for (;;) {
        if (bytes->m_Buffer.size() - bytes->m_Count < 4096)
            bytes->m_Buffer.resize(std::max<size_t>(2 * bytes->m_Buffer.size(), 65536));
        ssize_t got = ::read(file, bytes->m_Buffer.data() + bytes->m_Count, bytes->m_Buffer.size() - bytes->m_Count);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            read = got == 0;
            break;
        }
        bytes->m_Count += size_t(got);
    }
    close(file);
    return read;
}

// The verdict that reading the file as text would give (see HostReadText), from its
// bytes: empty, or holding a control character once decoded. The first 16-bit unit
// is the mark, and zeros at the end are terminators, not text.
bool CheckSongBytes(const std::string& path, FileBytes* bytes, std::string* error)
{
    if (!ReadBytes(path, bytes) || bytes->m_Count == 0) {
        *error = "cannot read " + path + " (empty, unreadable or not a file)";
        return false;
    }
    const unsigned char* data = bytes->m_Buffer.data();
    size_t count = bytes->m_Count;
    bool binary = false;
    if (TextDetectForm(data, count, FILELOAD_TEXTCHECK) == TextForm::Wide16) {
        auto unit = [data](size_t k) { return long(int16_t(uint16_t(data[2 * k] | (data[2 * k + 1] << 8)))); };
        size_t end = count / 2;
        while (end > 1 && unit(end - 1) == 0)
            --end;
        for (size_t k = 1; k < end && !binary; ++k)
            binary = HostControlCharacter(unit(k));
    } else {
        // Every character of more than one byte decodes to 0x80 or above.
        while (count > 0 && data[count - 1] == 0)
            --count;
        for (size_t k = 0; k < count && !binary; ++k)
            binary = HostControlCharacter(data[k]);
    }
    if (binary)
        *error = "cannot read " + path + ": not a text file";
    return !binary;
}

} // namespace

bool HostSongFiles(const std::string& folder, std::vector<std::string>* files, std::string* error)
{
    std::error_code code;
    if (!fs::is_directory(folder, code)) {
        *error = "cannot search " + folder + ": " + (fs::exists(folder, code) ? "not a folder" : "no such folder");
        return false;
    }
    fs::recursive_directory_iterator walk(folder, fs::directory_options::skip_permission_denied, code);
    for (fs::recursive_directory_iterator end; !code && walk != end; walk.increment(code)) {
        if (walk->is_regular_file(code) && IsSongFile(walk->path()))
            files->push_back(walk->path().lexically_relative(folder).generic_string());
    }
    if (code) {
        *error = "cannot search " + folder + ": " + code.message();
        return false;
    }
    std::sort(files->begin(), files->end());
    return true;
}

std::vector<std::string> HostFindSongs(const std::string& folder, const std::vector<std::string>& files,
                                       const std::string& query)
{
    auto text = SmartPtr<IString>::Adopt(ISCreate(query.data(), int(query.size())));
    std::vector<std::string> found;
    FileBytes bytes;
    for (const std::string& file : files) {
        std::string path = (fs::path(folder) / file).string();
        std::string error;
        // The song itself reads damaged files without a word: they are checked here,
        // on the bytes alone, so that the file is decoded once, by the song.
        if (!HostNameFits(path, &error) || !CheckSongBytes(path, &bytes, &error)) {
            HostErr() << "vxhost: warning: skipped " << error << '\n';
            continue;
        }
        HostSong song;
        if (!song)
            break;
        // Find reads the file itself, as a song list's songs are read on first search.
        QueryAs<IFileArchive>(song.get())->put_Filename(SmartPtr<IString>::Adopt(ISCreate(path.data(), int(path.size()))));
        if (QueryAs<IVXSearch>(song.get())->Find(text, 0, nullptr) == S_OK)
            found.push_back(file);
    }
    return found;
}
