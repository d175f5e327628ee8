#include "host/HostEnvironment.h"

#include <unistd.h>

#include <cstdlib>

#include <filesystem>

namespace {

std::filesystem::path gUserFolder;

} // namespace

bool HostEnterModuleFolder(std::string* error)
{
    std::error_code code;
    gUserFolder = std::filesystem::current_path(code);
    auto executable = std::filesystem::read_symlink("/proc/self/exe", code);
    if (code) {
        *error = "cannot find the host's own location";
        return false;
    }
    auto folder = executable.parent_path();
    if (!std::filesystem::is_directory(folder / "_binlinux")) {
        *error = "no _binlinux folder beside " + executable.string() + ": build the project first";
        return false;
    }
    if (chdir(folder.c_str()) != 0) {
        *error = "cannot enter " + folder.string();
        return false;
    }
    return true;
}

std::string HostPath(const std::string& argument)
{
    std::filesystem::path path(argument);
    if (path.is_absolute() || argument.empty())
        return argument;
    return (gUserFolder / path).lexically_normal().string();
}

void HostUseLargePages(char** argv)
{
    if (std::getenv("GLIBC_TUNABLES"))
        return;
    // Set before the restart, so that a second start never restarts again.
    if (setenv("GLIBC_TUNABLES", "glibc.malloc.hugetlb=1:glibc.malloc.top_pad=67108864", 1) != 0)
        return;
    execv("/proc/self/exe", argv);
}
