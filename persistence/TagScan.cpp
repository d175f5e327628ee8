#include "persistence/TagScan.h"

#include <cwchar>
#include <initializer_list>

namespace {

// A search pattern in up to three pieces (a lead, the tag's name, a tail), held as
// views of the caller's text so that nothing is allocated.
struct TagPattern {
    tagREFString m_Lead;
    tagREFString m_Name;
    tagREFString m_Tail;

    int32_t Length() const { return m_Lead.m_Length + m_Name.m_Length + m_Tail.m_Length; }
    wchar_t At(int32_t k) const
    {
        if (k < m_Lead.m_Length)
            return m_Lead.m_Buffer[k];
        k -= m_Lead.m_Length;
        if (k < m_Name.m_Length)
            return m_Name.m_Buffer[k];
        k -= m_Name.m_Length;
        return k < m_Tail.m_Length ? m_Tail.m_Buffer[k] : L'\0';
    }
};

constexpr tagREFString kNoText{0, nullptr};

// The plain one-pass search: after a mismatch the comparison starts afresh at the
// mismatching character, and what was passed is never looked at again. Gives the
// index where the match starts, or -1. Only the view itself is read.
int32_t FindPattern(const tagREFString& text, const TagPattern& pattern)
{
    int32_t length = pattern.Length();
    if (length < 1)
        return -1;
    const wchar_t first = pattern.At(0);
    int32_t matched = 0;
    for (int32_t i = 0; i < text.m_Length; ++i) {
        if (matched == 0) {
            // Nothing matched yet: only the pattern's first character starts a match,
            // so the text is skipped up to the next one in a single sweep.
            const wchar_t* next = std::wmemchr(text.m_Buffer + i, first, size_t(text.m_Length - i));
            if (!next)
                return -1;
            i = int32_t(next - text.m_Buffer);
        }
        wchar_t c = text.m_Buffer[i];
        if (c != pattern.At(matched))
            matched = 0;
        if (c == pattern.At(matched) && ++matched == length)
            return i + 1 - length;
    }
    return -1;
}

int32_t FindCharacter(const tagREFString& text, wchar_t wanted)
{
    for (int32_t i = 0; i < text.m_Length; ++i) {
        if (text.m_Buffer[i] == wanted)
            return i;
    }
    return -1;
}

// The name is what the caller's tag holds up to a CR, a space or ">", so that a
// caller may hand in a longer text that begins with the name.
CREFString TagName(const CREFString& tag)
{
    int32_t length = 0;
    while (length < tag.m_Length) {
        wchar_t c = tag.m_Buffer[length];
        if (c == 13 || c == 32 || c == L'>')
            break;
        ++length;
    }
    return CREFString(tag.m_Buffer, length);
}

// "<x a/>", "<?x a?>": the closing marks are no part of the attributes.
void TidyAttributes(CREFString& attributes)
{
    for (wchar_t mark : {L'>', L'?', L'/'}) {
        if (attributes.m_Length > 0 && attributes.m_Buffer[attributes.m_Length - 1] == mark)
            --attributes.m_Length;
    }
}

void MoveBy(CREFString& view, int32_t count)
{
    view.m_Buffer += count;
    view.m_Length -= count;
}

bool EndsAttributeName(wchar_t c) { return c == L'=' || c == L' ' || c == L':'; }

} // namespace

int32_t XMLGetTAGGED(CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content, short advance)
{
    CREFString source = text;
    CREFString name = TagName(tag);
    // No closing bracket in the opening pattern: "<verse" also finds "<verses>".
    const TagPattern opening{REFLiteral(L"<"), name, kNoText};
    const TagPattern closing{REFLiteral(L"</"), name, REFLiteral(L">")};

    content = source;
    if (source.m_Length < 1)
        return E_FAIL;
    int32_t found = FindPattern(source, opening);
    if (found < 0)
        return E_FAIL;

    CREFString rest = source;
    MoveBy(rest, found + opening.Length());
    CREFString tagAttributes = rest;
    CREFString inner = rest;
    int32_t bracket = FindCharacter(rest, L'>');
    if (bracket >= 0) {
        MoveBy(inner, bracket + 1);
        tagAttributes.m_Length = bracket;
        TidyAttributes(tagAttributes);
    }

    // Elements of one name don't nest: the first closing tag ends the element, and
    // a missing one leaves it empty.
    wchar_t* next = inner.m_Buffer;
    int32_t end = FindPattern(inner, closing);
    if (end >= 0) {
        next = inner.m_Buffer + end + closing.Length();
        inner.m_Length = end;
    } else {
        inner.m_Length = 0;
    }

    attributes = tagAttributes;
    content = inner;
    if (advance) {
        int32_t passed = int32_t(next - source.m_Buffer);
        text = source;
        MoveBy(text, passed);
    }
    return S_OK;
}

int32_t XMLGetNextTAGAttribute(CREFString& attributes, CREFString& name, CREFString& value)
{
    attributes.TrimLeft(false);
    name = CREFString(attributes.m_Buffer, 0);
    if (attributes.m_Length < 1) {
        value = name;
        return E_FAIL;
    }

    int32_t length = 0;
    while (length < attributes.m_Length && !EndsAttributeName(attributes.m_Buffer[length]))
        ++length;
    name.m_Length = length;
    // The separator is consumed; a name with none behind it is read again as the value.
    if (length < attributes.m_Length)
        MoveBy(attributes, length + 1);
    if (length == 0) {
        value = name;
        return E_FAIL;
    }

    attributes.TrimLeft(false);
    value = attributes;
    if (attributes.m_Length < 1)
        return E_FAIL;

    wchar_t quote = attributes.m_Buffer[0];
    if (quote == L'"' || quote == L'\'') {
        MoveBy(attributes, 1);
        int32_t close = FindCharacter(attributes, quote);
        value = CREFString(attributes.m_Buffer, close >= 0 ? close : attributes.m_Length);
        MoveBy(attributes, close >= 0 ? close + 1 : attributes.m_Length);
        return S_OK;
    }

    int32_t end = 0;
    while (end < attributes.m_Length && attributes.m_Buffer[end] != L' ' && attributes.m_Buffer[end] != L'/')
        ++end;
    value = CREFString(attributes.m_Buffer, end);
    MoveBy(attributes, end < attributes.m_Length ? end + 1 : end);
    return S_OK;
}
