// vxhost bible info / pack / unpack: a whole translation, as a folder of book files,
// a packed ".tBL" file or an XML Bible.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "host/Host.h"
#include "host/HostBible.h"
#include "host/HostEnvironment.h"
#include "host/HostPrint.h"
#include "host/HostText.h"
#include "host/HostTranslation.h"
#include "runtime/ValueConversion.h"

namespace {

namespace fs = std::filesystem;

// The file or folder argument and the options --out PATH and --force.
struct TranslationArguments {
    std::string m_Input;
    std::string m_Out;
    bool m_Force = false;
};

// -1 when the command may go on; otherwise the exit status: 2 when the command line is
// wrong, 1 when --out names something that exists and --force is missing.
int ParseArguments(const Arguments& arguments, bool wantsOut, TranslationArguments* parsed)
{
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (wantsOut && argument == "--out" && i + 1 < arguments.size()) {
            parsed->m_Out = HostPath(arguments[++i]);
        } else if (wantsOut && argument == "--force") {
            parsed->m_Force = true;
        } else if (argument.rfind("--", 0) == 0 || !parsed->m_Input.empty()) {
            HostErr() << "vxhost: unexpected argument \"" << argument << "\"\n";
            return 2;
        } else {
            parsed->m_Input = HostPath(argument);
        }
    }
    const char* missing = parsed->m_Input.empty() ? "the Bible to read" : nullptr;
    if (!missing && wantsOut && parsed->m_Out.empty())
        missing = "--out PATH";
    if (missing) {
        HostErr() << "vxhost: missing " << missing << "\n";
        return 2;
    }
    return wantsOut && HostRefuseExisting(parsed->m_Out, parsed->m_Force) ? 1 : -1;
}

} // namespace

SmartPtr<IFileArchive> LoadTranslation(const std::string& path)
{
    std::error_code error;
    if (!fs::exists(path, error)) {
        HostFail(path + ": no such file or folder");
        return {};
    }
    auto bible = HostCreate<IFileArchive>(L"VXBible");
    if (!bible) {
        HostFail("the Bible component is not installed");
        return {};
    }
    bible->put_Filename(HostWide(path));
    int32_t result = bible->Load();
    int count = 0;
    QueryAs<ISimpleCollection>(bible.get())->get_Count(&count);
    if (count < 1) {
        // A packed file that the archive refuses is told apart from one that holds no book.
        HostFail(path + (result < 0 ? ": could not be read: damaged, or not a packed Bible" : ": no books found"));
        return {};
    }
    return bible;
}

