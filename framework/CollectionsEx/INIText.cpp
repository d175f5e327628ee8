#include "framework/CollectionsEx/INIText.h"

#include "persistence/FileBuffer.h"
#include "persistence/ParametersImpl.h"

namespace {

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

CREFString Trimmed(const wchar_t* begin, const wchar_t* end)
{
    while (begin < end && IsBlank(*begin))
        ++begin;
    while (end > begin && IsBlank(end[-1]))
        --end;
    return CREFString(begin, int32_t(end - begin));
}

std::wstring Own(const tagREFString& view) { return std::wstring(view.m_Buffer, size_t(view.m_Length)); }

// A value in double quotes keeps its blanks; the quotes go.
std::wstring Unquoted(CREFString value)
{
    if (value.m_Length >= 2 && value.m_Buffer[0] == L'"' && value.m_Buffer[value.m_Length - 1] == L'"')
        return std::wstring(value.m_Buffer + 1, size_t(value.m_Length - 2));
    return Own(value);
}

bool NeedsQuotes(const std::wstring& value)
{
    if (value.empty())
        return false;
    return IsBlank(value.front()) || IsBlank(value.back()) || (value.size() >= 2 && value.front() == L'"');
}

bool IsText(const wchar_t* text, size_t length)
{
    for (size_t i = 0; i < length; ++i) {
        wchar_t c = text[i];
        if (c >= 0 && c < 0x20 && c != L'\t' && c != L'\r' && c != L'\n')
            return false;
    }
    return true;
}

// 16-bit files arrive with units from 0x8000 on widened with their sign, and with
// characters above 0xFFFF as surrogate pairs: both become plain characters again.
std::wstring Characters(const wchar_t* text, size_t length)
{
    std::wstring out;
    out.reserve(length);
    for (size_t i = 0; i < length; ++i) {
        int32_t c = int32_t(text[i]);
        if (c < 0 && c >= -0x8000)
            c &= 0xFFFF;
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < length) {
            int32_t low = int32_t(text[i + 1]);
            if (low < 0 && low >= -0x8000)
                low &= 0xFFFF;
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        out.push_back(wchar_t(c));
    }
    return out;
}

void AddSection(INIDocument& document, CREFString name, INISection** current)
{
    *current = INIFindSection(document, name);
    if (!*current) {
        document.push_back(INISection{Own(name), {}});
        *current = &document.back();
    }
}

} // namespace

bool INIParse(const wchar_t* text, size_t length, INIDocument* document)
{
    // The text ends at its terminator, if one is counted in.
    while (length > 0 && text[length - 1] == L'\0')
        --length;
    if (!IsText(text, length))
        return false;
    const wchar_t* end = text + length;
    const wchar_t* line = text;
    // A UTF-8 byte order mark comes through as a character of its own.
    if (line < end && *line == wchar_t(0xFEFF))
        ++line;
    INIDocument result;
    INISection* current = nullptr;
    while (line < end) {
        const wchar_t* stop = line;
        while (stop < end && *stop != L'\n' && *stop != L'\r')
            ++stop;
        CREFString content = Trimmed(line, stop);
        line = stop + (stop < end ? 1 : 0);
        if (content.IsEmpty() || content.m_Buffer[0] == L';' || content.m_Buffer[0] == L'#')
            continue;
        const wchar_t* begin = content.m_Buffer;
        const wchar_t* after = begin + content.m_Length;
        if (*begin == L'[') {
            const wchar_t* close = after;
            while (close > begin && close[-1] != L']')
                --close;
            AddSection(result, Trimmed(begin + 1, close > begin ? close - 1 : after), &current);
            continue;
        }
        const wchar_t* equals = begin;
        while (equals < after && *equals != L'=')
            ++equals;
        // A line without "=" says nothing.
        if (equals == after)
            continue;
        if (!current)
            AddSection(result, CREFString(), &current);
        current->m_Entries.push_back(INIEntry{Own(Trimmed(begin, equals)), Unquoted(Trimmed(equals + 1, after))});
    }
    document->swap(result);
    return true;
}

namespace {

// A line break inside a text would end its line early: it is written as a blank.
std::wstring OneLine(std::wstring text)
{
    for (wchar_t& c : text)
        if (c == L'\r' || c == L'\n')
            c = L' ';
    return text;
}

} // namespace

std::wstring INIFormat(const INIDocument& document)
{
    std::wstring out;
    auto writeEntries = [&out](const INISection& section) {
        for (const INIEntry& entry : section.m_Entries) {
            std::wstring value = OneLine(entry.m_Value);
            // A reader drops U+FEFF at the start of a file as a byte order mark.
            if (out.empty() && !entry.m_Key.empty() && entry.m_Key.front() == wchar_t(0xFEFF))
                out += L"\r\n";
            out += OneLine(entry.m_Key);
            out += L'=';
            out += NeedsQuotes(value) ? L'"' + value + L'"' : value;
            out += L"\r\n";
        }
    };
    for (const INISection& section : document) {
        if (section.m_Name.empty())
            writeEntries(section);
    }
    for (const INISection& section : document) {
        if (section.m_Name.empty())
            continue;
        if (!out.empty())
            out += L"\r\n";
        out += L'[' + OneLine(section.m_Name) + L"]\r\n";
        writeEntries(section);
    }
    return out;
}

INISection* INIFindSection(INIDocument& document, tagREFString name)
{
    for (INISection& section : document) {
        if (ParameterNameEquals(CREFString(section.m_Name.data(), int32_t(section.m_Name.size())), name))
            return &section;
    }
    return nullptr;
}

const INISection* INIFindSection(const INIDocument& document, tagREFString name)
{
    return INIFindSection(const_cast<INIDocument&>(document), name);
}

const INIEntry* INIFindEntry(const INISection& section, tagREFString key)
{
    for (const INIEntry& entry : section.m_Entries) {
        if (ParameterNameEquals(CREFString(entry.m_Key.data(), int32_t(entry.m_Key.size())), key))
            return &entry;
    }
    return nullptr;
}

int32_t INILoadFile(tagREFString name, INIDocument* document)
{
    void* data = nullptr;
    unsigned long size = 0;
    int32_t result = FileArchiveLoad(name, &data, &size, FILELOAD_TEXT, 0);
    if (result < 0)
        return result;
    std::wstring text = Characters(static_cast<wchar_t*>(data), size);
    delete[] static_cast<wchar_t*>(data);
    return INIParse(text.data(), text.size(), document) ? S_OK : E_FAIL;
}

int32_t INISaveFile(tagREFString name, const INIDocument& document)
{
    // Characters above 0xFFFF go out as surrogate pairs: the file has 16-bit units.
    // What is no character at all becomes U+FFFD, so that cutting it to 16 bits can
    // never make a line break or a bracket of it.
    std::wstring text = INIFormat(document);
    std::wstring units;
    units.reserve(text.size());
    for (wchar_t c : text) {
        int32_t value = int32_t(c);
        if (value < 0 || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
            value = 0xFFFD;
        if (value > 0xFFFF) {
            value -= 0x10000;
            units.push_back(wchar_t(0xD800 + (value >> 10)));
            units.push_back(wchar_t(0xDC00 + (value & 0x3FF)));
        } else {
            units.push_back(wchar_t(value));
        }
    }
    return FileArchiveSave(name, reinterpret_cast<unsigned char*>(units.data()),
                           (unsigned long)(units.size() * sizeof(wchar_t)), 1, 0);
}
