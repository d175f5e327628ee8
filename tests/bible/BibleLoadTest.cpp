// A translation as it comes to exist: a folder of book files with or without its
// bible.ini, a packed file written from it and read back, an XML Bible, and an HTML
// Bible cut into book files.
#include <filesystem>
#include <string>
#include <vector>

#include "bible/BookMaker.h"
#include "support/Collections.h"

using namespace vxtest;

namespace {

namespace fs = std::filesystem;

// A book file whose chapter headings open with `heading`.
std::string BookFile(const std::string& heading, int chapters)
{
    std::string text;
    for (int c = 1; c <= chapters; ++c)
        text += heading + " " + std::to_string(c) + "\r\n \r\n1:\tFirst of " + std::to_string(c) +
                "\r\n2:\tSecond\r\n";
    return text;
}

// A bible.ini of `count` numbered entries, "Name<i>" unless named in `names`, and
// the abbreviation "BIG".
std::string Numbered(int count, const std::vector<std::pair<int, std::string>>& names)
{
    std::string ini = "[Bible]\r\nAbbreviation=BIG\r\n";
    for (int i = 1; i <= count; ++i) {
        std::string name = "Name" + std::to_string(i);
        for (const auto& [number, given] : names)
            if (number == i)
                name = given;
        ini += std::to_string(i) + "=" + name + "\r\n";
    }
    return ini;
}

// A line for each book, "name[abbreviation]:chapters", read as a user opens it; its
// header must begin with the name the translation files it under. With verses, a line
// for each verse follows ("Ruth 2:3 | text"), and the abbreviation, which the forms of
// one translation need not share, is left out.
std::vector<std::wstring> Contents(IFileArchive* bible, bool verses = false)
{
    auto books = QueryAs<INamedCollection>(bible);
    std::vector<std::wstring> lines;
    for (int i = 0, count = Count(books); i < count; ++i) {
        SmartPtr<IString> name, header;
        SmartPtr<IUnknown> item;
        books->get_ItemName(i, name.Receive());
        books->get_Item(i, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        auto book = item.As<IVXBook>();
        int chapters = 0;
        book->get_ChapterCount(&chapters);
        book->Header(header.Receive(), 0, 0, 1, nullptr);
        std::wstring full = Text(header);
        size_t open = full.find(L'[');
        std::wstring abbreviation = open == std::wstring::npos ? L"" : full.substr(open + 1, full.size() - open - 2);
        if (full.rfind(Text(name) + L" ", 0) != 0)
            abbreviation = L"header " + full;
        lines.push_back(Text(name) + (verses ? L"" : L"[" + abbreviation + L"]") + L":" + std::to_wstring(chapters));
        for (int c = 0; verses && c < chapters; ++c) {
            int count = 0;
            book->get_VerseCount(c, &count);
            for (int v = 0; v < count; ++v) {
                std::wstring text = Verse(book, c, v, 1);
                // A cut HTML Bible ends its lines in CR LF, and a book's line keeps its CR:
                // that is how the cut files are written and read, not a difference of text.
                if (!text.empty() && text.back() == L'\r')
                    text.pop_back();
                lines.push_back(Text(name) + L" " + std::to_wstring(c + 1) + L":" + std::to_wstring(v + 1) + L" | " +
                                text);
            }
        }
    }
    return lines;
}

std::wstring Books(IFileArchive* bible)
{
    std::wstring out;
    for (const std::wstring& line : Contents(bible))
        out += (out.empty() ? L"" : L" ") + line;
    return out;
}

SmartPtr<IFileArchive> LoadBible(const fs::path& path)
{
    auto bible = OpenBible(path);
    EXPECT_GE(bible->Load(), 0) << path;
    return bible;
}

// Packs a copy of the sample folder beside it and removes the copy: what is read
// afterwards comes from the packed file alone.
fs::path Pack(const fs::path& copy)
{
    fs::copy(SamplePath("bible"), copy);
    EXPECT_EQ(LoadBible(copy)->Save(), S_OK);
    fs::remove_all(copy);
    return copy.string() + ".tBL";
}

// Cuts the sample HTML into book files and gathers them in `folder`. The cutting writes
// to a fixed name in the working folder, so it runs in a folder of its own that sees
// the modules through a link.
fs::path CutHtml(const fs::path& work, const fs::path& folder)
{
    fs::create_directories(work);
    fs::create_directories(folder);
    fs::create_directory_symlink(fs::current_path() / "_binlinux", work / "_binlinux");
    auto bible = Create<IFileArchive>(L"VXBible");
    bible->put_Filename(Str(fs::path(SamplePath("bible-html/sample.htm")).wstring()));
    fs::path back = fs::current_path();
    fs::current_path(work);
    EXPECT_EQ(bible->Load(), S_OK);
    fs::current_path(back);
    const std::string prefix = "C:\\Bible\\";
    for (const auto& entry : fs::directory_iterator(work)) {
        std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) == 0)
            fs::rename(entry.path(), folder / name.substr(prefix.size()));
    }
    return folder;
}

