// vxhost bible: passages and indexes of the sample books, and clear failures.
#include <gtest/gtest.h>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::RunHost;
using vxtest::SamplePath;

TEST(BibleHost, PrintsPassagesAndIndexes)
{
    struct Case {
        std::string arguments;
        std::string out;
    } cases[] = {
        {"verses " + SamplePath("bible/Jonah.bbl") + " 2:9-10",
         "Jonah 2:9-10\n"
         "9:\tBut I will sacrifice unto thee with the voice of thanksgiving; I will pay that that I have vowed. "
         "Salvation is of the LORD.\n"
         "10:\tAnd the LORD spake unto the fish, and it vomited out Jonah upon the dry land.\n"},
        {"verses '" + SamplePath("bible/3 John.bbl") + "' 1:4",
         "3 John 4\n4:\tI have no greater joy than to hear that my children walk in truth.\n"},
        {"index " + SamplePath("bible/Ruth.bbl"),
         "book: Ruth\nchapters: 4\nchapter 1: 22 verses\nchapter 2: 23 verses\nchapter 3: 18 verses\n"
         "chapter 4: 22 verses\nverses: 85\n"},
        {"index " + SamplePath("bible/Philemon.bbl"), "book: Philemon\nchapters: 1\nchapter 1: 25 verses\nverses: 25\n"},
    };
    for (const auto& c : cases) {
        auto result = RunHost("bible " + c.arguments);
        EXPECT_EQ(result.status, 0) << c.arguments << ": " << result.err;
        EXPECT_EQ(result.out, c.out) << c.arguments;
    }
    // A whole chapter: its header, then every verse.
    auto chapter = RunHost("bible verses " + SamplePath("bible/Jonah.bbl") + " 3");
    EXPECT_EQ(chapter.out.rfind("Jonah 3\n1:\tAnd the word of the LORD came unto Jonah the second time,", 0), 0u);
    EXPECT_NE(chapter.out.find("\n10:\tAnd God saw their works"), std::string::npos);
    EXPECT_EQ(chapter.out.find("\n11:"), std::string::npos);
}

TEST(BibleHost, FailuresAreClear)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "empty.bbl", "");
    vxtest::WriteBytes(folder / "notes.bbl", "Shopping 1\nmilk\n");
    vxtest::WriteBytes(folder / "binary.bbl", std::string("\x00\x01\x02\xff\xfe", 5));
    const std::string jonah = SamplePath("bible/Jonah.bbl");
    struct Case {
        std::string arguments;
        int status;
        std::string message;
    } cases[] = {
        {"index /no/such/book.bbl", 1, "cannot read /no/such/book.bbl"},
        {"index " + (folder / "empty.bbl").string(), 1, "(empty)"},
        {"index " + (folder / "notes.bbl").string(), 1, "not a Bible book"},
        {"verses " + (folder / "binary.bbl").string() + " 1", 1, "not a Bible book"},
        {"verses " + SamplePath("songs/amazing-grace.txt") + " 1:1", 1, "not a Bible book"},
        {"verses " + jonah + " 5:1", 1, "no chapter 5 (the book has 4)"},
        {"verses " + jonah + " 1:18", 1, "no verse 1:18 (the chapter has 17)"},
        {"verses " + jonah + " 1:16-20", 1, "no verse 1:20"},
        {"verses " + jonah + " 0:1", 2, "count from 1"},
        {"verses " + jonah + " 1:5-2", 2, "count from 1"},
        {"verses " + jonah + " 1:x", 2, "CHAPTER[:VERSE[-VERSE]]"},
        {"verses " + jonah, 2, "CHAPTER[:VERSE[-VERSE]]"},
        {"index", 2, "one file"},
    };
    for (const auto& c : cases) {
        auto result = RunHost("bible " + c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_NE(result.err.find(c.message), std::string::npos) << c.arguments << ": " << result.err;
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << c.arguments << ": one line";
        EXPECT_TRUE(result.out.empty()) << c.arguments;
    }
}

} // namespace
