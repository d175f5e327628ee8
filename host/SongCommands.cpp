// vxhost song ...: songs as an operator prepares them for a service.
#include <filesystem>
#include <iterator>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostOptions.h"
#include "host/HostPrint.h"
#include "host/HostSong.h"
#include "host/HostSongLibrary.h"
#include "host/HostText.h"
#include "runtime/ValueConversion.h"

namespace {

// Parses the options and wants between least and most positional arguments.
bool Parse(const Arguments& arguments, size_t least, size_t most, const char* usage, HostOptions* options,
           int* status, const Arguments& valued = {}, const Arguments& flags = {})
{
    std::string error;
    if (!HostParseOptions(arguments, options, &error, valued, flags)) {
        *status = HostBadUsage(error + "; see vxhost song " + usage + " --help");
        return false;
    }
    size_t count = options->m_Positional.size();
    if (count < least || count > most) {
        *status = HostBadUsage(std::string("wrong number of arguments; see vxhost song ") + usage + " --help");
        return false;
    }
    return true;
}

// Loads the file the user named into song; false with the exit status set.
bool Open(const std::string& argument, const HostSong& song, int* status)
{
    std::string error;
    if (!song)
        *status = HostFail("the component VXSong is not available");
    else if (!HostLoadSong(HostPath(argument), song.get(), &error))
        *status = HostFail(error);
    else
        return true;
    return false;
}

// Writes the song to the file the user named and says so; the exit status.
int Write(IVXSong* song, const std::string& argument, bool force)
{
    std::string out = HostPath(argument);
    std::string error;
    if (!HostWriteSong(song, out, force, &error))
        return HostFail(error);
    HostOut() << "saved " << out << '\n';
    return 0;
}

int SongShow(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 1, 1, "show", &options, &status))
        return status;
    return ShowSongFile(HostPath(options.m_Positional[0]));
}

int SongText(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 1, 1, "text", &options, &status))
        return status;
    HostSong song;
    if (!Open(options.m_Positional[0], song, &status))
        return status;
    HostOut() << HostPlainText(song.get());
    return 0;
}

int SongImportCCLI(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 0, 1, "import-ccli", &options, &status))
        return status;
    std::string source = options.m_Positional.empty() ? "-" : options.m_Positional[0];
    std::wstring paste;
    std::string error;
    if (source == "-") {
        std::string bytes = HostReadAll(stdin);
        auto text = SmartPtr<IString>::Adopt(ISCreate(bytes.data(), int(bytes.size())));
        CREFString view(text.get());
        paste.assign(view.m_Buffer ? view.m_Buffer : L"", size_t(view.m_Length > 0 ? view.m_Length : 0));
        source = "standard input";
    } else {
        source = HostPath(source);
        if (!HostReadText(source, &paste, &error))
            return HostFail(error);
    }
    HostSong song;
    if (!song)
        return HostFail("the component VXSong is not available");
    song.get()->SetVerses(CREFString(paste.data(), int32_t(paste.size())), SONGVERSES_CCLI);
    int verses = 0;
    QueryAs<IVXBook>(song.get())->get_VerseCount(0, &verses);
    // Nothing is written for a paste that held no song.
    if (verses < 1)
        return HostFail(source + ": no verse found in the paste (a title line, then blocks parted by blank lines)");
    if (options.m_Out.empty()) {
        HostPrintSong(song.get());
        return 0;
    }
    return Write(song.get(), options.m_Out, options.m_Force);
}

int SongSave(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 1, 1, "save", &options, &status))
        return status;
    if (options.m_Out.empty())
        return HostBadUsage("song save needs --out FILE; see vxhost song save --help");
    HostSong song;
    if (!Open(options.m_Positional[0], song, &status))
        return status;
    return Write(song.get(), options.m_Out, options.m_Force);
}