namespace {

SmartPtr<IVXBook> BookAt(IFileArchive* bible, int index)
{
    SmartPtr<IUnknown> item;
    QueryAs<ISimpleCollection>(bible)->get_Item(index, item.Receive());
    // A book of a folder is read on first use.
    if (auto file = item.As<IFileArchive>())
        file->Load();
    return item.As<IVXBook>();
}

// The name the translation files the book under, which is its file's name too.
std::string BookName(IFileArchive* bible, int index)
{
    SmartPtr<IString> name;
    QueryAs<INamedCollection>(bible)->get_ItemName(index, name.Receive());
    return ToUtf8(name);
}

// The abbreviation that a book's headers carry in brackets, or "".
std::string Abbreviation(IVXBook* book)
{
    SmartPtr<IString> header;
    book->Header(header.Receive(), 0, -1, 0, nullptr);
    std::string text = ToUtf8(header);
    size_t open = text.rfind(" [");
    if (open == std::string::npos || text.back() != ']')
        return "";
    return text.substr(open + 2, text.size() - open - 3);
}

int BibleInfo(const Arguments& arguments)
{
    TranslationArguments parsed;
    if (int status = ParseArguments(arguments, false, &parsed); status >= 0)
        return status;
    SmartPtr<IFileArchive> bible = LoadTranslation(parsed.m_Input);
    if (!bible)
        return 1;
    int count = 0;
    QueryAs<ISimpleCollection>(bible.get())->get_Count(&count);
    HostOut() << "books: " << count << '\n';
    for (int i = 0; i < count; ++i) {
        SmartPtr<IVXBook> book = BookAt(bible, i);
        int chapters = 0;
        book->get_ChapterCount(&chapters);
        HostOut() << "book: " << BookName(bible, i) << ", chapters: " << chapters << '\n';
    }
    if (count > 0)
        HostOut() << "abbreviation: " << Abbreviation(BookAt(bible, 0)) << '\n';
    return 0;
}

int BiblePack(const Arguments& arguments)
{
    TranslationArguments parsed;
    if (int status = ParseArguments(arguments, true, &parsed); status >= 0)
        return status;
    const std::string suffix = ".tBL";
    if (parsed.m_Out.size() <= suffix.size() || parsed.m_Out.compare(parsed.m_Out.size() - 4, 4, suffix) != 0) {
        HostErr() << "vxhost: --out " << parsed.m_Out << ": a packed Bible's name ends in .tBL\n";
        return 2;
    }
    SmartPtr<IFileArchive> bible = LoadTranslation(parsed.m_Input);
    if (!bible)
        return 1;
    // The packed file is named after the Bible, with ".tBL" behind.
    bible->put_Filename(HostWide(parsed.m_Out.substr(0, parsed.m_Out.size() - 4)));
    std::error_code error;
    auto before = fs::exists(parsed.m_Out, error) ? fs::last_write_time(parsed.m_Out, error) : fs::file_time_type();
    if (bible->Save() < 0 || !fs::exists(parsed.m_Out, error) || fs::last_write_time(parsed.m_Out, error) == before)
        return HostFail(parsed.m_Out + ": could not be written");
    int count = 0;
    QueryAs<ISimpleCollection>(bible.get())->get_Count(&count);
    HostOut() << "packed: " << count << " books\n" << "written: " << parsed.m_Out << '\n';
    return 0;
}

// Writes every book and bible.ini into `folder`, which exists and is empty.
bool WriteFolder(IFileArchive* bible, const std::string& folder)
{
    auto ini = HostCreate<IFileArchive>(L"INIFile");
    if (!ini)
        return false;
    QueryAs<IINIFile>(ini.get())->put_Section(HostWide("Bible"));
    auto entries = ini.As<IParametersCreatable>();
    int count = 0;
    QueryAs<ISimpleCollection>(bible)->get_Count(&count);
    if (count > 0)
        entries->Add(HostWide("abbreviation"), HostWide(Abbreviation(BookAt(bible, 0))), nullptr, 0);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IVXBook> book = BookAt(bible, i);
        std::string name = BookName(bible, i);
        auto file = book.As<IFileArchive>();
        if (name.empty() || name.find('/') != std::string::npos || !file)
            return false;
        file->put_Filename(HostWide(folder + "/" + name + ".bbl"));
        if (file->Save() < 0)
            return false;
        entries->Add(HostWide(std::to_string(i + 1)), HostWide(name), nullptr, 0);
    }
    ini->put_Filename(HostWide(folder + "/bible.ini"));
    return ini->Save() >= 0;
}

int BibleUnpack(const Arguments& arguments)
{
    TranslationArguments parsed;
    if (int status = ParseArguments(arguments, true, &parsed); status >= 0)
        return status;
    SmartPtr<IFileArchive> bible = LoadTranslation(parsed.m_Input);
    if (!bible)
        return 1;
    // Written beside the target and moved over it whole, so a failure leaves the old folder.
    std::string temporary = parsed.m_Out + ".vxhost-" + std::to_string(::getpid());
    std::error_code error;
    fs::remove_all(temporary, error);
    if (!fs::create_directories(temporary, error) || !WriteFolder(bible, temporary)) {
        fs::remove_all(temporary, error);
        return HostFail(parsed.m_Out + ": could not be written");
    }
    fs::remove_all(parsed.m_Out, error);
    fs::rename(temporary, parsed.m_Out, error);
    if (error) {
        fs::remove_all(temporary, error);
        return HostFail(parsed.m_Out + ": could not be written");
    }
    int count = 0;
    QueryAs<ISimpleCollection>(bible.get())->get_Count(&count);
    HostOut() << "unpacked: " << count << " books\n" << "written: " << parsed.m_Out << '\n';
    return 0;
}

