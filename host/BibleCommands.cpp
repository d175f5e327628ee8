// vxhost bible ...: one book of a Bible read from its ".bbl" file, as a translation reads it.
#include <sys/stat.h>

#include <cstdlib>
#include <regex>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostPrint.h"
#include "host/HostText.h"
#include "persistence/FileBuffer.h"
#include "persistence/TextLine.h"
#include "runtime/ValueConversion.h"

namespace {

// A book file's first line names the book: "3 John 1" opens the chapters of "3 John".
// Empty when the first line is no such heading.
std::wstring NameInText(const std::string& file)
{
    auto name = SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size())));
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(CREFString(name.get()), &data, &size, FILELOAD_TEXT, 512) < 0)
        return {};
    auto* text = static_cast<wchar_t*>(data);
    CREFString rest(text, int32_t(size));
    CREFString line;
    TextTrimLeft(rest);
    TextNextLine(rest, &line);
    TextTrimRight(line);
    int32_t length = line.m_Length;
    while (line.m_Length > 0 && std::iswdigit(wint_t(line.m_Buffer[line.m_Length - 1])))
        --line.m_Length;
    if (line.m_Length == length)
        line.m_Length = 0;
    TextTrimRight(line);
    std::wstring result(line.m_Buffer ? line.m_Buffer : L"", size_t(line.m_Length > 0 ? line.m_Length : 0));
    delete[] text;
    return result;
}

// The names go in as a translation gives them: through the book's properties.
bool NameBook(IVXBook* book, const std::wstring& name)
{
    auto properties = QueryAs<IUIPropInterrogateEx>(book);
    auto value = SmartPtr<IString>::Adopt(ISCreate(name.c_str()));
    return properties && properties->ControlEx(BOOK_PROP_USERNAME, value) >= 0 &&
           properties->ControlEx(BOOK_PROP_NAMEINTEXT, value) >= 0;
}

int CountOf(IVXBook* book, int chapter)
{
    int count = 0;
    book->get_VerseCount(chapter, &count);
    return count;
}

// The book of a file, read and indexed; empty with the message on failure.
SmartPtr<IVXBook> OpenBook(const std::string& file, std::string* error)
{
    struct stat status;
    if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        *error = "cannot read " + file + " (missing or not a file)";
        return {};
    }
    if (status.st_size == 0 || file.size() > 254) {
        *error = "cannot read " + file + (status.st_size == 0 ? " (empty)" : " (path longer than 254 bytes)");
        return {};
    }
    auto book = HostCreate<IVXBook>(L"VXBibleBook");
    if (!book) {
        *error = "the component VXBibleBook is not available";
        return {};
    }
    std::wstring name = NameInText(file);
    if (name.empty()) {
        *error = file + " is not a Bible book: its first line is no chapter heading";
        return {};
    }
    if (!NameBook(book, name)) {
        *error = "the book cannot be given its name";
        return {};
    }
    auto archive = book.As<IFileArchive>();
    archive->put_Filename(SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size()))));
    if (archive->Load() < 0) {
        *error = "cannot read " + file;
        return {};
    }
    int chapters = 0;
    book->get_ChapterCount(&chapters);
    int verses = 0;
    for (int chapter = 0; chapter < chapters; ++chapter)
        verses += CountOf(book, chapter);
    if (verses < 1) {
        *error = file + " is not a Bible book: it holds no verse";
        return {};
    }
    return book;
}

std::string Line(IUnknown* text)
{
    CREFString view(text);
    TextTrimRight(view);
    return view.m_Length > 0 ? ToUtf8(view.m_Buffer, view.m_Length) : std::string();
}

// The file of a path argument, opened as a book; empty once the failure is told.
SmartPtr<IVXBook> OpenBookArgument(const std::string& argument, std::string* file)
{
    *file = HostPath(argument);
    std::string error;
    auto book = OpenBook(*file, &error);
    if (!book)
        HostFail(error);
    return book;
}

int BadCommandLine(const std::string& message)
{
    HostFail(message);
    return 2;
}

int BibleIndex(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return BadCommandLine("bible index takes one file; see vxhost bible --help");
    std::string file;
    auto book = OpenBookArgument(arguments[0], &file);
    if (!book)
        return 1;
    SmartPtr<IString> name;
    book->Header(name.Receive(), -1, -1, 0, nullptr);
    int chapters = 0;
    book->get_ChapterCount(&chapters);
    HostOut() << "book: " << ToUtf8(name.get()) << "\nchapters: " << chapters << '\n';
    int total = 0;
    for (int chapter = 0; chapter < chapters; ++chapter) {
        int verses = CountOf(book, chapter);
        total += verses;
        HostOut() << "chapter " << chapter + 1 << ": " << verses << " verses\n";
    }
    HostOut() << "verses: " << total << '\n';
    return 0;
}

int BibleVerses(const Arguments& arguments)
{
    static const std::regex kReference(R"(^([0-9]{1,4})(?::([0-9]{1,4})(?:-([0-9]{1,4}))?)?$)");
    std::smatch parts;
    if (arguments.size() != 2 || !std::regex_match(arguments[1], parts, kReference))
        return BadCommandLine("bible verses takes a file and CHAPTER[:VERSE[-VERSE]]; see vxhost bible --help");
    // People count from 1; the book counts from 0.
    int chapter = std::atoi(parts[1].str().c_str()) - 1;
    int first = parts[2].matched ? std::atoi(parts[2].str().c_str()) - 1 : -1;
    int last = parts[3].matched ? std::atoi(parts[3].str().c_str()) - 1 : first;
    if (chapter < 0 || (parts[2].matched && first < 0) || last < first)
        return BadCommandLine("no such passage \"" + arguments[1] + "\": chapters and verses count from 1, in order");
    std::string file;
    auto book = OpenBookArgument(arguments[0], &file);
    if (!book)
        return 1;
    int chapters = 0;
    book->get_ChapterCount(&chapters);
    if (chapter >= chapters)
        return HostFail(file + ": no chapter " + std::to_string(chapter + 1) + " (the book has " +
                        std::to_string(chapters) + ")");
    int verses = CountOf(book, chapter);
    if (last >= verses)
        return HostFail(file + ": no verse " + std::to_string(chapter + 1) + ":" + std::to_string(last + 1) +
                        " (the chapter has " + std::to_string(verses) + ")");
    int from = first < 0 ? 0 : first;
    int to = first < 0 ? verses - 1 : last;
    SmartPtr<IString> header;
    book->Header(header.Receive(), chapter, first, first < 0 ? 1 : last - first + 1, nullptr);
    HostOut() << Line(header) << '\n';
    for (int verse = from; verse <= to; ++verse) {
        SmartPtr<IString> text;
        if (book->get_Verse(chapter, verse, 1, text.Receive()) < 0)
            return HostFail(file + ": verse " + std::to_string(chapter + 1) + ":" + std::to_string(verse + 1) +
                            " cannot be read");
        HostOut() << Line(text) << '\n';
    }
    return 0;
}

} // namespace

const std::vector<HostCommand>& BibleCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"bible", "verses", "FILE.bbl CHAPTER[:VERSE[-VERSE]]",
         "Prints a passage of a book: its header, then one verse a line with its number. "
         "Example: vxhost bible verses jonah.bbl 2:1-3",
         &BibleVerses},
        {"bible", "index", "FILE.bbl",
         "Prints the chapters of a book with their verse counts. Example: vxhost bible index ruth.bbl", &BibleIndex},
    };
    return kCommands;
}
