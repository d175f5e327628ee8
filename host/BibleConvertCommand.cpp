// vxhost bible convert: a Bible given as one long text becomes a folder of ".bbl"
// files and a "bible.ini", by the module's own conversion step.
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostPrint.h"
#include "host/HostText.h"
#include "persistence/FileBuffer.h"
#include "runtime/ValueConversion.h"

namespace fs = std::filesystem;

namespace {

// The module hands file names to the C library in 254 bytes; the folder leaves room
// for a book's name behind it.
constexpr size_t kLongestFolder = 180;

int BadCommandLine(const std::string& message)
{
    HostErr() << "vxhost: " << message << "; see vxhost bible convert --help\n";
    return 2;
}

struct ConvertOptions {
    std::string m_Input;
    std::string m_Output;
    bool m_Force = false;
};

// Empty on success, else the complaint.
std::string ParseOptions(const Arguments& arguments, ConvertOptions* options)
{
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--force") {
            options->m_Force = true;
        } else if (argument == "--out") {
            if (i + 1 >= arguments.size())
                return "--out needs a folder";
            options->m_Output = HostPath(arguments[++i]);
        } else if (argument.rfind("--", 0) == 0) {
            return "unknown option " + argument;
        } else if (options->m_Input.empty()) {
            options->m_Input = HostPath(argument);
        } else {
            return "one long text at a time: " + argument;
        }
    }
    if (options->m_Input.empty())
        return "the long text is missing";
    if (options->m_Output.empty())
        return "--out FOLDER is missing";
    return {};
}

// A byte that no long text holds: a control character other than the line and
// page breaks and the tab.
bool IsStrayControl(char c)
{
    return uint8_t(c) < 32 && c != '\t' && c != '\n' && c != '\r' && c != '\f' && c != '\v';
}

// 16-bit text, read as the module reads it and kept in UTF-8.
std::string CheckWideText(const std::string& file, std::string* bytes)
{
    auto name = SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size())));
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(CREFString(name.get()), &data, &size, FILELOAD_TEXT, 0) < 0)
        return "cannot read " + file;
    std::wstring text(static_cast<wchar_t*>(data), size);
    delete[] static_cast<wchar_t*>(data);
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    *bytes = ToUtf8(text.data(), int(text.size()));
    for (char c : *bytes) {
        if (IsStrayControl(c))
            return file + " is not a text file";
    }
    return {};
}

// The file's bytes where the host must hand the step a copy (16-bit text, in UTF-8;
// or lines that end in LF alone), else nothing; an error when it can't be a long
// text. The step reads the file itself, so a text that will do as it stands is only
// looked at, a piece at a time, and not kept.
std::string CheckText(const std::string& file, std::string* bytes)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return "cannot read " + file + " (missing or not a file)";
    if (fs::file_size(file, error) == 0)
        return file + " is empty";
    std::ifstream in(file, std::ios::binary);
    std::string piece(size_t(1) << 20, '\0');
    bool first = true;
    bool carriageReturn = false;
    bool lineFeed = false;
    while (in) {
        in.read(piece.data(), std::streamsize(piece.size()));
        size_t got = size_t(in.gcount());
        if (got == 0)
            break;
        if (first && got >= 2 && ((uint8_t(piece[0]) == 0xFF && uint8_t(piece[1]) == 0xFE) ||
                                  (uint8_t(piece[0]) == 0xFE && uint8_t(piece[1]) == 0xFF)))
            return CheckWideText(file, bytes);
        first = false;
        for (size_t i = 0; i < got; ++i) {
            char c = piece[i];
            if (uint8_t(c) >= 32)
                continue;
            if (IsStrayControl(c))
                return file + " is not a text file";
            carriageReturn = carriageReturn || c == '\r';
            lineFeed = lineFeed || c == '\n';
        }
    }
    if (in.bad() || first)
        return "cannot read " + file;
    if (lineFeed && !carriageReturn) {
        std::ifstream whole(file, std::ios::binary);
        bytes->assign(std::istreambuf_iterator<char>(whole), std::istreambuf_iterator<char>());
        if (!whole && !whole.eof())
            return "cannot read " + file;
    }
    return {};
}

