#include "persistence/LargeBuffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace {

// The whole pages of the given size inside the buffer: memory around it isn't
// ours to advise. False if there is none.
bool InnerPages(void* buffer, size_t bytes, uintptr_t page, uintptr_t* start, size_t* length)
{
    uintptr_t first = (reinterpret_cast<uintptr_t>(buffer) + page - 1) & ~(page - 1);
    uintptr_t end = (reinterpret_cast<uintptr_t>(buffer) + bytes) & ~(page - 1);
    if (end <= first)
        return false;
    *start = first;
    *length = size_t(end - first);
    return true;
}

} // namespace

void LargeBufferAdvise(void* buffer, size_t bytes)
{
    constexpr size_t kWorthIt = size_t(64) << 10;
    constexpr uintptr_t kLargePage = uintptr_t(2) << 20;
    if (!buffer || bytes < kWorthIt)
        return;
    uintptr_t start = 0;
    size_t length = 0;
    if (InnerPages(buffer, bytes, kLargePage, &start, &length))
        madvise(reinterpret_cast<void*>(start), length, MADV_HUGEPAGE);
    // Then all its pages at once, rather than one fault a page as they fill.
    if (InnerPages(buffer, bytes, uintptr_t(sysconf(_SC_PAGESIZE)), &start, &length))
        madvise(reinterpret_cast<void*>(start), length, MADV_POPULATE_WRITE);
}
