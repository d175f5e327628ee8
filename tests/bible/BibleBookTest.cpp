// A book of a translation: the scan that indexes its chapters and verses in place, its
// verses, ranges and headers against the text of the sample files, and the book to and
// from its own file and a packed translation's stream.
#include <cwchar>
#include <vector>

#include "bible/BookMaker.h"
#include "persistence/PropInterrogate.h"

using namespace vxtest;

namespace {

class BibleBook : public ModuleTest {};

// A verse as "{chapter:verse text}" from its reference; the text stands as it was indexed.
std::wstring VerseEntry(IUnknown* item)
{
    auto reference = QueryAs<IVXTextReference>(item);
    if (!reference)
        return L"{not a reference}";
    int chapter = -9, verse = -9, count = -9;
    reference->GetPosition(&chapter, &verse, &count);
    wchar_t position[64];
    std::swprintf(position, 64, L"{%d:%d ", chapter, verse);
    return position + Text(item) + L"}";
}

// The whole index: "[heading]" for each chapter, then its verses.
std::wstring Index(IVXBook* book)
{
    auto collection = QueryAs<ISuperCollection>(book);
    int count = 0;
    collection->get_Count(&count);
    std::wstring index;
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        collection->get_Item(i, item.Receive());
        auto verses = item.As<ISuperCollection>();
        if (!verses) {
            index += VerseEntry(item);
            continue;
        }
        SmartPtr<IString> heading;
        collection->get_ItemName(i, heading.Receive());
        index += L"[" + Text(heading) + L"]";
        int verseCount = 0;
        verses->get_Count(&verseCount);
        for (int v = 0; v < verseCount; ++v) {
            SmartPtr<IUnknown> verse;
            verses->get_Item(v, verse.Receive());
            index += VerseEntry(verse);
        }
    }
    return index;
}

// A header as the book writes it, or "<fail>".
std::wstring HeaderOf(IVXBook* book, int chapter, int verse, int count = 1)
{
    SmartPtr<IString> header;
    return book->Header(header.Receive(), chapter, verse, count, nullptr) == S_OK ? Text(header) : L"<fail>";
}

TEST_F(BibleBook, IndexesTheLinesOfTheBook)
{
    struct Case {
        const char* what;
        const wchar_t* name;
        const wchar_t* text;
        int chapters;
        const wchar_t* index;
    } cases[] = {
        {"no heading line", L"Ruth", L"1:\tWhy\n2:\tnot\n", 0, L""},
        {"empty name in text", L"", L"Ruth 1\n1:\tWhy\n", 0, L""},
        {"verses before the first chapter are dropped", L"Ruth", L"1:\tlost\n\nRuth 1\n1:\ta\n2:\tb\nRuth 2\n1:\tc\n", 2,
         L"[Ruth 1]{0:0 1:\ta}{0:1 2:\tb}[Ruth 2]{1:0 1:\tc}"},
        {"other lines are ignored, blanks and stray mark bytes in front skipped", L"Ruth",
         L"\xEF\xFE  Ruth 1\r\nA title\r\n  1:\ta\r\n\r\n2:\tb\r\nRUTH   2\r\n1:\tc", 2,
         L"[Ruth 1\r]{0:0 1:\ta\r}{0:1 2:\tb\r}[RUTH   2\r]{1:0 1:\tc}"},
        {"numbers as written, out of order and with gaps", L"Jonah", L"Jonah 2\n3:\tc\n1:\ta\nJonah 1\n7:\tg\n", 2,
         L"[Jonah 2]{1:2 3:\tc}{1:0 1:\ta}[Jonah 1]{0:6 7:\tg}"},
        {"a heading without a number is chapter 0", L"Acts", L"Acts\n1:\ta\nActs 2\n1:\tb\n", 2,
         L"[Acts]{-1:0 1:\ta}[Acts 2]{1:0 1:\tb}"},
        {"the number ends at its first other character", L"Acts", L"Acts 1\n3.14: pi\n2.5 no colon\n7\n", 1,
         L"{0:2 3.14: pi}{0:1 2.5 no colon}{0:6 7}"},
        {"a line shorter than the name that begins it is a heading", L"1 Samuel", L"1\n1:\ta\n1 Samuel 2\n1:\tb\n",
         2, L"[1]{-1:0 1:\ta}[1 Samuel 2]{1:0 1:\tb}"},
        {"one chapter makes a flat book", L"Jude", L"Jude 1\n1:\ta\n2:\tb\n", 1, L"{0:0 1:\ta}{0:1 2:\tb}"},
        {"a chapter without verses", L"Ruth", L"Ruth 1\nRuth 2\n1:\tb\n", 2, L"[Ruth 1][Ruth 2]{1:0 1:\tb}"},
    };
    for (const Case& c : cases) {
        auto book = MakeBook({L"User", c.name, L"", c.text});
        ASSERT_TRUE(book) << c.what;
        int chapters = -1;
        EXPECT_EQ(book->get_ChapterCount(&chapters), S_OK) << c.what;
        EXPECT_EQ(chapters, c.chapters) << c.what;
        EXPECT_EQ(Narrow(Index(book)), Narrow(c.index)) << c.what;
    }
}

