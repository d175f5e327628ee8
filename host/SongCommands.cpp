// vxhost song ...: songs as an operator prepares them.
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostText.h"

namespace {

// Reads a song file into wide text; false with a message on failure.
bool ReadSongText(const std::string& file, std::wstring* text, std::string* error)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        *error = "cannot read " + file;
        return false;
    }
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    *text = FromUtf8(bytes);
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