// The step cuts lines at CR. A text whose lines end in LF alone is handed over as
// a copy with CR LF ends; empty when the original will do.
std::string CopyWithCRLF(const std::string& bytes, const fs::path& folder)
{
    if (bytes.find('\r') != std::string::npos || bytes.find('\n') == std::string::npos)
        return {};
    std::string lines;
    lines.reserve(bytes.size() + bytes.size() / 16);
    for (char c : bytes) {
        if (c == '\n')
            lines += '\r';
        lines += c;
    }
    fs::path copy = folder / "longtext.txt";
    std::ofstream out(copy, std::ios::binary);
    out.write(lines.data(), std::streamsize(lines.size()));
    return out ? copy.string() : std::string();
}

struct ConvertResult {
    std::vector<std::string> m_Books;
};

SmartPtr<IVariant> TextVariant(const std::string& text)
{
    auto variant = HostCreate<IVariant>(L"Variant");
    if (variant)
        variant->put_String(SmartPtr<IString>::Adopt(ISCreate(text.data(), int(text.size()))));
    return variant;
}

// Runs "VXSongConvert" on the text into `folder`; an error or empty.
std::string RunStep(const std::string& input, const fs::path& folder)
{
    auto step = HostCreate<IParameters>(L"VXSongConvert");
    auto run = step.As<IStep>();
    if (!step || !run)
        return "the component VXSongConvert is not available";
    std::string target = folder.string();
    step->put_Item(0, TextVariant(input));
    step->put_Item(1, TextVariant(target));
    if (run->TurnOn() < 0)
        return "the conversion of " + input + " failed";
    return {};
}

// The books that the written "bible.ini" lists, checked against the files.
std::string ReadBooks(const fs::path& folder, const std::string& input, ConvertResult* result)
{
    std::string ini = (folder / "bible.ini").string();
    auto name = SmartPtr<IString>::Adopt(ISCreate(ini.data(), int(ini.size())));
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(CREFString(name.get()), &data, &size, FILELOAD_TEXT, 0) < 0)
        return "cannot write the converted Bible (no bible.ini came out)";
    std::wstring text(static_cast<wchar_t*>(data), size);
    delete[] static_cast<wchar_t*>(data);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(L'\n', start);
        std::wstring line = text.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
        start = end == std::wstring::npos ? text.size() : end + 1;
        size_t equals = line.find(L" = ");
        if (line.empty() || line[0] < L'0' || line[0] > L'9' || equals == std::wstring::npos)
            continue;
        std::wstring book = line.substr(equals + 3);
        while (!book.empty() && (book.back() == L'\r' || book.back() == L'\0'))
            book.pop_back();
        result->m_Books.push_back(ToUtf8(book.data(), int(book.size())));
    }
    if (result->m_Books.empty())
        return "no book title found in " + input + " (a book's name goes on a line of its own before its chapters)";
    for (size_t i = 0; i < result->m_Books.size(); ++i) {
        const std::string& book = result->m_Books[i];
        // The file of a book that comes twice holds only the later one.
        for (size_t j = 0; j < i; ++j)
            if (result->m_Books[j] == book)
                return "the book \"" + book + "\" comes twice in " + input + "; the second would replace the first";
        std::error_code error;
        if (book.find('/') != std::string::npos || !fs::is_regular_file(folder / (book + ".bbl"), error))
            return "cannot write the book \"" + book + "\" of " + input;
    }
    return {};
}

// Verse lines of a written book that stand before its first chapter heading: the
// Bible side can't place them.
int StrayVerses(const fs::path& file, const std::string& book)
{
    std::ifstream in(file, std::ios::binary);
    std::string line;
    std::string heading = book + " ";
    int stray = 0;
    while (std::getline(in, line)) {
        if (line.rfind(heading, 0) == 0)
            return stray;
        if (!line.empty() && line[0] >= '0' && line[0] <= '9')
            ++stray;
    }
    return stray;
}

