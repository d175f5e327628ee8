// A translation as it comes to exist: a folder of book files with or without its
// bible.ini, a packed file written from it and read back, and an XML Bible.
#include <string>
#include <vector>

#include "bible/BookMaker.h"
#include "support/Collections.h"

using namespace vxtest;

namespace {

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

SmartPtr<IFileArchive> OpenBible(const std::filesystem::path& path)
{
    auto bible = Create<IFileArchive>(L"VXBible");
    EXPECT_TRUE(bible);
    bible->put_Filename(Str(path.wstring()));
    return bible;
}

// The books as "name[abbreviation]:chapters", one after the other, read as a user
// opens them. A book's header must begin with the name the translation files it under.
std::wstring Books(IFileArchive* bible)
{
    auto books = QueryAs<INamedCollection>(bible);
    std::wstring out;
    for (int i = 0, count = Count(books); i < count; ++i) {
        SmartPtr<IString> name, header;
        SmartPtr<IUnknown> item;
        books->get_ItemName(i, name.Receive());
        books->get_Item(i, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        int chapters = 0;
        item.As<IVXBook>()->get_ChapterCount(&chapters);
        item.As<IVXBook>()->Header(header.Receive(), 0, 0, 1, nullptr);
        std::wstring full = Text(header);
        size_t open = full.find(L'[');
        std::wstring abbreviation = open == std::wstring::npos ? L"" : full.substr(open + 1, full.size() - open - 2);
        if (full.rfind(Text(name) + L" ", 0) != 0)
            abbreviation = L"header " + full;
        out += (i ? L" " : L"") + Text(name) + L"[" + abbreviation + L"]:" + std::to_wstring(chapters);
    }
    return out;
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
        std::filesystem::create_directories(folder);
        if (!c.ini.empty())
            WriteBytes(folder / "bible.ini", c.ini);
        for (const auto& [file, heading] : c.files) {
            if (file.back() == '/')
                std::filesystem::create_directories(folder / file);
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
    std::filesystem::create_directories(folder);
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
}

TEST_F(BibleLoadTest, PackedFileHoldsTheWholeText)
{
    auto folder = m_Folder / "Packed";
    std::filesystem::create_directories(folder);
    WriteBytes(folder / "bible.ini", "[Bible]\r\nAbbreviation=PK\r\n");
    WriteBytes(folder / "Genesis.bbl", BookFile("Genesis", 2));
    WriteBytes(folder / "Jude.bbl", BookFile("Jude", 1));
    {
        auto bible = OpenBible(folder);
        ASSERT_EQ(bible->Load(), S_OK);
        ASSERT_EQ(bible->Save(), S_OK);
    }
    // The book files are gone: what is read comes from the packed file alone.
    std::filesystem::remove_all(folder);
    auto packed = OpenBible(m_Folder / "Packed.tBL");
    ASSERT_EQ(packed->Load(), S_OK);
    EXPECT_EQ(Books(packed), L"Genesis[PK]:2 Jude[PK]:1");
    SmartPtr<IUnknown> genesis;
    QueryAs<INamedCollection>(packed.get())->get_Item(0, genesis.Receive());
    EXPECT_EQ(Verse(genesis.As<IVXBook>(), 1, 0, 1).substr(0, 12), L"1:\tFirst of ");

    auto empty = Create<IFileArchive>(L"VXBible");
    EXPECT_EQ(empty->Save(), E_FAIL);
    auto missing = OpenBible(m_Folder / "none.tBL");
    EXPECT_LT(missing->Load(), 0);
    EXPECT_EQ(missing->Load(), S_OK);
}

TEST_F(BibleLoadTest, InsideAnotherDocumentOnlyTheFileIsKept)
{
    auto folder = m_Folder / "Kept";
    std::filesystem::create_directories(folder);
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

} // namespace