// The Bible writes the books of an HTML file under a fixed name, "C:\\Bible\\" and the
// book's name, which on this system is a file of that name in the working folder. The
// conversion therefore runs in a folder of its own, which sees the modules through a
// link, and the books are then taken from there.
int BibleFromHtml(const Arguments& arguments)
{
    TranslationArguments parsed;
    if (int status = ParseArguments(arguments, true, &parsed); status >= 0)
        return status;
    std::error_code error;
    if (!fs::is_regular_file(parsed.m_Input, error))
        return HostFail(parsed.m_Input + ": no such file");
    fs::path modules = fs::current_path(error);
    if (!std::getenv("VX_REGISTRY") && fs::exists(modules / "registry.ini", error))
        ::setenv("VX_REGISTRY", (modules / "registry.ini").c_str(), 1);
    fs::path work = parsed.m_Out + ".vxhost-" + std::to_string(::getpid());
    fs::remove_all(work, error);
    fs::create_directories(work, error);
    fs::create_directory_symlink(modules / "_binlinux", work / "_binlinux", error);
    if (error || ::chdir(work.c_str()) != 0) {
        fs::remove_all(work, error);
        return HostFail(parsed.m_Out + ": could not be written");
    }
    // The input keeps its name: the form is chosen by the extension "htm" alone.
    fs::path input = work / "input.htm";
    fs::copy_file(parsed.m_Input, input, error);
    auto bible = HostCreate<IFileArchive>(L"VXBible");
    if (bible) {
        bible->put_Filename(HostWide(input.string()));
        bible->Load();
    }
    fs::path books = work / "books";
    fs::create_directories(books, error);
    const std::string prefix = "C:\\Bible\\";
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(work, error)) {
        std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) != 0)
            continue;
        names.push_back(name.substr(prefix.size()));
        fs::rename(entry.path(), books / names.back(), error);
    }
    bool failed = !bible || names.empty();
    if (!failed) {
        fs::remove_all(parsed.m_Out, error);
        fs::rename(books, parsed.m_Out, error);
        failed = bool(error);
    }
    fs::current_path(modules, error);
    fs::remove_all(work, error);
    if (failed)
        return HostFail(parsed.m_Input + ": no book found in the HTML body");
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        HostOut() << "book file: " << name << '\n';
    HostOut() << "written: " << parsed.m_Out << '\n';
    return 0;
}

} // namespace

const std::vector<HostCommand>& BibleTranslationCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"bible", "info", "BIBLE",
         "Reads a Bible (a folder of .bbl files, a .tBL or an .xml file) and prints its books and chapters.\n"
         "Example: vxhost bible info samples/bible",
         &BibleInfo},
        {"bible", "pack", "FOLDER --out FILE.tBL [--force]",
         "Packs a folder Bible into one .tBL file that holds the whole text.\n"
         "Example: vxhost bible pack samples/bible --out /tmp/kjv.tBL",
         &BiblePack},
        {"bible", "unpack", "FILE.tBL --out FOLDER [--force]",
         "Writes a packed Bible out as a folder of .bbl files with its bible.ini.\n"
         "Example: vxhost bible unpack /tmp/kjv.tBL --out /tmp/kjv",
         &BibleUnpack},
        {"bible", "from-html", "FILE.htm --out FOLDER [--force]",
         "Cuts an HTML Bible (anchors for books and chapters, bold verse numbers) into .bbl files.\n"
         "Example: vxhost bible from-html samples/bible-html/sample.htm --out /tmp/html-bible",
         &BibleFromHtml},
    };
    return kCommands;
}
