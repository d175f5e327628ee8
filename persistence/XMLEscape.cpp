#include "persistence/XMLEscape.h"

#include <cstdint>
#include <cwchar>

namespace {

// Characters that an XML file can't carry as they are: controls other than tab
// and line ends, the C1 block, lone surrogates, the two non-characters at the end
// of the basic plane, and anything beyond Unicode.
bool NeedsReference(wchar_t c)
{
    uint32_t value = uint32_t(c);
    if (value < 0x20)
        return value != 9 && value != 10 && value != 13;
    return (value >= 0x7F && value <= 0x9F) || (value >= 0xD800 && value <= 0xDFFF) || value == 0xFFFE ||
           value == 0xFFFF || value > 0x10FFFF;
}

void AppendReference(wchar_t c, std::wstring& out)
{
    wchar_t reference[16];
    std::swprintf(reference, 16, L"&#x%X;", unsigned(uint32_t(c)));
    out += reference;
}

bool StartsWith(const wchar_t* text, size_t length, size_t at, const wchar_t* prefix)
{
    size_t n = std::wcslen(prefix);
    return at + n <= length && std::wmemcmp(text + at, prefix, n) == 0;
}

// Where a terminator starts from `at` on, or `length` if it is missing.
size_t FindFrom(const wchar_t* text, size_t length, size_t at, const wchar_t* what)
{
    size_t n = std::wcslen(what);
    for (size_t i = at; i + n <= length; ++i)
        if (std::wmemcmp(text + i, what, n) == 0)
            return i;
    return length;
}

// A numeric reference's body ("#65" or "#x41"); false if it is none or too big
// for a character.
bool NumericValue(const wchar_t* body, size_t length, wchar_t* character)
{
    if (length < 2 || body[0] != L'#')
        return false;
    bool hex = body[1] == L'x' || body[1] == L'X';
    size_t i = hex ? 2 : 1;
    if (i >= length)
        return false;
    uint64_t value = 0;
    for (; i < length; ++i) {
        wchar_t c = body[i];
        int digit = -1;
        if (c >= L'0' && c <= L'9')
            digit = c - L'0';
        else if (hex && c >= L'a' && c <= L'f')
            digit = c - L'a' + 10;
        else if (hex && c >= L'A' && c <= L'F')
            digit = c - L'A' + 10;
        if (digit < 0)
            return false;
        value = value * (hex ? 16 : 10) + uint64_t(digit);
        if (value > 0xFFFFFFFFu)
            return false;
    }
    *character = wchar_t(uint32_t(value));
    return true;
}

struct NamedEntity {
    const wchar_t* m_Name;
    wchar_t m_Character;
};

constexpr NamedEntity kEntities[] = {{L"amp", L'&'}, {L"lt", L'<'}, {L"gt", L'>'}, {L"quot", L'"'}, {L"apos", L'\''}};

// The longest reference body worth looking at: "#x" and eight digits.
constexpr size_t kLongestReference = 12;

// Decodes the reference at text[at] == '&'; gives the characters it took, 0 if
// it is no reference.
size_t Reference(const wchar_t* text, size_t length, size_t at, std::wstring& out)
{
    size_t end = at + 1;
    while (end < length && end - at <= kLongestReference && text[end] != L';')
        ++end;
    if (end >= length || text[end] != L';')
        return 0;
    const wchar_t* body = text + at + 1;
    size_t bodyLength = end - at - 1;
    wchar_t character = 0;
    if (NumericValue(body, bodyLength, &character)) {
        out += character;
        return end - at + 1;
    }
    for (const NamedEntity& entity : kEntities) {
        if (std::wcslen(entity.m_Name) == bodyLength && std::wmemcmp(entity.m_Name, body, bodyLength) == 0) {
            out += entity.m_Character;
            return end - at + 1;
        }
    }
    return 0;
}

} // namespace

void XMLEscapeText(tagREFString text, std::wstring& out)
{
    if (text.m_Length < 1 || !text.m_Buffer)
        return;
    for (int32_t i = 0; i < text.m_Length; ++i) {
        wchar_t c = text.m_Buffer[i];
        switch (c) {
        case L'&':
            out += L"&amp;";
            break;
        case L'<':
            out += L"&lt;";
            break;
        case L'>':
            out += L"&gt;";
            break;
        case L'"':
            out += L"&quot;";
            break;
        default:
            if (NeedsReference(c))
                AppendReference(c, out);
            else
                out += c;
        }
    }
}

bool XMLHasMarkup(const wchar_t* text, size_t length)
{
    for (size_t i = 0; i < length; ++i)
        if (text[i] == L'&' || text[i] == L'<')
            return true;
    return false;
}

void XMLUnescapeText(const wchar_t* text, size_t length, std::wstring& out)
{
    static const wchar_t kCDataOpen[] = L"<![CDATA[";
    static const wchar_t kCommentOpen[] = L"<!--";
    size_t i = 0;
    while (i < length) {
        wchar_t c = text[i];
        if (c == L'&') {
            size_t taken = Reference(text, length, i, out);
            if (taken == 0)
                out += c;
            i += taken ? taken : 1;
        } else if (c == L'<' && StartsWith(text, length, i, kCDataOpen)) {
            size_t start = i + std::wcslen(kCDataOpen);
            size_t end = FindFrom(text, length, start, L"]]>");
            out.append(text + start, end - start);
            i = end < length ? end + 3 : length;
        } else if (c == L'<' && StartsWith(text, length, i, kCommentOpen)) {
            size_t end = FindFrom(text, length, i + std::wcslen(kCommentOpen), L"-->");
            i = end < length ? end + 3 : length;
        } else {
            out += c;
            ++i;
        }
    }
}