// The staging folder replaces the target in one rename; an old target goes only
// after the new one is in place.
std::string PutInPlace(const fs::path& staging, const fs::path& target)
{
    std::error_code error;
    fs::path old;
    if (fs::exists(target, error)) {
        old = target.string() + ".old-" + std::to_string(getpid());
        fs::rename(target, old, error);
        if (error)
            return "cannot replace " + target.string() + ": " + error.message();
    }
    fs::rename(staging, target, error);
    if (error) {
        if (!old.empty())
            fs::rename(old, target, error);
        return "cannot write " + target.string() + ": " + error.message();
    }
    if (!old.empty())
        fs::remove_all(old, error);
    return {};
}

int BibleConvert(const Arguments& arguments)
{
    ConvertOptions options;
    if (std::string complaint = ParseOptions(arguments, &options); !complaint.empty())
        return BadCommandLine(complaint);
    fs::path target = fs::path(options.m_Output).lexically_normal();
    if (target.has_filename() == false)
        target = target.parent_path();
    std::error_code error;
    if (fs::exists(target, error)) {
        if (!fs::is_directory(target, error))
            return HostFail(target.string() + " exists and is not a folder");
        if (!fs::is_empty(target, error) && !options.m_Force)
            return HostFail(target.string() + " is not empty; --force replaces it");
    }
    std::string bytes;
    if (std::string complaint = CheckText(options.m_Input, &bytes); !complaint.empty())
        return HostFail(complaint);

    // Beside the target, so that the last step is a rename on one file system.
    std::string pattern = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    if (pattern.size() > kLongestFolder)
        return HostFail("the path of " + target.string() + " is too long for the module's file names");
    fs::create_directories(target.parent_path(), error);
    if (!mkdtemp(pattern.data()))
        return HostFail("cannot write " + target.string() + ": " + std::generic_category().message(errno));
    fs::path staging = pattern;
    // mkdtemp keeps the folder to its owner; the Bible is an ordinary folder.
    mode_t mask = umask(0);
    umask(mask);
    fs::permissions(staging, fs::perms(0777 & ~mask), error);
    fs::path work = staging.string() + ".in";
    fs::create_directory(work, error);

    if (isatty(2)) {
        HostErr() << "converting " << options.m_Input << " ...";
        HostErr().Flush();
    }
    std::string input = CopyWithCRLF(bytes, work);
    bytes.clear();
    bytes.shrink_to_fit();
    std::string complaint = RunStep(input.empty() ? options.m_Input : input, staging);
    fs::remove_all(work, error);
    ConvertResult result;
    if (complaint.empty())
        complaint = ReadBooks(staging, options.m_Input, &result);
    if (complaint.empty())
        complaint = PutInPlace(staging, target);
    if (isatty(2))
        HostErr() << (complaint.empty() ? " done\n" : " failed\n");
    if (!complaint.empty()) {
        fs::remove_all(staging, error);
        return HostFail(complaint);
    }
    for (const std::string& book : result.m_Books) {
        if (int stray = StrayVerses(target / (book + ".bbl"), book))
            HostErr() << "vxhost: warning: " << book << ": " << stray << " verse lines before its first chapter\n";
    }
    HostOut() << "folder: " << target.string() << '\n' << "books: " << result.m_Books.size() << '\n';
    for (size_t i = 0; i < result.m_Books.size(); ++i)
        HostOut() << "book " << (i + 1) << ": " << result.m_Books[i] << '\n';
    return 0;
}

} // namespace

const std::vector<HostCommand>& BibleConvertCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"bible", "convert", "LONGTEXT --out FOLDER [--force]",
         "Cuts a Bible given as one long text into one .bbl file a book and a bible.ini in FOLDER.\n"
         "A book's name stands on a line of its own, then a chapter number alone, then numbered verses.\n"
         "Example: vxhost bible convert samples/longtext/kjv-jonah-philemon.txt --out /tmp/kjv",
         &BibleConvert},
    };
    return kCommands;
}
