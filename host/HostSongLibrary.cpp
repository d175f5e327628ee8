#include "host/HostSongLibrary.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "host/HostSong.h"
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
    for (const std::string& file : files) {
        std::string path = (fs::path(folder) / file).string();
        std::string error;
        std::wstring content;
        // The song itself reads damaged files without a word: they are checked here.
        if (!HostReadText(path, &content, &error)) {
            std::cerr << "vxhost: warning: skipped " << error << '\n';
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
