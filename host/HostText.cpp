#include "host/HostText.h"

std::string ToUtf8(const wchar_t* text, int length)
{
    std::string out;
    for (int i = 0; i < length; ++i) {
        uint32_t c = uint32_t(text[i]);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
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

std::string ToUtf8(const std::wstring& text) { return ToUtf8(text.data(), int(text.size())); }

std::string ToUtf8(IUnknown* string)
{
    CREFString view(string);
    return view.m_Length > 0 ? ToUtf8(view.m_Buffer, view.m_Length) : std::string();
}

std::wstring FromUtf8(const std::string& text)
{
    std::wstring out;
    size_t i = 0;
    while (i < text.size()) {
        unsigned char b = static_cast<unsigned char>(text[i]);
        int extra = b >= 0xF0 && b < 0xF8 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : 0;
        uint32_t c = extra == 3 ? (b & 0x07u) : extra == 2 ? (b & 0x0Fu) : extra == 1 ? (b & 0x1Fu) : b;
        bool valid = b < 0x80 || extra > 0;
        for (int k = 1; valid && k <= extra; ++k) {
            if (i + size_t(k) >= text.size() || (static_cast<unsigned char>(text[i + size_t(k)]) & 0xC0) != 0x80)
                valid = false;
            else
                c = (c << 6) | (static_cast<unsigned char>(text[i + size_t(k)]) & 0x3Fu);
        }
        if (!valid) {
            out += wchar_t(b);
            ++i;
            continue;
        }
        out += wchar_t(c);
        i += size_t(extra) + 1;
    }
    return out;
}
