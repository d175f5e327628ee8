#include "framework/CollectionsEx/XMLName.h"
#include "runtime/ValueConversion.h"

#include <cstdint>

namespace {

struct Range {
    uint32_t m_First;
    uint32_t m_Last;
};

// The ranges of name characters above ASCII that may begin a name.
constexpr Range kStartRanges[] = {
    {0xC0, 0xD6},       {0xD8, 0xF6},       {0xF8, 0x2FF},      {0x370, 0x37D},     {0x37F, 0x1FFF},
    {0x200C, 0x200D},   {0x2070, 0x218F},   {0x2C00, 0x2FEF},   {0x3001, 0xD7FF},   {0xF900, 0xFDCF},
    {0xFDF0, 0xFFFD},   {0x10000, 0xEFFFF},
};

// Those that may only follow.
constexpr Range kFollowRanges[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

bool InRanges(uint32_t c, const Range* ranges, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        if (c >= ranges[i].m_First && c <= ranges[i].m_Last)
            return true;
    return false;
}

// The value of an escape of `digits` hex digits at name[at], which must stand
// between "_x" and "_"; -1 if there is none of that width.
int64_t EscapeAt(const wchar_t* name, size_t length, size_t at, size_t digits)
{
    if (at + 2 + digits >= length || name[at] != L'_' || name[at + 1] != L'x' || name[at + 2 + digits] != L'_')
        return -1;
    int64_t value = 0;
    for (size_t i = 0; i < digits; ++i) {
        int digit = HexDigitValue(name[at + 2 + i]);
        if (digit < 0)
            return -1;
        value = value * 16 + digit;
    }
    return value;
}

void AppendEscape(wchar_t c, std::wstring& out)
{
    static const wchar_t kHex[] = L"0123456789ABCDEF";
    uint32_t value = uint32_t(c);
    int digits = value > 0xFFFF ? 8 : 4;
    out += L"_x";
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        out += kHex[(value >> shift) & 0xF];
    out += L'_';
}

} // namespace

bool XMLIsNameStart(wchar_t c)
{
    uint32_t value = uint32_t(c);
    if ((value >= 'A' && value <= 'Z') || (value >= 'a' && value <= 'z') || value == '_')
        return true;
    return InRanges(value, kStartRanges, sizeof(kStartRanges) / sizeof(kStartRanges[0]));
}

bool XMLIsNameChar(wchar_t c)
{
    uint32_t value = uint32_t(c);
    if (XMLIsNameStart(c) || (value >= '0' && value <= '9') || value == '-' || value == '.')
        return true;
    return InRanges(value, kFollowRanges, sizeof(kFollowRanges) / sizeof(kFollowRanges[0]));
}

void XMLEncodeName(tagREFString name, std::wstring& out)
{
    if (name.m_Length < 1 || !name.m_Buffer)
        return;
    size_t length = size_t(name.m_Length);
    for (size_t i = 0; i < length; ++i) {
        wchar_t c = name.m_Buffer[i];
        bool fits = i == 0 ? XMLIsNameStart(c) : XMLIsNameChar(c);
        // An underscore before "x" would read as the start of an escape.
        bool ambiguous = c == L'_' && i + 1 < length && name.m_Buffer[i + 1] == L'x';
        if (fits && !ambiguous)
            out += c;
        else
            AppendEscape(c, out);
    }
}

bool XMLDecodeName(const wchar_t* name, size_t length, std::wstring& out)
{
    bool escaped = false;
    size_t i = 0;
    while (i < length) {
        int64_t value = EscapeAt(name, length, i, 8);
        size_t width = 11;
        if (value < 0) {
            value = EscapeAt(name, length, i, 4);
            width = 7;
        }
        if (value < 0) {
            if (escaped)
                out += name[i];
            ++i;
            continue;
        }
        if (!escaped)
            out.append(name, i);
        escaped = true;
        out += wchar_t(uint32_t(value));
        i += width;
    }
    return escaped;
}
