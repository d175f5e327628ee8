// Large buffers of whole files, made cheap to fill.
#pragma once
#include <cstddef>

// Prepares a large new buffer that is about to be filled: large pages where the
// system offers them, and all its pages mapped in one call. A whole Bible is some
// megabytes of wide characters, and faulting them in a small page at a time cost
// more than decoding them. Buffers under 64 KiB, and systems that refuse, are left
// as they are; the content is never touched.
void LargeBufferAdvise(void* buffer, size_t bytes);