int SongSet(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 2, size_t(-1), "set", &options, &status))
        return status;
    const Arguments& positional = options.m_Positional;
    for (size_t i = 1; i < positional.size(); ++i)
        if (positional[i].find('=') == std::string::npos || positional[i][0] == '=')
            return HostBadUsage("\"" + positional[i] + "\" is not NAME=VALUE; see vxhost song set --help");
    HostSong song;
    if (!Open(positional[0], song, &status))
        return status;
    auto attributes = QueryAs<IParameters>(song.get());
    for (size_t i = 1; i < positional.size(); ++i) {
        size_t equals = positional[i].find('=');
        std::string name = positional[i].substr(0, equals);
        std::string value = positional[i].substr(equals + 1);
        auto key = SmartPtr<IString>::Adopt(ISCreate(name.data(), int(name.size())));
        auto text = SmartPtr<IString>::Adopt(ISCreate(value.data(), int(value.size())));
        int index = -1;
        if (attributes->get_Index(key, &index) >= 0 && index >= 0)
            attributes->put_Item(index, text);
        else if (auto creatable = attributes.As<IParametersCreatable>())
            creatable->Add(key, text, nullptr, 0);
    }
    // The file edited is the file saved, unless another is named.
    if (options.m_Out.empty())
        return Write(song.get(), positional[0], true);
    return Write(song.get(), options.m_Out, options.m_Force);
}

// The whole number of a limit option, from least to most; false with the exit status set.
bool Limit(const HostOptions& options, const std::string& name, int least, int most, int* value, int* status)
{
    auto found = options.m_Own.find(name);
    if (found == options.m_Own.end()) {
        *status = HostBadUsage("song arrange needs " + name + "; see vxhost song arrange --help");
        return false;
    }
    const std::string& text = found->second;
    size_t used = 0;
    long number = -1;
    try {
        number = std::stol(text, &used);
    } catch (...) {
        used = 0;
    }
    if (used != text.size() || used == 0 || number < least || number > most) {
        *status = HostBadUsage(name + " must be a whole number from " + std::to_string(least) + " to " +
                               std::to_string(most) + ", not \"" + text + "\"");
        return false;
    }
    *value = int(number);
    return true;
}

int SongArrange(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    int lines = 0;
    int chars = 0;
    if (!Parse(arguments, 1, 1, "arrange", &options, &status, {"--lines", "--chars"}) ||
        !Limit(options, "--lines", 0, 100000, &lines, &status) || !Limit(options, "--chars", 1, 100000, &chars, &status))
        return status;
    HostSong song;
    if (!Open(options.m_Positional[0], song, &status))
        return status;
    song.get()->Arrange(lines, chars);
    if (options.m_Out.empty()) {
        HostOut() << HostPlainText(song.get());
        return 0;
    }
    return Write(song.get(), options.m_Out, options.m_Force);
}

// A band of a slide as its line of output; nothing when the verse shows none.
void PrintBand(const char* label, int32_t result, IString* text)
{
    if (result >= 0)
        HostOut() << label << ": " << ToUtf8(text) << '\n';
}

int SongSlides(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 1, 1, "slides", &options, &status, {}, {"--all-bands"}))
        return status;
    const bool allBands = options.m_Own.count("--all-bands") > 0;
    HostSong song;
    if (!Open(options.m_Positional[0], song, &status))
        return status;
    auto book = QueryAs<IVXBook>(song.get());
    auto verses = QueryAs<ISuperCollection>(song.get());
    int count = 0;
    book->get_VerseCount(0, &count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> verse;
        SmartPtr<IString> header, footer, text;
        verses->get_Item(i, verse.Receive());
        // A song file keeps no switches: an operator sets them for a show.
        if (auto switches = QueryAs<IVXSongVerse>(verse.get()); switches && allBands)
            for (auto [code, value] : {std::pair{VERSE_SHOWTITLE, 1}, {VERSE_SHOWVERSENAME, 1},
                                       {VERSE_HEADERDISPLAY, DISPLAY_ALL}, {VERSE_SHOWFOOTTITLE, 1},
                                       {VERSE_SHOWAUTHOR, 1}, {VERSE_SHOWCCLI, 1}, {VERSE_FOOTERDISPLAY, DISPLAY_ALL}})
                switches->Control(code, value);
        int32_t headerResult = book->Header(header.Receive(), 0, i, 1, verse);
        int32_t footerResult = book->Footer(footer.Receive(), 0, i, 1, verse);
        book->get_Verse(0, i, 1, text.Receive());
        HostOut() << (i ? "\n" : "") << "slide " << i + 1 << '\n';
        PrintBand("header", headerResult, header);
        std::string body = ToUtf8(text.get());
        size_t start = 0;
        while (start <= body.size()) {
            size_t end = body.find('\n', start);
            std::string line = body.substr(start, end == std::string::npos ? std::string::npos : end - start);
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            HostOut() << "text: " << line << '\n';
            if (end == std::string::npos)
                break;
            start = end + 1;
        }
        PrintBand("footer", footerResult, footer);
    }
    return 0;
}

