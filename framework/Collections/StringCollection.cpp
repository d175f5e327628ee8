#include "framework/Collections/StringCollection.h"

#include <memory>
#include <string>

#include "framework/Collections/LineString.h"
#include "persistence/FileBuffer.h"
#include "runtime/UTF8Write.h"

int32_t CStringCollection::Add(IUnknown* line)
{
    int32_t result = m_Lines.Add(line);
    if (result >= 0)
        m_Modified = 1;
    return result;
}

int32_t CStringCollection::put_Separator(int character)
{
    m_Separator = wchar_t(character);
    return S_OK;
}

void CStringCollection::CutLines(const SharedText& shared, CREFString text)
{
    while (!text.IsEmpty()) {
        CREFString line;
        text.GetLine(&line, true, m_Separator, false);
        bool ended = line.m_Length > 0 && line.m_Buffer[line.m_Length - 1] == m_Separator;
        if (ended) {
            --line.m_Length;
            // A CR LF pair is one break, whichever of the two is the separator.
            if (m_Separator == L'\r' && text.At(0) == L'\n') {
                ++text.m_Buffer;
                --text.m_Length;
            } else if (m_Separator == L'\n' && line.m_Length > 0 && line.m_Buffer[line.m_Length - 1] == L'\r') {
                --line.m_Length;
            }
        }
        // A line is a view into the file's text: no copy of its own until it changes.
        auto string = SmartPtr<ICreatableString>::Adopt(CLineString::New(shared, line));
        m_Lines.Add(string);
    }
}

int32_t CStringCollection::Load()
{
    CREFString name(m_Filename.get());
    if (name.IsEmpty())
        return E_FAIL;
    m_Lines.Clear();
    void* data = nullptr;
    unsigned long size = 0;
    int32_t result = FileArchiveLoad(name, &data, &size, FILELOAD_TEXT, 0);
    if (result < 0)
        return result;
    SharedText text(static_cast<wchar_t*>(data));
    // A file read as UTF-8 is written back as UTF-8, any other as 16-bit text.
    m_TextEncoding = result == S_FALSE ? kEncodingUTF8 : kEncodingUTF16;
    CREFString content(text.get(), size > 0x7FFFFFFFul ? 0x7FFFFFFF : int32_t(size));
    // The 16-bit reading counts a closing zero that is no part of the text.
    if (content.m_Length > 0 && content.m_Buffer[content.m_Length - 1] == L'\0')
        --content.m_Length;
    CutLines(text, content);
    m_Modified = 0;
    m_HasFile = 1;
    return S_OK;
}

std::wstring CStringCollection::LineEnding() const
{
    return m_Separator == L'\r' ? std::wstring(L"\r\n") : std::wstring(1, m_Separator);
}

std::wstring CStringCollection::JoinLines() const
{
    // Every line ends with a break, the last one too, so reading gives the same lines.
    std::wstring ending = LineEnding();
    std::wstring text;
    for (int i = 0; i < m_Lines.Size(); ++i) {
        CREFString line(m_Lines.At(i));
        if (line.m_Length > 0)
            text.append(line.m_Buffer, size_t(line.m_Length));
        text += ending;
    }
    return text;
}

std::string CStringCollection::JoinLinesUTF8() const
{
    // The same text as JoinLines, made into bytes line by line: no wide copy of the whole.
    std::string ending;
    std::wstring wideEnding = LineEnding();
    UTF8Append(ending, wideEnding.data(), int32_t(wideEnding.size()));
    std::string bytes;
    for (int i = 0; i < m_Lines.Size(); ++i) {
        CREFString line(m_Lines.At(i));
        if (line.m_Length > 0)
            UTF8Append(bytes, line.m_Buffer, line.m_Length);
        bytes += ending;
    }
    return bytes;
}

int32_t CStringCollection::Save()
{
    CREFString name(m_Filename.get());
    if (name.IsEmpty())
        return E_FAIL;
    int32_t result = E_FAIL;
    if (m_TextEncoding == kEncodingUTF16) {
        std::wstring text = JoinLines();
        result = FileArchiveSave(name, reinterpret_cast<unsigned char*>(text.data()), text.size() * sizeof(wchar_t),
                                 1, 0);
    } else {
        std::string bytes = JoinLinesUTF8();
        result = FileArchiveSave(name, reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(), 0, 0);
    }
    if (result >= 0) {
        m_Modified = 0;
        m_HasFile = 1;
    }
    return result;
}

int32_t CStringCollection::Control(int code, int value)
{
    switch (code) {
    case ARCHIVE_MODIFIED:
        m_Modified = value;
        return S_OK;
    case ARCHIVE_HASFILE:
        m_HasFile = value;
        return S_OK;
    case ARCHIVE_ENCODING:
        m_TextEncoding = value == kEncodingUTF16 ? kEncodingUTF16 : kEncodingUTF8;
        return S_OK;
    default:
        return E_INVALIDARG;
    }
}

int32_t CStringCollection::Inquire(int code, int* value)
{
    if (!value)
        return E_POINTER;
    switch (code) {
    case ARCHIVE_MODIFIED:
        *value = m_Modified;
        return S_OK;
    case ARCHIVE_HASFILE:
        *value = m_HasFile;
        return S_OK;
    case ARCHIVE_ENCODING:
        *value = m_TextEncoding;
        return S_OK;
    default:
        return E_INVALIDARG;
    }
}

int32_t CStringCollection::Unload()
{
    m_Lines.Clear();
    m_HasFile = 0;
    m_Modified = 0;
    return S_OK;
}

// Lines live in text files only; there is no folder form of them.
int32_t CStringCollection::SaveFolderStream() { return E_NOTIMPL; }

int32_t CStringCollection::LoadFolderStream() { return E_NOTIMPL; }
