// The text of INI files: "[section]" lines, then "key=value" lines. The registry and
// the "INIFile" component read and write by these same rules.
#pragma once
#include <string>
#include <vector>

#include "runtime/REFString.h"

struct INIEntry {
    std::wstring m_Key;
    std::wstring m_Value;
};

struct INISection {
    std::wstring m_Name;
    std::vector<INIEntry> m_Entries;
};

// Sections in the order of the file. Keys that stand ahead of any section header
// belong to a section with an empty name.
using INIDocument = std::vector<INISection>;

// False, with nothing filled in, when the text holds control characters other than
// tab, CR and LF: a file that isn't text. Sections met twice are merged.
bool INIParse(const wchar_t* text, size_t length, INIDocument* document);

// The nameless section first, with no header; a blank line between sections.
std::wstring INIFormat(const INIDocument& document);

// Sections and keys match without regard to ASCII case; the first match wins.
INISection* INIFindSection(INIDocument& document, tagREFString name);
const INISection* INIFindSection(const INIDocument& document, tagREFString name);
const INIEntry* INIFindEntry(const INISection& section, tagREFString key);

// Reads any encoding the system writes. E_FAIL when the file can't be read or isn't text.
int32_t INILoadFile(tagREFString name, INIDocument* document);

// Writes 16-bit text with a byte order mark, as the system's own files are.
int32_t INISaveFile(tagREFString name, const INIDocument& document);
