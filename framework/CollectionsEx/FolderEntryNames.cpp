#include "framework/CollectionsEx/FolderEntryNames.h"

#include <cstring>

#include "framework/CollectionsEx/WideUTF8.h"
#include "runtime/ValueConversion.h"

namespace {

bool NeedsEscape(wchar_t c) { return c == L'%' || c == L'/' || c == L'\\' || (c >= 0 && c < 0x20) || c == 0x7F; }

// Undoes the %XX escapes of one component; a "%" that isn't followed by two hex
// digits of an ASCII value stands for itself, as other tools may write one.
std::wstring Unescape(const std::wstring& text)
{
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'%' && i + 2 < text.size() && HexDigitValue(text[i + 1]) >= 0 && HexDigitValue(text[i + 2]) >= 0) {
            int value = HexDigitValue(text[i + 1]) * 16 + HexDigitValue(text[i + 2]);
            if (value < 0x80) {
                out += wchar_t(value);
                i += 2;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

} // namespace

std::string EncodeEntryName(const std::wstring& name)
{
    static const char kHex[] = "0123456789ABCDEF";
    bool dots = name == L"." || name == L"..";
    std::wstring escaped;
    escaped.reserve(name.size());
    for (wchar_t c : name) {
        if (NeedsEscape(c) || (dots && c == L'.')) {
            escaped += L'%';
            escaped += wchar_t(kHex[(c >> 4) & 0xF]);
            escaped += wchar_t(kHex[c & 0xF]);
        } else {
            escaped += c;
        }
    }
    return WideToUTF8(escaped.data(), escaped.size());
}

bool DecodeEntryPath(const char* path, std::vector<std::wstring>* names, bool* folder)
{
    names->clear();
    size_t length = std::strlen(path);
    *folder = length > 0 && path[length - 1] == '/';
    if (*folder)
        --length;
    if (length == 0)
        return false;
    size_t start = 0;
    while (start <= length) {
        const char* slash = static_cast<const char*>(std::memchr(path + start, '/', length - start));
        size_t end = slash ? size_t(slash - path) : length;
        if (end == start)
            return false;
        std::wstring part = UTF8ToWide(reinterpret_cast<const unsigned char*>(path + start), end - start);
        names->push_back(Unescape(part));
        start = end + 1;
    }
    return true;
}

const char* KindComment(FolderItemKind kind)
{
    switch (kind) {
    case FolderItemKind::Text:
        return "text";
    case FolderItemKind::Integer:
        return "integer";
    case FolderItemKind::Double:
        return "double";
    default:
        return nullptr;
    }
}

FolderItemKind KindFromComment(const char* comment, size_t length)
{
    for (FolderItemKind kind : {FolderItemKind::Text, FolderItemKind::Integer, FolderItemKind::Double}) {
        const char* known = KindComment(kind);
        if (comment && std::strlen(known) == length && std::memcmp(known, comment, length) == 0)
            return kind;
    }
    return FolderItemKind::Data;
}
