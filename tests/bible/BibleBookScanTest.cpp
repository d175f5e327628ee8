// The scan that indexes a book's chapters and verses in place, on hand-made books.
#include <cwchar>
#include <vector>

#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

class BibleBookScan : public ModuleTest {};

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

TEST_F(BibleBookScan, IndexesTheLinesOfTheBook)
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

TEST_F(BibleBookScan, ChaptersViewTheirStretchOfTheText)
{
    auto book = MakeBook({L"Ruth", L"Ruth", L"", L"Ruth 1\n1:\ta\nnote\nRuth 2\n1:\tb\n2:\tc\n"});
    std::wstring stretches;
    for (int i = 0; i < 2; ++i) {
        SmartPtr<IUnknown> chapter;
        QueryAs<ISuperCollection>(book.get())->get_Item(i, chapter.Receive());
        stretches += Text(chapter) + L"|";
        EXPECT_LT(chapter.As<ISuperCollection>()->Add(Str(L"x"), Str(L"x"), nullptr, 0), 0) << "a chapter holds verses only";
    }
    // The last chapter stops one character short of the end of the text.
    EXPECT_EQ(stretches, L"Ruth 1\n1:\ta\nnote\n|Ruth 2\n1:\tb\n2:\tc|");
    // Only a flat book reads as a string.
    EXPECT_EQ(Text(book), L"");
    EXPECT_EQ(Text(MakeBook({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n"})), L"Jude 1\n1:\ta\n");
}

TEST_F(BibleBookScan, VerseCountsByPosition)
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

} // namespace
