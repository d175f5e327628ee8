// The scan that indexes a book's chapters and verses in place.
#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

class BibleBookScan : public ModuleTest {};

TEST_F(BibleBookScan, Smoke)
{
    auto book = MakeBook({L"Jonah", L"Jonah", L"", L"Jonah 1\n1:\tNow the word\n2:\tArise\nJonah 2\n1:\tThen Jonah\n"});
    ASSERT_TRUE(book);
    int chapters = -1;
    book->get_ChapterCount(&chapters);
    EXPECT_EQ(chapters, 2);
    EXPECT_EQ(Verse(book, 0, 1, 1), L"2:\tArise");
    EXPECT_EQ(Verse(book, 1, 0, 1), L"1:\tThen Jonah");
}

} // namespace
