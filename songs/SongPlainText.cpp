// Plain song text: blank lines between verses, "{" ... "}" comment blocks.
#include <cwchar>

#include "persistence/TextLine.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "songs/SongSearch.h"
#include "songs/VXSong.h"

namespace {

// The characters of an item name's preview of the verse text.
constexpr int32_t kPreviewLength = 40;

} // namespace

void CVXSong::SplitPlain(CREFString text)
{
    // The caller's text may be this song's own: scan a copy.
    auto copy = SmartPtr<IString>::Adopt(ISCreate(text));
    CREFString rest(copy.get());
    wchar_t* const base = rest.m_Buffer;
    wchar_t* start = base;
    int32_t length = 0; // of the pending verse; below 1 nothing is pending
    bool inComment = false;
    int index = 0;
    CREFString line;
    while (TextNextLine(rest, &line)) {
        wchar_t* next = rest.m_Buffer;
        wchar_t* lineEnd = line.m_Buffer + line.m_Length;
        CREFString part(line);
        TextTrimLeft(part);
        if (part.m_Length > 0)
            TextTrimRight(part);
        if (part.m_Length < 1)
            part = CREFString(lineEnd, 0);
        wchar_t* p = part.m_Buffer;
        int32_t n = part.m_Length;
        if (n >= 1 && p[0] == L'{') {
            // A comment opens: what was gathered is a verse. A closing brace on the
            // same line is not looked at.
            if (length >= 1)
                AddVerse(CREFString(), CREFString(start, length), index++);
            start = next;
            inComment = true;
        } else if (n >= 1) {
            if (inComment && p[n - 1] == L'}') {
                start = next;
                inComment = false;
            }
        } else if (!inComment && length >= 1) {
            AddVerse(CREFString(), CREFString(start, length), index++);
            start = next;
        }
        length = int32_t((p + n) - start);
        if (length >= 1) {
            CREFString span(start, length);
            TextTrimLeft(span);
            if (span.m_Length > 0)
                TextTrimRight(span);
            start = span.m_Buffer;
            length = span.m_Length;
        }
    }
    // Also inside an open comment: an unclosed comment's lines are the last verse.
    if (length >= 1) {
        CREFString span(start, length);
        TextTrimLeft(span);
        if (span.m_Length > 0)
            TextTrimRight(span);
        if (span.m_Length >= 1)
            AddVerse(CREFString(), span, index);
    }
}

int32_t CVXSong::AddVerse(CREFString name, CREFString text, int index)
{
    if (m_ScanQuery) {
        // The text the verse would hold, compared as get_Verse would give it.
        TextTrimLeft(text);
        if (text.m_Length > 0)
            TextTrimRight(text);
        m_ScanFound = m_ScanFound || ContainsNoCase(text, *m_ScanQuery);
        return S_OK;
    }
    IID iid = IID_IVXSongVerse;
    auto verse = SmartPtr<IVXSongVerse>::Adopt(
        static_cast<IVXSongVerse*>(static_cast<void*>(CreateObject(REFLiteral(L"VXSongVerse"), &iid))));
    if (!verse)
        return E_FAIL;
    TextTrimLeft(text);
    if (text.m_Length > 0)
        TextTrimRight(text);
    TextTrimLeft(name);
    // put_Text marks a verse as edited; the number written after it clears the mark.
    verse->put_Text(text);
    verse->put_Source(static_cast<IVXBook*>(this));
    verse->Control(VERSE_NUMBER, index);

    auto itemName = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (name.m_Length > 0) {
        itemName->Append(name);
    } else {
        wchar_t number[32];
        int written = _swprintf(number, 32, L"Verse%d", index + 1);
        itemName->Append(CREFString(number, written));
    }
    itemName->Append(REFLiteral(L" : "));
    itemName->Append(CREFString(text.m_Buffer, text.m_Length < kPreviewLength ? text.m_Length : kPreviewLength));
    int32_t result = Add(itemName, verse, nullptr, 0);
    SendChange();
    return result;
}
