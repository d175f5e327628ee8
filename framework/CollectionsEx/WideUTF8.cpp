#include "framework/CollectionsEx/WideUTF8.h"

#include <cstdint>

#include "runtime/UTF8Lenient.h"

std::string WideToUTF8(const wchar_t* text, size_t length)
{
    std::string out;
    out.reserve(length);
    for (size_t i = 0; i < length; ++i) {
        int32_t c = int32_t(text[i]);
        if (c < 0 || c > 0x1FFFFF)
            c = 0xFFFD;
        if (c < 0x80) {
            out += char(c);
        } else if (c < 0x800) {
            out += char(0xC0 | (c >> 6));
            out += char(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += char(0xE0 | (c >> 12));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        } else {
            out += char(0xF0 | (c >> 18));
            out += char(0x80 | ((c >> 12) & 0x3F));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::wstring UTF8ToWide(const unsigned char* bytes, size_t length)
{
    std::wstring out;
    out.reserve(length);
    size_t at = 0;
    while (at < length) {
        wchar_t c = 0;
        at += UTF8DecodeLenient(bytes + at, length - at, &c);
        out += c;
    }
    return out;
}