TEST_F(BibleBook, ChaptersViewTheirStretchOfTheText)
{
    auto book = MakeBook({L"Ruth", L"Ruth", L"", L"Ruth 1\n1:\ta\nnote\nRuth 2\n1:\tb\n2:\tc\n"});
    std::wstring stretches;
    for (int i = 0; i < 2; ++i) {
        SmartPtr<IUnknown> chapter;
        QueryAs<ISuperCollection>(book.get())->get_Item(i, chapter.Receive());
        stretches += Text(chapter) + L"|";
        EXPECT_LT(chapter.As<ISuperCollection>()->Add(Str(L"x"), Str(L"x"), nullptr, 0), 0)
            << "a chapter holds verses only";
    }
    // The last chapter stops one character short of the end of the text.
    EXPECT_EQ(stretches, L"Ruth 1\n1:\ta\nnote\n|Ruth 2\n1:\tb\n2:\tc|");
    // Only a flat book reads as a string.
    EXPECT_EQ(Text(book), L"");
    EXPECT_EQ(Text(MakeBook({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n"})), L"Jude 1\n1:\ta\n");
}

TEST_F(BibleBook, VerseCountsByPosition)
{
    auto book = MakeBook({L"Ruth", L"Ruth", L"", L"Ruth 1\n1:\ta\n2:\tb\nRuth 2\n1:\tc\n"});
    auto flat = MakeBook({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n2:\tb\n3:\tc\n"});
    std::vector<int> counts;
    for (auto [which, chapter] : {std::pair{book.get(), 0}, {book.get(), 1}, {book.get(), 2}, {book.get(), -1},
                                  {flat.get(), 0}, {flat.get(), 1}})
        which->get_VerseCount(chapter, &counts.emplace_back(-9));
    EXPECT_EQ(counts, (std::vector<int>{2, 1, 0, 0, 3, 0}));
    EXPECT_EQ(book->get_VerseCount(0, nullptr), E_POINTER);
    EXPECT_EQ(book->get_ChapterCount(nullptr), E_POINTER);
    EXPECT_EQ(book->get_Verse(0, 0, 1, nullptr), E_POINTER);
}

TEST_F(BibleBook, RoundTrips)
{
    const BookContent contents[] = {
        {L"Ruth", L"Ruth", L"KJV", L"Ruth 1\n1:\ta \u00e9\u20ac\n2:\tb\nRuth 2\n1:\tc\n"},
        {L"Jude", L"Jude", L"", L"Jude 1\r\n1:\ta\r\n2:\tb\r\n"},
    };
    for (const BookContent& content : contents) {
        auto book = MakeBook(content);
        // The stream form: names and text; the index is built again on reading.
        auto stream = Create<IFolderStream>(L"FolderStream");
        ASSERT_EQ(book.As<IDataPersist>()->Save(stream, 0), S_OK);
        auto copy = Create<IVXBook>(L"VXBibleBook");
        ASSERT_EQ(copy.As<IDataPersist>()->Load(stream, 0), S_OK);
        EXPECT_EQ(Narrow(HeaderOf(copy, 1, 0)), Narrow(HeaderOf(book, 1, 0)));
        EXPECT_EQ(Narrow(Verse(copy, 0, 1, 1)), Narrow(Verse(book, 0, 1, 1)));

        // The book's own file: the text as it was read, in UTF-16.
        TempFolder folder;
        std::wstring file = (folder / "book.bbl").wstring();
        auto archive = book.As<IFileArchive>();
        archive->put_Filename(Str(file));
        ASSERT_GE(archive->Save(), 0);
        auto reread = LoadBookFile(std::string(file.begin(), file.end()), content.nameInText);
        ASSERT_TRUE(reread);
        EXPECT_EQ(Verse(reread, 0, 0, 1), Verse(book, 0, 0, 1));
        EXPECT_EQ(ReadBytes(folder / "book.bbl").substr(0, 2), "\xff\xfe");
        // A book is read once.
        EXPECT_EQ(reread.As<IFileArchive>()->Load(), E_FAIL);
        EXPECT_EQ(Verse(reread, 0, 1, 1), Verse(book, 0, 1, 1));
    }
}

TEST_F(BibleBook, FailedAndEmptyReads)
{
    auto missing = Create<IVXBook>(L"VXBibleBook");
    auto archive = missing.As<IFileArchive>();
    archive->put_Filename(Str(L"/no/such/book.bbl"));
    EXPECT_LT(archive->Load(), 0);
    int chapters = -1;
    missing->get_ChapterCount(&chapters);
    EXPECT_EQ(chapters, 0);
    int loaded = -1;
    archive->Inquire(ARCHIVE_HASFILE, &loaded);
    EXPECT_EQ(loaded, 0) << "a failed read leaves the book unread";

    // A null stream counts as a read of an empty book.
    auto empty = Create<IVXBook>(L"VXBibleBook");
    EXPECT_EQ(empty.As<IDataPersist>()->Load(nullptr, 0), S_OK);
    empty.As<IFileArchive>()->Inquire(ARCHIVE_HASFILE, &loaded);
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(Verse(empty, 0, 0, 1), L"<fail>");

    // The written size counts; one that claims more than the block reads no further.
    struct Case {
        int32_t size;
        const wchar_t* text;
    } cases[] = {{5, L"Jude "}, {1 << 30, L"Jude 1\n1:\ta\n"}, {-3, L""}};
    for (const Case& c : cases) {
        auto stream = BookStream({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n"});
        stream->WriteData(Str(L"Size"), &c.size, 4, 0);
        auto book = Create<IVXBook>(L"VXBibleBook");
        book.As<IDataPersist>()->Load(stream, 0);
        EXPECT_EQ(Text(book), c.text) << c.size;
    }
}

// A book's names are properties, and its headers follow them.
TEST_F(BibleBook, NamesAreProperties)
{
    auto book = LoadBookFile(SamplePath("bible/Jonah.bbl"), L"Jonah");
    ASSERT_TRUE(book);
    auto properties = book.As<IUIPropInterrogateEx>();
    EXPECT_EQ(properties->ControlEx(BOOK_PROP_USERNAME, Str(L"Jona")), S_OK);
    EXPECT_EQ(properties->ControlEx(BOOK_PROP_TRANSLATION, Str(L"KJV")), S_OK);
    SmartPtr<IUnknown> value;
    EXPECT_EQ(properties->InquireEx(BOOK_PROP_NAMEINTEXT, value.Receive()), PROPTYPE_STRING);
    EXPECT_EQ(Text(value), L"Jonah");
    EXPECT_EQ(Narrow(HeaderOf(book, 1, 2)), "Jona 2:3 [KJV]") << "the user's name, not the one in the text";
}

TEST_F(BibleBook, SingleVersesAndRangesOfTheSamples)
{
    const std::string jonah = SamplePath("bible/Jonah.bbl");
    const std::string jude = SamplePath("bible/Jude.bbl");
    auto chaptered = LoadBookFile(jonah, L"Jonah");
    auto flat = LoadBookFile(jude, L"Jude");
    ASSERT_TRUE(chaptered && flat);
    auto jonahVerse = [&](int c, int v) { return SampleVerse(jonah, c, v); };
    auto judeVerse = [&](int v) { return SampleVerse(jude, 0, v); };
    struct Case {
        const char* what;
        IVXBook* book;
        int chapter, verse, count;
        std::wstring text;
    } cases[] = {
        {"first verse", chaptered, 0, 0, 1, jonahVerse(0, 0)},
        {"last verse of the book", chaptered, 3, 10, 1, jonahVerse(3, 10)},
        {"a verse of a flat book", flat, 0, 24, 1, judeVerse(24)},
        {"a flat book ignores the chapter", flat, 7, 2, 1, judeVerse(2)},
        {"a range runs through the end of its last line", chaptered, 1, 2, 3,
         jonahVerse(1, 2) + L"\n" + jonahVerse(1, 3) + L"\n" + jonahVerse(1, 4)},
        {"a range past the end stops at the chapter's last verse", chaptered, 2, 8, 7,
         jonahVerse(2, 8) + L"\n" + jonahVerse(2, 9)},
        {"through the end of the chapter", chaptered, 1, 8, BIBLE_VERSES_TO_END,
         jonahVerse(1, 8) + L"\n" + jonahVerse(1, 9)},
        // A flat book has no line lengths: its range stops where its last verse starts.
        {"a flat range stops short", flat, 0, 23, 2, judeVerse(23) + L"\n"},
    };
    for (const Case& c : cases) {
        int32_t result = 0;
        EXPECT_EQ(Narrow(Verse(c.book, c.chapter, c.verse, c.count, &result)), Narrow(c.text)) << c.what;
        EXPECT_EQ(result, S_OK) << c.what;
    }
}

TEST_F(BibleBook, NumbersThatTheFileSkipsOrRepeats)
{
    auto book = MakeBook({L"Acts", L"Acts", L"",
                          L"Acts 1\n1:\ta\n2:\tb\n4:\td\n5:\te\n7\n9.\ti\n:\tmark first\n"
                          L"Acts 2\n1:\ta\n4:\td\n3:\tc\n9:\ti\n"});
    struct Case {
        int chapter, verse, count;
        int32_t result;
        const wchar_t* text;
    } cases[] = {
        {0, 1, 1, S_OK, L"2:\tb"},
        {0, 3, 1, S_OK, L"4:\td"},   // found one step behind its position
        {0, 2, 1, S_FALSE, L"4:\td"}, // in a gap: the nearest item stands in
        {0, 4, 1, E_FAIL, L"<fail>"}, // the line holds only a number
        {0, 8, 1, E_FAIL, L"<fail>"}, // past verse 9 at position 5 lies the line with its mark first
        {0, 7, 1, E_FAIL, L"<fail>"},
        {0, 6, 1, E_FAIL, L"<fail>"},
        {0, 40, 1, E_FAIL, L"<fail>"},
        {0, -1, 1, E_FAIL, L"<fail>"},
        {1, 0, 1, S_OK, L"1:\ta"},
        {1, 2, 1, S_OK, L"3:\tc"},
        {1, 3, 1, S_FALSE, L"9:\ti"}, // "4" stands two steps back, and one is all there is
        {2, 0, 1, E_FAIL, L"<fail>"},
        {-1, 0, 1, E_FAIL, L"<fail>"},
    };
    for (const Case& c : cases) {
        int32_t result = 0;
        EXPECT_EQ(Narrow(Verse(book, c.chapter, c.verse, c.count, &result)), Narrow(c.text))
            << c.chapter << ":" << c.verse;
        EXPECT_EQ(result, c.result) << c.chapter << ":" << c.verse;
    }
}

TEST_F(BibleBook, PassagesKnowWhatWasAskedFor)
{
    auto book = LoadBookFile(SamplePath("bible/Ruth.bbl"), L"Ruth");
    ASSERT_TRUE(book);
    SmartPtr<IString> passage, single, again;
    ASSERT_EQ(book->get_Verse(2, 3, BIBLE_VERSES_TO_END, passage.Receive()), S_OK);
    // A single verse is the indexed reference itself, positioned by its written numbers.
    book->get_Verse(3, 21, 1, single.Receive());
    book->get_Verse(3, 21, 1, again.Receive());
    EXPECT_TRUE(SameObject(single, again));
    std::vector<int> position(6);
    passage.As<IVXTextReference>()->GetPosition(&position[0], &position[1], &position[2]);
    single.As<IVXTextReference>()->GetPosition(&position[3], &position[4], &position[5]);
    EXPECT_EQ(position, (std::vector<int>{2, 3, BIBLE_VERSES_TO_END, 3, 21, 1}));
    SmartPtr<IVXBook> owner;
    passage.As<IVXTextReference>()->GetBook(owner.Receive());
    EXPECT_TRUE(SameObject(owner, book));
}

TEST_F(BibleBook, Headers)
{
    auto acts = MakeBook({L"Acts", L"Acts", L"  KJV", L"Acts 1\n1:\ta\nActs 2\n1:\tb\n"});
    auto jude = MakeBook({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n"});
    struct Case {
        IVXBook* book;
        int chapter, verse, count;
        const wchar_t* header;
    } cases[] = {
        {jude, 0, 0, 1, L"Jude 1"},
        {jude, 0, 2, 3, L"Jude 3-5"},
        {jude, 0, 2, BIBLE_VERSES_TO_END, L"Jude 3-"},
        {jude, 0, -1, 1, L"Jude "},
        {jude, -1, 4, 1, L"Jude"},
        {acts, 2, -1, 1, L"Acts 3 [KJV]"},
        {acts, 2, 4, BIBLE_VERSES_TO_END, L"Acts 3:5- [KJV]"},
        {acts, 2, 4, 3, L"Acts 3:5-7 [KJV]"},
        {acts, 2, 4, 1, L"Acts 3:5 [KJV]"},
        {acts, 2, 4, 0, L"Acts 3:5 [KJV]"},
        {acts, -1, 0, 1, L"Acts"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Narrow(HeaderOf(c.book, c.chapter, c.verse, c.count)), Narrow(c.header));
    SmartPtr<IString> footer;
    EXPECT_EQ(acts->Footer(footer.Receive(), 0, 0, 1, nullptr), E_NOTIMPL);
}

} // namespace
