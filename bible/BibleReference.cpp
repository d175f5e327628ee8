#include "bible/BibleReference.h"

#include <cstdint>
#include <cwctype>

#include "persistence/TextLine.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

// A typed number, one-based, as a position; a number that wrapped stays wrapped.
int32_t Position(int32_t number) { return int32_t(uint32_t(number) - 1u); }

// The view from index on, clipped to the text.
CREFString From(const CREFString& text, int32_t index)
{
    if (index >= text.m_Length)
        return CREFString(text.m_Buffer + text.m_Length, 0);
    return CREFString(text.m_Buffer + index, text.m_Length - index);
}

CREFString SkipBlanks(CREFString text)
{
    while (text.m_Length > 0 && IsBlank(text.m_Buffer[0])) {
        ++text.m_Buffer;
        --text.m_Length;
    }
    return text;
}

// The index of the first character of text that is in set; the length if none is.
int32_t FirstOf(const CREFString& text, const wchar_t* set)
{
    for (int32_t i = 0; i < text.m_Length; ++i)
        for (const wchar_t* s = set; *s; ++s)
            if (text.m_Buffer[i] == *s)
                return i;
    return text.m_Length;
}

} // namespace

bool BibleStartsAlike(const CREFString& a, const CREFString& b)
{
    int32_t n = a.m_Length < b.m_Length ? a.m_Length : b.m_Length;
    if (n < 1)
        return false;
    for (int32_t i = 0; i < n; ++i)
        if (std::towlower(wint_t(a.m_Buffer[i])) != std::towlower(wint_t(b.m_Buffer[i])))
            return false;
    return true;
}

int32_t BibleRangeCount(CREFString from, int32_t verse)
{
    CREFString mark = SkipBlanks(From(from, FirstOf(from, L" -\r\n")));
    if (mark.At(0) != L'-')
        return 1;
    int32_t end = _IS2Integer(SkipBlanks(From(mark, 1)), 10);
    // Wide on purpose: typed numbers wrap, and their difference must not overflow.
    long long count = (long long)end - verse;
    return count > 0 && count <= INT32_MAX ? int32_t(count) : BIBLE_VERSES_TO_END;
}

BibleReference BibleParseReference(CREFString text)
{
    BibleReference reference;
    TextTrimLeft(text);
    TextTrimRight(text);
    int32_t digit = 1;
    while (digit < text.m_Length && !IsDigit(text.m_Buffer[digit]))
        ++digit;
    if (digit >= text.m_Length) {
        reference.m_Book = text;
        return reference;
    }
    reference.m_Book = CREFString(text.m_Buffer, digit);
    TextTrimRight(reference.m_Book);

    CREFString chapter = From(text, digit);
    reference.m_Chapter = Position(_IS2Integer(SkipBlanks(chapter), 10));
    int32_t mark = FirstOf(chapter, L":");
    if (mark == chapter.m_Length)
        mark = FirstOf(chapter, L".");
    if (mark == chapter.m_Length)
        mark = FirstOf(chapter, L" ");
    CREFString verse = SkipBlanks(From(chapter, mark + 1));
    if (verse.IsEmpty())
        return reference;
    reference.m_Verse = Position(_IS2Integer(verse, 10));
    reference.m_Count = BibleRangeCount(verse, reference.m_Verse);
    return reference;
}

CREFString BibleNextPiece(CREFString& rest, bool* comma)
{
    int32_t cut = FirstOf(rest, L"\n\r,;");
    CREFString piece(rest.m_Buffer, cut);
    *comma = rest.At(cut) == L',';
    rest = SkipBlanks(From(rest, cut + 1));
    TextTrimLeft(piece);
    TextTrimRight(piece);
    return piece;
}
