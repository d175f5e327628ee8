// A song text pasted from the CCLI service: the title on the first line, then blocks
// of a heading and its lines, and last the credits (author, CCLI number, copyright,
// publisher and whatever follows).
#include "persistence/TextLine.h"
#include "runtime/ValueConversion.h"
#include "songs/VXSong.h"

namespace {

SmartPtr<IString> MakeString(tagREFString text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

bool IsAsciiAlnum(wchar_t c) { return (c >= L'0' && c <= L'9') || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }

// The directory of the old name, "/", the title's ASCII letters and digits, ".sng".
SmartPtr<IString> NameFromTitle(CREFString old, CREFString title)
{
    int32_t slash = -1;
    for (int32_t i = 0; i < old.m_Length; ++i)
        if (old.m_Buffer[i] == L'/')
            slash = i;
    auto name = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (slash > 0)
        name->Append(CREFString(old.m_Buffer, slash));
    name->Append(REFLiteral(L"/"));
    for (int32_t i = 0; i < title.m_Length; ++i)
        if (IsAsciiAlnum(title.m_Buffer[i]))
            name->Append(CREFString(title.m_Buffer + i, 1));
    name->Append(REFLiteral(L".sng"));
    return SmartPtr<IString>(name.get());
}

} // namespace

int32_t CVXSong::ImportCCLI(tagREFString pasted)
{
    auto copy = MakeString(pasted);
    CREFString text(copy.get());
    TextTrimLeft(text);
    if (text.m_Length > 0)
        TextTrimRight(text);
    Clear();
    CREFString line;
    if (!TextNextLine(text, &line))
        return S_OK;
    TextTrimRight(line);
    put_AttributeByName(MakeString(REFLiteral(L"title")), MakeString(line));
    if (CREFString(m_Filename.get()).m_Length >= 1)
        m_Filename = NameFromTitle(CREFString(m_Filename.get()), line);

    // The blocks: a heading, its lines, a blank line. The last block has no blank
    // line behind it and stays as the tail.
    CREFString body = text;
    wchar_t* tail = body.m_Buffer;
    bool expectName = true;
    wchar_t* verseStart = body.m_Buffer;
    int32_t verseLength = 0;
    CREFString name;
    int index = 0;
    while (TextNextLine(body, &line)) {
        wchar_t* next = body.m_Buffer;
        int32_t remaining = body.m_Length;
        TextTrimLeft(line);
        if (line.m_Length > 0)
            TextTrimRight(line);
        if (line.m_Length > 0 && expectName) {
            // Provisionally the verse takes all that follows; its next line cuts it down.
            name = line;
            verseStart = next;
            verseLength = remaining;
            expectName = false;
        } else if (line.m_Length > 0) {
            CREFString span(verseStart, int32_t(line.m_Buffer + line.m_Length - verseStart));
            TextTrimLeft(span);
            if (span.m_Length > 0)
                TextTrimRight(span);
            verseStart = span.m_Buffer;
            verseLength = span.m_Length;
        } else if (remaining < 1) {
            break;
        } else {
            if (verseLength > 0) {
                AddVerse(name, CREFString(verseStart, verseLength), index++);
                verseLength = 0;
                expectName = true;
            }
            tail = next;
        }
    }

    CREFString credits(tail, int32_t(text.m_Buffer + text.m_Length - tail));
    TextTrimLeft(credits);
    bool authorSeen = false;
    while (TextNextLine(credits, &line)) {
        TextTrimRight(line);
        if (line.m_Length > 0 && line.CompareI(REFLiteral(L"CCLI Song"), 0) >= 0) {
            put_AttributeByName(MakeString(REFLiteral(L"CCLIsong")), MakeString(line));
        } else if (!authorSeen) {
            // The first line that is no CCLI line is the author, whatever it holds.
            put_AttributeByName(MakeString(REFLiteral(L"author")), MakeString(line));
            authorSeen = true;
        } else if (line.At(0) == L'\xFFFD') {
            // Only a sign already lost to the replacement character marks a copyright.
            put_AttributeByName(MakeString(REFLiteral(L"copyright")), MakeString(line));
        } else {
            put_AttributeByName(MakeString(REFLiteral(L"publisher")), MakeString(line));
            put_AttributeByName(MakeString(REFLiteral(L"info")), MakeString(credits));
            return S_OK;
        }
    }
    return S_OK;
}
