// vxhost bible: passages and indexes of the sample books, the sample Bible shown and
// searched, and clear failures.
#include <gtest/gtest.h>

#include <string>

#include "e2e/HostRun.h"
#include "support/Fixture.h"
#include "support/TestBible.h"

namespace {

using vxtest::Quote;
using vxtest::RunHost;
using vxtest::WriteBytes;
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

// Every bible command refuses in one line that names the cause, and leaves what it
// found as it was; a failed unpacking leaves no folder.
TEST(BibleHost, RefusalsNameTheirCause)
{
    vxtest::TempFolder folder;
    WriteBytes(folder / "empty.bbl", "");
    WriteBytes(folder / "notes.bbl", "Shopping 1\nmilk\n");
    WriteBytes(folder / "binary.bbl", std::string("\x00\x01\x02\xff\xfe", 5));
    WriteBytes(folder / "Test Bible.tBL", "old");
    WriteBytes(folder / "broken.tBL", "not an archive");
    std::filesystem::create_directories(folder / "empty");
    const std::string jonah = SamplePath("bible/Jonah.bbl"), sample = SamplePath("bible");
    const std::string b = Quote(vxtest::WriteTestBible(folder.Path())), f = folder.Path().string() + "/";
    const vxtest::Refusal cases[] = {
        {"bible index /no/such/book.bbl", 1, "cannot read /no/such/book.bbl"},
        {"bible index " + f + "empty.bbl", 1, "(empty)"},
        {"bible index " + f + "notes.bbl", 1, "not a Bible book"},
        {"bible verses " + f + "binary.bbl 1", 1, "not a Bible book"},
        {"bible verses " + SamplePath("songs/amazing-grace.txt") + " 1:1", 1, "not a Bible book"},
        {"bible verses " + jonah + " 5:1", 1, "no chapter 5 (the book has 4)"},
        {"bible verses " + jonah + " 1:18", 1, "no verse 1:18 (the chapter has 17)"},
        {"bible verses " + jonah + " 1:16-20", 1, "no verse 1:20"},
        {"bible verses " + jonah + " 0:1", 2, "count from 1"},
        {"bible verses " + jonah + " 1:5-2", 2, "count from 1"},
        {"bible verses " + jonah + " 1:x", 2, "CHAPTER[:VERSE[-VERSE]]"},
        {"bible verses " + jonah, 2, "CHAPTER[:VERSE[-VERSE]]"},
        {"bible index", 2, "one file"},
        {"bible info", 2, "missing the Bible to read"},
        {"bible info " + f + "none", 1, "no such file or folder"},
        {"bible pack " + sample, 2, "missing --out"},
        {"bible pack " + sample + " --out " + f + "x.zip", 2, "ends in .tBL"},
        {"bible pack " + sample + " --out " + Quote(f + "Test Bible.tBL"), 1, "--force"},
        {"bible unpack " + sample + " --out a --bogus", 2, "unexpected argument \"--bogus\""},
        {"bible walk " + b + " 'Ruth 1:1' --keys down,left", 2, "unknown key \"left\""},
        {"bible walk " + b + " 'Ruth 1:1' --keys", 2, "--keys needs a value"},
        {"bible walk " + b, 2, "usage"},
        {"bible walk " + b + " 'Exodus 3:1'", 1, "\"Exodus 3:1\": no book of the Bible matches it"},
        {"bible walk " + f + "none 'Ruth 1'", 1, "no such file or folder"},
        {"bible compress " + b, 1, "exists already; add --force"},
        {"bible compress " + f + "broken.tBL", 1, "not a folder Bible"},
        {"bible compress " + b + " --out x", 2, "usage"},
        {"bible uncompress " + f + "broken.zip", 2, "ends in .tBL"},
        {"bible uncompress " + Quote(f + "Test Bible.tBL"), 1, "exists already; add --force"},
        {"bible uncompress " + f + "broken.tBL", 1, "could not be read"},
        {"bible uncompress " + f + "gone.tBL", 1, "no such file"},
    };
    for (const vxtest::Refusal& c : cases)
        vxtest::ExpectRefusal(c);
    // A folder without bible.ini: the framework's own open message comes before the line.
    auto empty = RunHost("bible info " + f + "empty");
    EXPECT_EQ(empty.status, 1);
    EXPECT_NE(empty.err.find("vxhost: " + f + "empty: no books found\n"), std::string::npos) << empty.err;
    EXPECT_EQ(vxtest::ReadBytes(folder / "Test Bible.tBL"), "old");
    EXPECT_FALSE(std::filesystem::exists(folder / "broken"));
}

// A whole Bible, folder and packed: references shown and phrases searched.
TEST(BibleHost, ShowAndSearch)
{
    vxtest::TempFolder folder;
    std::string packed = (folder / "kjv.tBL").string();
    ASSERT_EQ(RunHost("bible pack " + SamplePath("bible") + " --out " + packed).status, 0);
    const std::string ruth16 = "16:\tAnd Ruth said, Intreat me not to leave thee";
    struct Case {
        std::string arguments;
        int status;
        std::string out; // a line the output must hold, or the whole output when it ends in "\n"
        std::string err; // a part of the error line
    } cases[] = {
        {"bible show BIBLE 'Ruth 1:16-17'", 0, "Ruth 1:16-17 [KJV]\n" + ruth16, ""},
        {"bible show BIBLE 'ruth 1 16' 'Jonah 2:1,10'", 0, "Jonah 2:1 [KJV]\n1:\tThen Jonah prayed", ""},
        {"bible show BIBLE 'Jonah 2:1,10'", 0, "Jonah 2:10 [KJV]\n10:\tAnd the LORD spake unto the fish", ""},
        {"bible show BIBLE 'Jude 25-'", 0, "Jude 25 [KJV]\n25:\tTo the only wise God", ""},
        {"bible show BIBLE 'Ruth 4:21-'", 0, "Ruth 4:21- [KJV]\n21:\tAnd Salmon begat Boaz", ""},
        {"bible show BIBLE 'Genesis 1:1' 'Ruth 1:16'", 1, "Ruth 1:16 [KJV]\n" + ruth16, "no book matches \"Genesis 1:1\""},
        {"bible show BIBLE Ruth", 1, "", "names a book but no chapter"},
        {"bible show BIBLE", 2, "", "takes a Bible and one or more references"},
        {"bible show BIBLE 'Ruth 1:1' --force", 2, "", "unexpected argument \"--force\""},
        {"bible show /nowhere/bible 'Ruth 1:1'", 1, "", "/nowhere/bible: no such file or folder"},
        {"bible search BIBLE mercy --within PEACE", 0, "Jude 2 Mercy unto you, and peace, and love, be multiplied.\nhits: 1\n", ""},
        {"bible search BIBLE 'fish'", 0, "Jonah 1:17 Now the LORD had prepared a great fish", ""},
        {"bible search BIBLE 'fish' --within nothing-like-it", 1, "", "no verse holds \"fish\" and every --within"},
        {"bible search BIBLE 'no such words'", 1, "", "no verse holds"},
        {"bible search BIBLE ' '", 2, "", "the text to look for"},
        {"bible search BIBLE fish --within", 2, "", "unexpected argument \"--within\""},
    };
    for (const std::string& bible : {SamplePath("bible"), packed}) {
        for (const Case& c : cases) {
            std::string arguments = c.arguments;
            if (size_t at = arguments.find("BIBLE"); at != std::string::npos)
                arguments.replace(at, 5, "'" + bible + "'");
            SCOPED_TRACE(arguments);
            vxtest::HostResult result = RunHost(arguments);
            EXPECT_EQ(result.status, c.status) << result.err;
            if (!c.out.empty() && c.out.back() == '\n')
                EXPECT_EQ(result.out, c.out);
            else
                EXPECT_NE(result.out.find(c.out), std::string::npos) << result.out;
            if (c.status == 0)
                EXPECT_EQ(result.err, "");
            else
                EXPECT_NE(result.err.find(c.err), std::string::npos) << result.err;
        }
    }
    // The count is that of the lines before it.
    vxtest::HostResult all = RunHost("bible search " + SamplePath("bible") + " 'the lord'");
    EXPECT_NE(all.out.find("hits: " + std::to_string(vxtest::LineCount(all.out) - 1) + "\n"), std::string::npos);
}

} // namespace