class BibleLoadTest : public ModuleTest {
protected:
    TempFolder m_Folder;
};

TEST_F(BibleLoadTest, FolderBooksFollowBibleIni)
{
    struct Case {
        const char* folder;
        std::string ini; // empty: no bible.ini
        std::vector<std::pair<std::string, std::string>> files; // file name, heading
        const wchar_t* books;
    } cases[] = {
        // No bible.ini: the table's 66 names, and the folder's capitals abbreviate.
        {"Sample Bible", "", {{"Genesis", "Genesis"}, {"Jude", "Jude"}}, L"Genesis[SB]:2 Jude[SB]:1"},
        {"lower", "", {{"Jude", "Jude"}}, L"Jude[]:1"},
        // Three numbered entries: only the first three rows are tried.
        {"KJV", "[Bible]\r\nAbbreviation=KJV\r\n1=Genesis\r\n2=Exodus\r\n3=Leviticus\r\n",
         {{"Genesis", "Genesis"}, {"Leviticus", "Leviticus"}, {"Jude", "Jude"}},
         L"Genesis[KJV]:2 Leviticus[KJV]:2"},
        // Two entries without an abbreviation give two books; their own names lead to the files.
        {"DE", "[Bible]\r\n1=Anfang\r\n2=Auszug\r\n", {{"Anfang", "Anfang"}, {"Exodus", "Auszug"}},
         L"Anfang[DE]:2 Auszug[DE]:2"},
        // One entry alone means all 66; with no file of its own the table's file is read
        // under the configured name.
        {"One", "[Bible]\r\n1=Anfang\r\n", {{"Genesis", "Anfang"}, {"Jude", "Jude"}}, L"Anfang[O]:2 Jude[O]:1"},
        // Keys in other case, and a folder that is named like a book file.
        {"Case", "[BIBLE]\r\nabbreviation=CS\r\n", {{"Ruth.bbl/", ""}, {"Jude", "Jude"}}, L"Jude[CS]:1"},
        // The abbreviation is no book: with it, one entry still means all 66.
        {"AB", "[Bible]\r\nAbbreviation=AB\r\n1=Anfang\r\n", {{"Genesis", "Anfang"}, {"Ruth", "Ruth"}},
         L"Anfang[AB]:2 Ruth[AB]:2"},
        // Books named only by bible.ini whose files are all missing: none to read.
        {"Missing", "[Bible]\r\n1=Anfang\r\n2=Auszug\r\n", {{"Leviticus", "Leviticus"}}, L""},
        // More entries than the table has rows: past it only bible.ini's own names lead to a file.
        {"Big", Numbered(68, {{2, "Auszug"}, {67, "Enoch"}, {68, "Lost"}}), {{"Auszug", "Auszug"}, {"Enoch", "Enoch"}},
         L"Auszug[BIG]:2 Enoch[BIG]:2"},
    };
    for (const Case& c : cases) {
        auto folder = m_Folder / c.folder;
        fs::create_directories(folder);
        if (!c.ini.empty())
            WriteBytes(folder / "bible.ini", c.ini);
        for (const auto& [file, heading] : c.files) {
            if (file.back() == '/')
                fs::create_directories(folder / file);
            else
                WriteBytes(folder / (file + ".bbl"), BookFile(heading, file == "Jude" ? 1 : 2));
        }
        auto bible = OpenBible(folder);
        EXPECT_EQ(bible->Load(), S_OK) << c.folder;
        EXPECT_EQ(Books(bible), c.books) << c.folder;
    }
}

