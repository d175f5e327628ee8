#include "persistence/TextLine.h"

#include <cwctype>

void TextTrimLeft(CREFString& text)
{
    while (text.m_Length > 0) {
        wchar_t c = text.m_Buffer[0];
        if (!(std::iswspace(wint_t(c)) || std::iswcntrl(wint_t(c)) || c == 239 || c == 254))
            break;
        ++text.m_Buffer;
        --text.m_Length;
    }
}

void TextTrimRight(CREFString& text)
{
    while (text.m_Length > 0) {
        wchar_t c = text.m_Buffer[text.m_Length - 1];
        if (!(c < 33 || c == 127))
            break;
        --text.m_Length;
    }
}

bool TextNextLine(CREFString& rest, CREFString* line)
{
    if (rest.m_Length < 1)
        return false;
    int32_t end = 0;
    while (end < rest.m_Length && rest.m_Buffer[end] != L'\n')
        ++end;
    if (line)
        *line = CREFString(rest.m_Buffer, end);
    int32_t consumed = end < rest.m_Length ? end + 1 : end;
    rest.m_Buffer += consumed;
    rest.m_Length -= consumed;
    return true;
}
