// vxhost demo: a tour over the bundled samples, showing what the module does.
#include <algorithm>
#include <filesystem>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostPrint.h"

namespace {

int Demo(const Arguments& arguments)
{
    if (arguments.size() > 1)
        return HostFail("demo takes at most one folder; see vxhost demo --help");
    std::filesystem::path samples = HostPath(arguments.empty() ? "samples" : arguments[0]);
    std::filesystem::path songs = samples / "songs";
    if (!std::filesystem::is_directory(songs))
        return HostFail("no songs folder in " + samples.string());
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(songs))
        if (entry.is_regular_file() && entry.path().extension() == ".txt")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    int status = 0;
    for (const auto& file : files) {
        HostOut() << "== song " << file.filename().string() << "\n";
        status |= ShowSongFile(file.string());
    }
    return status;
}

} // namespace

const std::vector<HostCommand>& DemoCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"demo", "", "[SAMPLES]", "A tour over the bundled samples (default: ./samples): every song, verse by verse.",
         &Demo},
    };
    return kCommands;
}
