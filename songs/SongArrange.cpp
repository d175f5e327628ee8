// Re-breaking a whole song to a width of line and a length of verse, for a screen
// where the words must fit. Lines are only ever cut, never joined.
#include <cwctype>

#include "persistence/TextLine.h"
#include "runtime/Module.h"
#include "songs/VXSong.h"

int gArrangeMAXChars = 100;
int gArrangeMAXLines = 100;

namespace {

// The next word of line, up to its first blank; the line moves behind the blank.
CREFString NextWord(CREFString& line)
{
    int32_t end = 0;
    while (end < line.m_Length && line.m_Buffer[end] != L' ')
        ++end;
    CREFString word(line.m_Buffer, end);
    int32_t consumed = end < line.m_Length ? end + 1 : end;
    line.m_Buffer += consumed;
    line.m_Length -= consumed;
    return word;
}

} // namespace

int32_t CVXSong::Arrange(int maxLines, int maxChars)
{
    SmartPtr<IString> text;
    GetText(text.Receive(), 0);
    auto out = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    const bool unlimited = maxLines < 1;
    Lock();
    int lineCount = 1;
    CREFString rest(text.get());
    CREFString line;
    while (TextNextLine(rest, &line)) {
        TextTrimRight(line);
        int column = 0;
        while (line.m_Length > 0) {
            CREFString word = NextWord(line);
            column += word.m_Length + 1; // the blank that is to follow
            if (column <= maxChars && (unlimited || lineCount <= maxLines)) {
                out->Append(word);
            } else {
                // The word that breaks the limit moves on whole, even one too long for any line.
                ++lineCount;
                if (unlimited || lineCount <= maxLines) {
                    out->Append(REFLiteral(L"\r\n"));
                } else {
                    out->Append(REFLiteral(L"\r\n\r\n\r\n"));
                    lineCount = 1;
                }
                out->Append(word);
                column = word.m_Length;
            }
            // A next line that opens with a punctuation mark glues this line's words
            // together: that is how the editor has always laid them out.
            if (!std::iswpunct(wint_t(rest.At(0))))
                out->Append(REFLiteral(L" "));
            if (line.m_Length > 0)
                TextTrimLeft(line);
        }
        wchar_t next = rest.At(0);
        if (next == L'\r' || next == L'\n') {
            out->Append(REFLiteral(L"\r\n\r\n\r\n"));
            lineCount = 1;
        } else {
            ++lineCount;
            out->Append(REFLiteral(L"\r\n"));
        }
        // Swallows the blank lines and the leading blanks of the next line.
        TextTrimLeft(rest);
    }
    Unlock();
    SetVerses(CREFString(static_cast<IUnknown*>(out.get())), SONGVERSES_PARSE);
    return S_OK;
}
