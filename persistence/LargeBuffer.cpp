#include "persistence/LargeBuffer.h"

#include <sys/mman.h>

#include <cstdint>

void LargeBufferAdvise(void* buffer, size_t bytes)
{
    constexpr uintptr_t kLargePage = uintptr_t(2) << 20;
    if (!buffer || bytes < 2 * kLargePage)
        return;
    // Only whole large pages inside the buffer: memory around it isn't ours to advise.
    uintptr_t start = (reinterpret_cast<uintptr_t>(buffer) + kLargePage - 1) & ~(kLargePage - 1);
    uintptr_t end = (reinterpret_cast<uintptr_t>(buffer) + bytes) & ~(kLargePage - 1);
    if (end > start)
        madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}
