// An HTML Bible cut into book files: anchors begin books and chapters, bold numbers
// begin verses, and every book goes to a file of its own in one fixed folder.
#include <cwctype>
#include <string>

#include "bible/VXBible.h"
#include "persistence/FileBuffer.h"
#include "persistence/TagScan.h"

namespace {

// The folder is a literal of the program, used as it stands on every system.
const wchar_t kHtmlFolder[] = L"C:\\Bible\\";

bool IsTrimmed(wchar_t c) { return c < 33 || c == 127; }

bool SameName(CREFString name, const wchar_t* wanted) { return CREFString(wanted).CompareI(name, 0) == S_OK; }

std::wstring Copy(CREFString view)
{
    return view.m_Length > 0 && view.m_Buffer ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

// Writes what was gathered for one book, and starts the next one empty.
void WriteBook(const std::wstring& book, std::wstring& output)
{
    if (output.empty())
        return;
    std::wstring path = kHtmlFolder + book + L".bbl";
    FileArchiveSave(CREFString(path.data(), int32_t(path.size())), reinterpret_cast<unsigned char*>(output.data()),
                    (unsigned long)(output.size() * sizeof(wchar_t)), 1, 0);
    output.clear();
}

// The name of a book in a chapter title such as "Genesis 1": the text in front of
// its last word, or the whole title when it ends in white space.
std::wstring TitleBook(CREFString content)
{
    int32_t end = content.m_Length;
    while (end > 0 && IsTrimmed(content.m_Buffer[end - 1]))
        --end;
    // What lies behind the content reads as 0, which is no white space.
    wchar_t behind = end < content.m_Length ? content.m_Buffer[end] : L'\0';
    if (behind != L'\0' && std::iswspace(wint_t(behind)))
        return Copy(CREFString(content.m_Buffer, end));
    int32_t space = end - 1;
    while (space >= 0 && !std::iswspace(wint_t(content.m_Buffer[space])))
        --space;
    if (space < 0)
        return std::wstring();
    while (space > 0 && IsTrimmed(content.m_Buffer[space - 1]))
        --space;
    return Copy(CREFString(content.m_Buffer, space));
}

// The name of the tag at `open` (a "<"), up to `close` (its ">").
CREFString TagNameAt(const CREFString& view, int32_t open, int32_t close)
{
    int32_t start = open + 1;
    while (start < close && (view.m_Buffer[start] == L' ' || view.m_Buffer[start] == L'\t' ||
                             view.m_Buffer[start] == L'<' || view.m_Buffer[start] == L'/'))
        ++start;
    int32_t end = start;
    while (end < close && view.m_Buffer[end] != L'>' && view.m_Buffer[end] != L' ')
        ++end;
    return CREFString(view.m_Buffer + start, end - start);
}

} // namespace

int32_t CVXBible::Readxml(IXMLStream* stream)
{
    if (!stream)
        return E_FAIL;
    tagREFString body{0, nullptr};
    SmartPtr<IUnknown> element;
    if (stream->GetAttribute(REFLiteral(L"BODY"), &body, element.Receive(), 1) < 0 &&
        stream->GetAttribute(REFLiteral(L"body"), &body, element.Receive(), 1) < 0)
        return E_FAIL;
    CREFString view(body);
    std::wstring output;
    std::wstring book;
    for (;;) {
        int32_t open = -1;
        for (int32_t i = 0; i + 1 < view.m_Length && open < 0; ++i)
            if (view.m_Buffer[i] == L'<' && view.m_Buffer[i + 1] != L'/')
                open = i;
        int32_t close = -1;
        for (int32_t i = open + 1; open >= 0 && i < view.m_Length && close < 0; ++i)
            if (view.m_Buffer[i] == L'>')
                close = i;
        if (close < 0)
            break;
        CREFString tag = TagNameAt(view, open, close);
        if (SameName(tag, L"P")) {
            view = CREFString(view.m_Buffer + close + 1, view.m_Length - close - 1);
            continue;
        }
        CREFString attributes, content;
        const wchar_t* before = view.m_Buffer;
        XMLGetTAGGED(view, tag, attributes, content, 1);
        if (view.m_Buffer == before) {
            // A tag whose element can't be found again (a name the scanner reads
            // otherwise) would be met at the same place for ever: step over it.
            view = CREFString(view.m_Buffer + close + 1, view.m_Length - close - 1);
            continue;
        }
        if (SameName(tag, L"B")) {
            output += Copy(content) + L":\t";
            // The verse runs to the next tag, or to the end of the body.
            for (int32_t i = 0; i < view.m_Length && view.m_Buffer[i] != L'<'; ++i)
                if (view.m_Buffer[i] != L'\r' && view.m_Buffer[i] != L'\n')
                    output += view.m_Buffer[i];
            output += L"\r\n";
            continue;
        }
        if (!SameName(tag, L"A"))
            continue;
        CREFString key, value;
        if (XMLGetNextTAGAttribute(attributes, key, value) >= 0 && !key.IsEmpty() && !value.IsEmpty()) {
            if (SameName(key, L"name")) {
                WriteBook(book, output);
                book = Copy(value);
            } else {
                output += L"\r\n" + Copy(value) + L"\r\n \r\n";
            }
            continue;
        }
        // A title in the anchor's text: the book's name stands in front of the chapter.
        book = TitleBook(content);
        output += Copy(content) + L"\r\n \r\n";
    }
    WriteBook(book, output);
    return S_OK;
}
