// Bytes of files as tests write them: literals with zeros inside, and 16-bit text.
#pragma once
#include <cstddef>
#include <string>

namespace vxtest {

// The bytes of a literal, zeros inside included.
template <size_t N> std::string Bytes(const char (&text)[N]) { return std::string(text, N - 1); }

// 16-bit little-endian text behind a byte order mark, as the system saves it.
inline std::string Utf16(const std::wstring& text)
{
    std::string out = "\xFF\xFE";
    for (wchar_t c : text) {
        out += char(c & 0xFF);
        out += char((c >> 8) & 0xFF);
    }
    return out;
}

} // namespace vxtest
