// Large buffers of whole files, made cheap to fill.
#pragma once
#include <cstddef>

// Asks the system to back a large new buffer with large pages. A whole Bible's text
// is some megabytes of wide characters: filled page by small page, the faults
// cost more than the decoding. Small buffers, and systems that refuse, are left
// as they are; the content is never touched.
void LargeBufferAdvise(void* buffer, size_t bytes);
