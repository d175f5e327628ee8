// vxhost bible convert: the sample becomes a folder Bible; bad input and bad targets
// fail clearly and leave nothing that looks like a finished Bible.
#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace fs = std::filesystem;
using vxtest::Quote;
using vxtest::RunHost;

namespace {

// Names in a folder that are no part of a finished conversion: staging left behind.
std::vector<std::string> Leftovers(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string()[0] == '.')
            names.push_back(entry.path().filename().string());
    return names;
}

TEST(BibleConvert, TheSampleBecomesAFolderBible)
{
    vxtest::TempFolder folder;
    fs::path out = folder / "kjv";
    auto result = RunHost("bible convert " + vxtest::SamplePath("longtext/kjv-jonah-philemon.txt") + " --out " +
                          Quote(out));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "folder: " + out.string() + "\nbooks: 2\nbook 1: Jonah\nbook 2: Philemon\n");
    EXPECT_TRUE(fs::exists(out / "Jonah.bbl") && fs::exists(out / "Philemon.bbl") && fs::exists(out / "bible.ini"));
    EXPECT_EQ(Leftovers(folder.Path()), std::vector<std::string>{});

    // Lines that end in LF alone give the same books.
    std::string text = vxtest::ReadBytes(vxtest::SamplePath("longtext/kjv-jonah-philemon.txt"));
    std::erase(text, '\r');
    vxtest::WriteBytes(folder / "lf.txt", text);
    fs::path second = folder / "lf";
    ASSERT_EQ(RunHost("bible convert " + Quote(folder / "lf.txt") + " --out " + Quote(second)).status, 0);
    EXPECT_EQ(vxtest::ReadBytes(second / "Jonah.bbl"), vxtest::ReadBytes(out / "Jonah.bbl"));

    // An existing Bible is replaced only when asked.
    vxtest::WriteBytes(out / "old.bbl", "x");
    auto refused = RunHost("bible convert " + Quote(folder / "lf.txt") + " --out " + Quote(out));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("not empty"), std::string::npos) << refused.err;
    ASSERT_EQ(RunHost("bible convert " + Quote(folder / "lf.txt") + " --out " + Quote(out) + " --force").status, 0);
    EXPECT_FALSE(fs::exists(out / "old.bbl"));
    EXPECT_TRUE(fs::exists(out / "Philemon.bbl"));
    EXPECT_EQ(Leftovers(folder.Path()), std::vector<std::string>{});
}

TEST(BibleConvert, BadInputAndTargetsFailClearly)
{
    const std::string text = "A\r\n1\r\n1. x\r\n";
    struct Case {
        std::string input; // the file's content; "<none>" for no file
        const char* target; // below the temporary folder, and what follows it
        int status;
        const char* message;
    } cases[] = {
        {"", "out", 1, "is empty"},
        {"1. In the beginning\r\n2. And\r\n", "out", 1, "no book title"},
        {std::string("\x7F" "ELF\x02\x01\x01\0\0\0\x03\x00", 12), "out", 1, "not a text file"},
        {"<none>", "out", 1, "cannot read"},
        {text, "in.txt", 1, "not a folder"},
        {text, "in.txt/sub/out", 1, "cannot write"},
        {text, "out --fast", 2, "unknown option"},
        {text, "out other.txt", 2, "one long text"},
    };
    for (const Case& c : cases) {
        vxtest::TempFolder folder;
        if (c.input != "<none>")
            vxtest::WriteBytes(folder / "in.txt", c.input);
        vxtest::ExpectRefusal({"bible convert " + Quote(folder / "in.txt") + " --out " + folder.Path().string() + "/" +
                                   c.target,
                               c.status, c.message});
        EXPECT_FALSE(fs::exists(folder / "out")) << c.target;
        EXPECT_EQ(Leftovers(folder.Path()), std::vector<std::string>{}) << c.target;
    }
    vxtest::ExpectRefusal({"bible convert x.txt", 2, "--out"});
    EXPECT_EQ(RunHost("bible convert --help").status, 0);
}

TEST(BibleConvert, VersesBeforeAChapterAreWrittenWithAWarning)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "in.txt", "Ruth\r\n1. stray\r\n1\r\n1. placed\r\n");
    auto result = RunHost("bible convert " + Quote(folder / "in.txt") + " --out " + Quote(folder / "out"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("Ruth: 1 verse lines before its first chapter"), std::string::npos) << result.err;
    EXPECT_EQ(vxtest::ReadBytes(folder / "out" / "Ruth.bbl"), "1. stray\nRuth 1\n1. placed\n");
}

} // namespace
