// Verses, ranges and headers of the sample books, against the text of their files.
#include <vector>

#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

class BibleBookVerse : public ModuleTest {};

TEST_F(BibleBookVerse, SingleVersesAndRangesOfTheSamples)
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

TEST_F(BibleBookVerse, NumbersThatTheFileSkipsOrRepeats)
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

TEST_F(BibleBookVerse, PassagesKnowWhatWasAskedFor)
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

TEST_F(BibleBookVerse, Headers)
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
    for (const Case& c : cases) {
        SmartPtr<IString> header;
        EXPECT_EQ(c.book->Header(header.Receive(), c.chapter, c.verse, c.count, nullptr), S_OK);
        EXPECT_EQ(Narrow(Text(header)), Narrow(c.header));
    }
    SmartPtr<IString> footer;
    EXPECT_EQ(acts->Footer(footer.Receive(), 0, 0, 1, nullptr), E_NOTIMPL);
}

} // namespace
