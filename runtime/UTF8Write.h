// Wide text written out as UTF-8 bytes.
#pragma once
#include <cstdint>
#include <string>

// Appends the text's UTF-8 bytes to out. A negative character is a 16-bit unit that
// the file reader widened with its sign, and is written as that unit; a value UTF-8
// can't hold (a surrogate, or above 0x10FFFF) becomes U+FFFD.
void UTF8Append(std::string& out, const wchar_t* text, int32_t length);
