#include "runtime/UTF8Write.h"

void UTF8Append(std::string& out, const wchar_t* text, int32_t length)
{
    for (int32_t i = 0; text && i < length; ++i) {
        // A run of ASCII goes over in one piece: most text is made of it.
        int32_t run = i;
        while (run < length && text[run] >= 0 && text[run] < 0x80)
            ++run;
        if (run > i) {
            size_t at = out.size();
            out.resize(at + size_t(run - i));
            for (int32_t k = i; k < run; ++k)
                out[at + size_t(k - i)] = char(text[k]);
            i = run - 1;
            continue;
        }
        uint32_t c = text[i] < 0 ? uint32_t(text[i]) & 0xFFFFu : uint32_t(text[i]);
        if (c > 0x10FFFFu || (c >= 0xD800u && c <= 0xDFFFu))
            c = 0xFFFDu;
        if (c < 0x80u) {
            out += char(c);
        } else if (c < 0x800u) {
            out += char(0xC0u | (c >> 6));
            out += char(0x80u | (c & 0x3Fu));
        } else if (c < 0x10000u) {
            out += char(0xE0u | (c >> 12));
            out += char(0x80u | ((c >> 6) & 0x3Fu));
            out += char(0x80u | (c & 0x3Fu));
        } else {
            out += char(0xF0u | (c >> 18));
            out += char(0x80u | ((c >> 12) & 0x3Fu));
            out += char(0x80u | ((c >> 6) & 0x3Fu));
            out += char(0x80u | (c & 0x3Fu));
        }
    }
}
