#include "host/HostSong.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/HostPrint.h"
#include "host/HostText.h"
#include "persistence/FileBuffer.h"
#include "persistence/FileNameUTF8.h"
#include "runtime/ValueConversion.h"

namespace {

namespace fs = std::filesystem;

SmartPtr<IString> WideName(const std::string& file) { return SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size()))); }

} // namespace

// The module names files in its own narrow form; a path that it would write
// differently (too long, or with characters it counts otherwise) would reach
// some other file.
bool HostNameFits(const std::string& file, std::string* error)
{
    char narrow[kFileNameBytes];
    FileNameToUTF8(CREFString(WideName(file).get()), narrow);
    if (file == narrow)
        return true;
    *error = file + ": the module cannot name this path (longer than 254 bytes, or unusual characters)";
    return false;
}

namespace {

// Control characters other than line ends and tabs mean a file of another kind.
// (16-bit units from 0x8000 on arrive negative and are text.)
bool LooksBinary(const std::wstring& text)
{
    for (wchar_t c : text)
        if (HostControlCharacter(c))
            return true;
    return false;
}

std::string Switch(IVXSongVerse* verse, int code)
{
    int value = 0;
    if (verse->Inquire(code, &value) < 0)
        return "?";
    if (code == VERSE_HEADERDISPLAY || code == VERSE_FOOTERDISPLAY) {
        static const char* const kDisplay[] = {"never", "first", "last", "all"};
        return value >= DISPLAY_NEVER && value <= DISPLAY_ALL ? kDisplay[value] : std::to_string(value);
    }
    return value ? "on" : "off";
}

std::string WithoutCR(std::string text)
{
    std::string out;
    for (char c : text)
        if (c != '\r')
            out += c;
    return out;
}

std::string ReadAll(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// The bytes that Save writes: the mark, then each character as a 16-bit unit.
std::string SongFileBytes(IVXSong* song)
{
    SmartPtr<IString> text;
    song->GetText(text.Receive(), SONGTEXT_VERSES | SONGTEXT_VERSETAGS | SONGTEXT_HEADER);
    CREFString view(text.get());
    std::string bytes = "\xFF\xFE";
    for (int32_t i = 0; i < view.m_Length; ++i) {
        bytes += char(view.m_Buffer[i] & 0xFF);
        bytes += char((view.m_Buffer[i] >> 8) & 0xFF);
    }
    return bytes;
}

} // namespace

HostSong::HostSong() : m_Song(HostCreate<IVXSong>(L"VXSong")) {}

HostSong::~HostSong()
{
    if (auto verses = m_Song.As<ISuperCollection>())
        verses->Clear();
}

bool HostReadText(const std::string& file, std::wstring* text, std::string* error)
{
    std::error_code code;
    if (!fs::exists(file, code)) {
        *error = "cannot read " + file + ": no such file";
        return false;
    }
    if (fs::is_directory(file, code)) {
        *error = "cannot read " + file + ": it is a folder";
        return false;
    }
    if (!HostNameFits(file, error))
        return false;
    void* data = nullptr;
    unsigned long size = 0;
    auto name = WideName(file);
    if (FileArchiveLoad(CREFString(name.get()), &data, &size, FILELOAD_TEXTCHECK, 0) < 0) {
        *error = "cannot read " + file + " (empty, unreadable or not a file)";
        return false;
    }
    auto* wide = static_cast<wchar_t*>(data);
    text->assign(wide, size);
    delete[] wide;
    // 16-bit text counts its terminator.
    while (!text->empty() && text->back() == L'\0')
        text->pop_back();
    if (LooksBinary(*text)) {
        *error = "cannot read " + file + ": not a text file";
        return false;
    }
    return true;
}

bool HostLoadSong(const std::string& file, IVXSong* song, std::string* error)
{
    // The song's own Load reports nothing: the file is checked here first.
    std::wstring text;
    if (!HostReadText(file, &text, error))
        return false;
    auto archive = QueryAs<IFileArchive>(song);
    archive->put_Filename(WideName(file));
    archive->Load();
    return true;
}

void HostPrintSong(IVXSong* song)
{
    auto attributes = QueryAs<IParameters>(song);
    int count = 0;
    if (attributes)
        attributes->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> value;
        attributes->get_ItemName(i, name.Receive());
        attributes->get_Item(i, value.Receive());
        // A value of several lines stays on one line of output.
        std::string text;
        for (char c : WithoutCR(ToUtf8(value.get())))
            text += c == '\n' ? std::string("\\n") : std::string(1, c);
        HostOut() << "attribute " << ToUtf8(name.get()) << ":" << (text.empty() ? "" : " ") << text << '\n';
    }
    auto verses = QueryAs<ISuperCollection>(song);
    verses->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> itemName;
        SmartPtr<IUnknown> item;
        verses->get_ItemName(i, itemName.Receive());
        verses->get_Item(i, item.Receive());
        auto verse = QueryAs<IVXSongVerse>(item.get());
        if (!verse)
            continue;
        std::string id = ToUtf8(itemName.get());
        id = id.substr(0, id.find(" : "));
        int number = i;
        verse->Inquire(VERSE_NUMBER, &number);
        HostOut() << "\nverse " << number + 1 << ": " << id << '\n';
        HostOut() << "header: " << Switch(verse, VERSE_HEADERDISPLAY) << ", title " << Switch(verse, VERSE_SHOWTITLE)
                  << ", verse name " << Switch(verse, VERSE_SHOWVERSENAME) << '\n';
        HostOut() << "footer: " << Switch(verse, VERSE_FOOTERDISPLAY) << ", title "
                  << Switch(verse, VERSE_SHOWFOOTTITLE) << ", copyright " << Switch(verse, VERSE_SHOWCOPYRIGHT)
                  << ", author " << Switch(verse, VERSE_SHOWAUTHOR) << ", CCLI " << Switch(verse, VERSE_SHOWCCLI)
                  << '\n';
        HostOut() << WithoutCR(ToUtf8(verse.get())) << '\n';
    }
}

bool HostWriteSong(IVXSong* song, const std::string& out, bool force, std::string* error)
{
    std::error_code code;
    if (fs::is_directory(out, code)) {
        *error = "cannot write " + out + ": it is a folder";
        return false;
    }
    if (fs::exists(out, code) && !force) {
        *error = out + " exists; add --force to replace it";
        return false;
    }
    if (!HostNameFits(out, error))
        return false;
    auto archive = QueryAs<IFileArchive>(song);
    archive->put_Filename(WideName(out));
    archive->Save();
    // Save tells nothing of a failed write: the file must hold what the song does.
    if (ReadAll(out) != SongFileBytes(song)) {
        *error = "cannot write " + out;
        return false;
    }
    return true;
}

std::string HostPlainText(IVXSong* song)
{
    SmartPtr<IString> text;
    song->GetText(text.Receive(), 0);
    return WithoutCR(ToUtf8(text.get()));
}