TEST_F(BibleLoadTest, LoadsOnceUntilRenamed)
{
    auto folder = m_Folder / "Once";
    fs::create_directories(folder);
    WriteBytes(folder / "Jude.bbl", BookFile("Jude", 1));
    auto bible = OpenBible(folder);
    ASSERT_EQ(bible->Load(), S_OK);
    WriteBytes(folder / "Ruth.bbl", BookFile("Ruth", 2));
    EXPECT_EQ(bible->Load(), S_OK);
    EXPECT_EQ(Books(bible), L"Jude[O]:1");
    bible->put_Filename(Str((folder.wstring() + L"/")));
    bible->put_Filename(Str(folder.wstring()));
    ASSERT_EQ(bible->Load(), S_OK);
    EXPECT_EQ(Books(bible), L"Ruth[O]:2 Jude[O]:1");
    // A packed file that is not there fails once; a Bible with no file has nothing to pack.
    auto missing = OpenBible(m_Folder / "none.tBL");
    EXPECT_LT(missing->Load(), 0);
    EXPECT_EQ(missing->Load(), S_OK);
    EXPECT_EQ(Create<IFileArchive>(L"VXBible")->Save(), E_FAIL);
}

TEST_F(BibleLoadTest, InsideAnotherDocumentOnlyTheFileIsKept)
{
    auto folder = m_Folder / "Kept";
    fs::create_directories(folder);
    WriteBytes(folder / "Jude.bbl", BookFile("Jude", 1));
    auto stream = Create<IFolderStream>(L"FolderStream");
    {
        auto bible = OpenBible(folder);
        ASSERT_EQ(QueryAs<IDataPersist>(bible.get())->Save(stream, 0), S_OK);
    }
    SmartPtr<IDataStream> text;
    EXPECT_LT(stream->OpenFolder(Str(L"BibleText"), 0, text.Receive()), 0);
    auto loaded = Create<IFileArchive>(L"VXBible");
    ASSERT_EQ(QueryAs<IDataPersist>(loaded.get())->Load(stream, 0), S_OK);
    EXPECT_EQ(Books(loaded), L"Jude[K]:1");
    SmartPtr<IString> name;
    loaded->get_Filename(name.Receive());
    EXPECT_EQ(Text(name), folder.wstring());
}

TEST_F(BibleLoadTest, XMLBibleMakesBooksOfTheBookEntries)
{
    auto file = m_Folder / "kjv.xml";
    WriteBytes(file, "<?xml version=\"1.0\"?><Bible>"
                     "<Book name=\"Ruth\"><Chapter><Verse>Now it came to pass</Verse></Chapter>"
                     "<Chapter><Verse>And Naomi</Verse></Chapter></Book>"
                     "<Title>not a book</Title>"
                     "<Bo name=\"Jude\"><Verse>Jude, the servant</Verse></Bo>"
                     "</Bible>");
    auto bible = OpenBible(file);
    ASSERT_EQ(bible->Load(), S_OK);
    EXPECT_EQ(Books(bible), L"Ruth[]:2 Jude[]:1");
    SmartPtr<IUnknown> ruth;
    QueryAs<INamedCollection>(bible.get())->get_Item(0, ruth.Receive());
    EXPECT_EQ(Verse(ruth.As<IVXBook>(), 1, 0, 1), L"1:\tAnd Naomi");
}

// The sample translation in all four forms it comes in: its folder, a packed file made
// from it, its XML file and its HTML file cut into book files. Every form must give the
// same books, names, chapters and verses.
TEST_F(BibleLoadTest, EveryFormReadsTheSameBible)
{
    std::vector<std::wstring> expected = Contents(LoadBible(SamplePath("bible")), true);
    // Five books: Ruth 85 verses, Jonah 48, Philemon 25, 3 John 14, Jude 25.
    ASSERT_EQ(expected.size(), 5u + 85 + 48 + 25 + 14 + 25);
    EXPECT_EQ(expected[0], L"Ruth:4");
    EXPECT_EQ(expected.back().substr(0, 16), L"Jude 1:25 | 25:\t");

    struct Form {
        const char* name;
        fs::path path;
    } forms[] = {
        {"packed", Pack(m_Folder / "kjv")},
        {"xml", SamplePath("bible-xml/kjv-sample.xml")},
        {"html", CutHtml(m_Folder / "work", m_Folder / "html")},
    };
    for (const Form& form : forms) {
        std::vector<std::wstring> lines = Contents(LoadBible(form.path), true);
        EXPECT_EQ(lines.size(), expected.size()) << form.name;
        for (size_t i = 0; i < lines.size() && i < expected.size(); ++i)
            if (lines[i] != expected[i]) {
                ADD_FAILURE() << form.name << ": " << Narrow(lines[i]) << "\n  expected " << Narrow(expected[i]);
                break;
            }
    }
}

} // namespace