int SongFind(const Arguments& arguments)
{
    HostOptions options;
    int status = 0;
    if (!Parse(arguments, 2, size_t(-1), "find", &options, &status, {}, {"--count"}))
        return status;
    // The words of the query stand as one text, parted by single blanks.
    std::string query;
    for (size_t i = 1; i < options.m_Positional.size(); ++i)
        query += (i > 1 ? " " : "") + options.m_Positional[i];
    const std::string& folder = options.m_Positional[0];
    std::vector<std::string> files;
    std::string error;
    if (!HostSongFiles(HostPath(folder), &files, &error))
        return HostFail(error);
    std::vector<std::string> found = HostFindSongs(HostPath(folder), files, query);
    if (options.m_Own.count("--count"))
        HostOut() << found.size() << '\n';
    else
        for (const std::string& file : found)
            HostOut() << (std::filesystem::path(folder) / file).string() << '\n';
    // As grep does: nothing found is a failed search.
    return found.empty() ? 1 : 0;
}

} // namespace

int ShowSongFile(const std::string& file)
{
    HostSong song;
    int status = 0;
    if (!Open(file, song, &status))
        return status;
    HostPrintSong(song.get());
    return 0;
}

const std::vector<HostCommand>& SongCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"song", "show", "FILE",
         "Reads a song (.sng or plain text) and prints its attributes, then each verse: number and id, header "
         "and footer switches, text. Example: vxhost song show amazing-grace.sng",
         &SongShow},
        {"song", "text", "FILE",
         "Prints a song's plain text: verses parted by a blank line. Example: vxhost song text hymn.sng", &SongText},
        {"song", "import-ccli", "[FILE|-] [--out FILE] [--force]",
         "Imports a song text pasted from CCLI (a file, or standard input); prints it, or saves it as a song file "
         "with --out. Example: vxhost song import-ccli paste.txt --out song.sng",
         &SongImportCCLI},
        {"song", "save", "FILE --out FILE [--force]",
         "Writes a song again as a song file: a plain text becomes a .sng. Example: vxhost song save hymn.txt "
         "--out hymn.sng",
         &SongSave},
        {"song", "set", "FILE NAME=VALUE... [--out FILE] [--force]",
         "Sets attributes of a song and saves it (to FILE itself unless --out names another). Example: vxhost "
         "song set hymn.sng author=\"John Newton\"",
         &SongSet},
        {"song", "arrange", "FILE --lines N --chars M [--out FILE] [--force]",
         "Breaks a song anew: at most M characters a line and N lines a verse (0: no limit on lines); a line is cut, "
         "never joined. Prints the plain text, or saves a song file with --out. Example: vxhost song arrange "
         "hymn.sng --lines 4 --chars 30",
         &SongArrange},
        {"song", "slides", "FILE [--all-bands]",
         "Prints each verse as it goes on the screen: header, text lines, footer, by the verse's own switches "
         "and the registry's CCLI licence; a band the verse does not show is left out. --all-bands turns every switch on. Example: vxhost song "
         "slides amazing-grace.sng",
         &SongSlides},
        {"song", "find", "FOLDER QUERY... [--count]",
         "Searches every song (.sng, .txt) under a folder as a song list does and prints the matching files; "
         "QUERY is verse text, #CCLI-number or field=value (auth, cat, comm, key, title...). --count prints "
         "the number only. Example: vxhost song find hymns/ author=Newton",
         &SongFind},
    };
    return kCommands;
}
