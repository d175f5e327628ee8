// Wide text as UTF-8 and back, for the names and texts kept inside archives.
#pragma once
#include <cstddef>
#include <string>

// Every 21-bit value gets its UTF-8 form, so that what the lenient reader decodes comes
// back the same; a value beyond that (or negative) becomes U+FFFD.
std::string WideToUTF8(const wchar_t* text, size_t length);

// Lenient: no byte is refused, as in the string maker and the file reader.
std::wstring UTF8ToWide(const unsigned char* bytes, size_t length);
