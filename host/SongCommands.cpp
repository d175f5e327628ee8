// vxhost song ...: songs as an operator prepares them.
#include <iostream>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostText.h"
#include "runtime/ValueConversion.h"
#include "persistence/FileBuffer.h"

namespace {

// Reads a song file into wide text the way the song itself reads its file, so that
// UTF-16 (with or without a mark), UTF-8 and Latin-1 all come out right; false with
// a message on failure.
bool ReadSongText(const std::string& file, std::wstring* text, std::string* error)
{
    // The module hands names to the C library in 254 bytes; a longer one would open
    // some other file.
    if (file.size() > 254) {
        *error = "cannot read " + file + ": the path is longer than 254 bytes";
        return false;
    }
    auto name = SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size())));
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(CREFString(name.get()), &data, &size, FILELOAD_TEXTCHECK, 0) < 0) {
        *error = "cannot read " + file + " (missing, empty or not a file)";
        return false;
    }
    auto* wide = static_cast<wchar_t*>(data);
    text->assign(wide, size);
    delete[] wide;
    // 16-bit text counts its terminator.
    while (!text->empty() && text->back() == L'\0')
        text->pop_back();
    return true;
}

// The verse's id: its item name up to the first ":", trimmed.
std::string VerseId(IString* itemName)
{
    std::string name = ToUtf8(itemName);
    size_t colon = name.find(':');
    if (colon != std::string::npos)
        name.erase(colon);
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    return name;
}

int SongShow(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return HostFail("song show takes one file; see vxhost song --help");
    return ShowSongFile(HostPath(arguments[0]));
}

} // namespace

int ShowSongFile(const std::string& file)
{
    std::wstring text;
    std::string error;
    if (!ReadSongText(file, &text, &error))
        return HostFail(error);
    auto song = HostCreate<IVXSong>(L"VXSong");
    if (!song)
        return HostFail("the component VXSong is not available");
    song->SetVerses(CREFString(text.data(), int32_t(text.size())), SONGVERSES_PARSE);
    auto verses = song.As<ISuperCollection>();
    auto book = song.As<IVXBook>();
    int count = 0;
    book->get_VerseCount(0, &count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IString> verse;
        verses->get_ItemName(i, name.Receive());
        book->get_Verse(0, i, 1, verse.Receive());
        std::cout << "[" << VerseId(name) << "]\n" << ToUtf8(verse.get()) << "\n\n";
    }
    // The verses point back at their song: clearing the list lets both go.
    verses->Clear();
    return 0;
}

const std::vector<HostCommand>& SongCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"song", "show", "FILE", "Reads a song from a text file and prints each verse: its id, then its text.",
         &SongShow},
    };
    return kCommands;
}
