#include "songs/LongTextLine.h"

#include <cwctype>

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The characters that end the first word.
bool EndsWord(wchar_t c) { return c == L'\t' || c == L'\f' || c == L'\v' || c == L'\n' || c == L'\r' || c == L' '; }

} // namespace

LongTextLine LongTextClassify(const CREFString& trimmed)
{
    if (trimmed.IsEmpty())
        return LongTextLine::Blank;
    if (!IsDigit(trimmed.At(0)))
        return LongTextLine::Other;
    int32_t word = 0;
    while (word < trimmed.m_Length && !EndsWord(trimmed.At(word)))
        ++word;
    if (trimmed.At(word - 1) == L'.')
        return LongTextLine::Verse;
    if (word == trimmed.m_Length && (trimmed.m_Length == 1 || IsDigit(trimmed.At(1))))
        return LongTextLine::Chapter;
    return LongTextLine::Other;
}
