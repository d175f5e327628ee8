// The three wide forms of a text file's bytes. Each gives one new[] array of
// wchar_t for the caller to delete[], and its count.
#pragma once
#include <cstddef>

// 16-bit little-endian units, the first unit dropped as the byte order mark (both
// orders of mark read alike), each widened with its sign, and a zero element that
// the count includes. An odd last byte is ignored.
wchar_t* TextDecode16Bit(const unsigned char* bytes, size_t count, unsigned long* size);

// One element for each byte, unchanged, as ISO 8859-1; a zero behind, not counted.
wchar_t* TextDecodeBytes(const unsigned char* bytes, size_t count, unsigned long* size);

// Lenient UTF-8; a leading UTF-8 mark stays as the character 0xFEFF. A zero behind,
// not counted.
wchar_t* TextDecodeUTF8(const unsigned char* bytes, size_t count, unsigned long* size);
