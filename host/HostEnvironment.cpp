#include "host/HostEnvironment.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
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

void HostUseLargePages()
{
    // A user's own allocator settings win.
    if (std::getenv("GLIBC_TUNABLES"))
        return;
    constexpr size_t kStep = size_t(64) << 20;
    constexpr size_t kLargePage = size_t(2) << 20;
    // The heap grows in large steps, and a whole book's text comes from it too rather than
    // from a mapping of its own.
    if (mallopt(M_TOP_PAD, int(kStep)) == 0 || mallopt(M_MMAP_THRESHOLD, int(kStep / 2)) == 0)
        return;
    // One block bigger than what is left on top makes the heap take its first large step
    // now; once freed, the step stays (the allocator keeps the pad on top).
    constexpr size_t kProbe = size_t(1) << 20;
    void* probe = std::malloc(kProbe);
    if (!probe)
        return;
    auto at = reinterpret_cast<uintptr_t>(probe);
    auto top = reinterpret_cast<uintptr_t>(sbrk(0));
    // The allocator has written just past the probe already: a large page can't be had
    // where a small one is, so the large pages start after that.
    auto begin = (at + kProbe + 64 + kLargePage - 1) & ~(kLargePage - 1);
    auto end = top & ~(kLargePage - 1);
    // Only the heap of the C library's allocator: a sanitizer's allocator keeps its own.
    bool heap = at < top && top - at < 2 * kStep && begin < end;
    if (heap)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    std::free(probe);
    // The small pages below the first large one are held by a block that is never
    // touched, so that what the host allocates comes from large pages.
    static void* volatile below = nullptr;
    if (heap && begin - at > 64)
        below = std::malloc(begin - at - 64);
    (void)below;
}
