// vxhost bible show / search: typed references and phrases, given to a translation
// the way the program's search box gives them, with a tree to show the result in.
#include <unistd.h>

#include "host/Host.h"
#include "host/HostBible.h"
#include "host/HostPrint.h"
#include "host/HostShownBible.h"
#include "host/HostEnvironment.h"
#include "host/HostText.h"
#include "host/HostTranslation.h"
#include "runtime/ValueConversion.h"

namespace {

constexpr int kFindContents = 1;
constexpr int kFindRefine = 0x100;
constexpr int kFindQuiet = 0x400;

// The lines of a text that show something, without their line ends.
void PrintLines(const std::string& text)
{
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.pop_back();
        if (!line.empty())
            HostOut() << line << '\n';
        start = end + 1;
    }
}

int BibleShow(const Arguments& arguments)
{
    if (arguments.size() < 2) {
        HostErr() << "vxhost: bible show takes a Bible and one or more references; see vxhost bible --help\n";
        return 2;
    }
    for (size_t i = 1; i < arguments.size(); ++i)
        if (arguments[i].rfind("--", 0) == 0) {
            HostErr() << "vxhost: unexpected argument \"" << arguments[i] << "\"\n";
            return 2;
        }
    ShownBible bible(HostPath(arguments[0]));
    if (!bible)
        return 1;
    int status = 0;
    for (size_t i = 1; i < arguments.size(); ++i) {
        // A line break makes the text a list, whose passages come back as text.
        SmartPtr<IUnknown> passages;
        bible.Search()->Find(HostWide(arguments[i] + "\r\n"), kFindQuiet, passages.Receive());
        std::string text = ToUtf8(passages.get());
        if (text.empty()) {
            status = HostFail(arguments[0] + ": no book matches \"" + arguments[i] + "\"");
            continue;
        }
        if (text.find_first_not_of("\r\n") == std::string::npos) {
            status = HostFail(arguments[0] + ": \"" + arguments[i] +
                              "\" names a book but no chapter of it; add a chapter");
            continue;
        }
        PrintLines(text);
    }
    return status;
}

// "Book C:V text": the header without the translation, and the verse without its number.
std::string HitLine(IUnknown* hit)
{
    auto verse = QueryAs<IVXTextReference>(hit);
    SmartPtr<IVXBook> book;
    if (!verse || verse->GetBook(book.Receive()) < 0 || !book)
        return ToUtf8(hit);
    int chapter = -1, number = -1;
    verse->GetPosition(&chapter, &number, nullptr);
    SmartPtr<IString> header;
    book->Header(header.Receive(), chapter, number, 1, nullptr);
    std::string place = ToUtf8(header);
    size_t open = place.rfind(" [");
    if (open != std::string::npos && place.back() == ']')
        place.erase(open);
    std::string text = ToUtf8(hit);
    size_t tab = text.find('\t');
    if (tab != std::string::npos)
        text.erase(0, tab + 1);
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n'))
        text.pop_back();
    return place + " " + text;
}

int BibleSearch(const Arguments& arguments)
{
    std::string bibleArgument, phrase;
    std::vector<std::string> within;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--within" && i + 1 < arguments.size() && !arguments[i + 1].empty()) {
            within.push_back(arguments[++i]);
        } else if (argument.rfind("--", 0) == 0 || !phrase.empty()) {
            HostErr() << "vxhost: unexpected argument \"" << argument << "\"\n";
            return 2;
        } else if (bibleArgument.empty()) {
            bibleArgument = argument;
        } else {
            phrase = argument;
        }
    }
    if (phrase.find_first_not_of(" \t\r\n") == std::string::npos) {
        HostErr() << "vxhost: bible search takes a Bible and the text to look for; see vxhost bible --help\n";
        return 2;
    }
    ShownBible bible(HostPath(bibleArgument));
    if (!bible)
        return 1;
    bible.ReadBooks();
    SmartPtr<IUnknown> hits;
    int32_t result = bible.Search()->Find(HostWide(phrase), kFindContents, hits.Receive());
    for (const std::string& narrower : within)
        if (result == S_OK) {
            hits = nullptr;
            result = bible.Search()->Find(HostWide(narrower), kFindContents | kFindRefine, hits.Receive());
        }
    auto found = hits.As<ISimpleCollection>();
    int count = 0;
    if (result == S_OK && found)
        found->get_Count(&count);
    if (count == 0)
        return HostFail(bibleArgument + ": no verse holds \"" + phrase + "\"" +
                        (within.empty() ? "" : " and every --within text"));
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> hit;
        found->get_Item(i, hit.Receive());
        HostOut() << HitLine(hit) << '\n';
    }
    HostOut() << "hits: " << count << '\n';
    return 0;
}

} // namespace

const std::vector<HostCommand>& BibleSearchCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"bible", "show", "BIBLE REFERENCE...",
         "Prints each passage with its header, one verse a line; BIBLE is a folder, .tBL or XML file. "
         "Example: vxhost bible show samples/bible \"Ruth 1:16-17\" \"Jonah 2\"",
         &BibleShow},
        {"bible", "search", "BIBLE TEXT [--within TEXT]...",
         "Prints every verse that holds the text as \"Book C:V text\", then the count; --within keeps "
         "the hits that also hold another text. Example: vxhost bible search samples/bible mercy --within peace",
         &BibleSearch},
    };
    return kCommands;
}
