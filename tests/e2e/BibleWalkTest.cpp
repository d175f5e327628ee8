// vxhost bible walk, compress and uncompress: a reference walked by the keys as the
// screen hears it, a translation packed and unpacked through its own menu, and the
// ways these commands refuse.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "e2e/HostRun.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"
#include "support/TestBible.h"

namespace {

using vxtest::Quote;
using vxtest::RunHost;

TEST(BibleWalk, KeysWalkAsTheScreenHearsThem)
{
    vxtest::TempFolder folder;
    std::string bible = Quote(vxtest::WriteTestBible(folder.Path()));
    auto result = RunHost("bible walk " + bible + " 'Ruth 1:3' --keys down,up,up,pagedown,down,next");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "key: start\ncaption: Ruth 1:3\ntext: 3:\tRuth 1.3\n"
                          "key: down\ncaption: Ruth 2:1\ntext: 1:\tRuth 2.1\n"
                          "key: up\ncaption: Ruth 1:3\ntext: 3:\tRuth 1.3\n"
                          "key: up\ncaption: Ruth 1:2\ntext: 2:\tRuth 1.2\n"
                          "key: pagedown\ncaption: Ruth 2\ntext: Ruth 2\ntext: 1:\tRuth 2.1\ntext: 2:\tRuth 2.2\n"
                          "key: down\nstop: no move\n"
                          "key: next\nstop: no move\n");
}

TEST(BibleWalk, PackAndUnpackThroughTheMenu)
{
    vxtest::TempFolder folder;
    std::filesystem::path bible = vxtest::WriteTestBible(folder.Path());
    // The menu is the host's to switch on, whatever the registry says.
    vxtest::WriteBytes(folder / "registry.ini", "[UI]\r\nSystemMenu=0\r\n");
    vxtest::ScopedRegistry registry(folder / "registry.ini");
    std::filesystem::create_directories(folder / "copy");
    std::string packed = (folder / "Test Bible.tBL").string();
    std::string copy = (folder / "copy" / "Copy.tBL").string();
    const char* info = "books: 3\nbook: Ruth, chapters: 3\nbook: Jonah, chapters: 2\nbook: Jude, chapters: 1\n"
                       "abbreviation: TB\n";
    struct Step {
        std::string arguments;
        const char* out;
    } steps[] = {
        {"bible compress " + Quote(bible), nullptr},
        {"bible info " + Quote(packed), info},
        {"bible compress " + Quote(bible) + " --force", nullptr},
        {"bible info " + Quote(packed), info},
        {"bible uncompress " + Quote(copy), nullptr},
        {"bible info " + Quote(folder / "copy" / "Copy"), info},
        {"bible uncompress " + Quote(copy) + " --force", nullptr},
        {"bible info " + Quote(folder / "copy" / "Copy"), info},
    };
    for (Step& step : steps) {
        if (step.arguments.find("uncompress") != std::string::npos && !std::filesystem::exists(copy))
            std::filesystem::copy_file(packed, copy);
        auto result = RunHost(step.arguments);
        ASSERT_EQ(result.status, 0) << step.arguments << "\n" << result.err;
        if (step.out) {
            EXPECT_EQ(result.out, step.out) << step.arguments;
        }
    }
    // Nothing is left beside the targets, and the user's registry is as it was.
    EXPECT_EQ(vxtest::Entries(folder / "copy"), 2);
    EXPECT_EQ(vxtest::ReadBytes(folder / "registry.ini"), "[UI]\r\nSystemMenu=0\r\n");
}

TEST(BibleWalk, RefusalsNameTheirCause)
{
    vxtest::TempFolder folder;
    std::filesystem::path bible = vxtest::WriteTestBible(folder.Path());
    std::string b = Quote(bible);
    vxtest::WriteBytes(folder / "Test Bible.tBL", "old");
    vxtest::WriteBytes(folder / "broken.tBL", "not an archive");
    struct Case {
        std::string arguments;
        int status;
        const char* reason;
    } cases[] = {
        {"bible walk " + b + " 'Ruth 1:1' --keys down,left", 2, "unknown key \"left\""},
        {"bible walk " + b + " 'Ruth 1:1' --keys", 2, "--keys needs a value"},
        {"bible walk " + b, 2, "usage"},
        {"bible walk " + b + " 'Exodus 3:1'", 1, "\"Exodus 3:1\": no book of the Bible matches it"},
        {"bible walk " + Quote(folder / "none") + " 'Ruth 1'", 1, "no such file or folder"},
        {"bible compress " + b, 1, "exists already; add --force"},
        {"bible compress " + Quote(folder / "broken.tBL"), 1, "not a folder Bible"},
        {"bible compress " + b + " --out x", 2, "usage"},
        {"bible uncompress " + Quote(folder / "broken.zip"), 2, "ends in .tBL"},
        {"bible uncompress " + Quote(folder / "Test Bible.tBL"), 1, "exists already; add --force"},
        {"bible uncompress " + Quote(folder / "broken.tBL"), 1, "could not be read"},
        {"bible uncompress " + Quote(folder / "gone.tBL"), 1, "no such file"},
    };
    for (const Case& c : cases) {
        auto result = RunHost(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_NE(result.err.find(c.reason), std::string::npos) << c.arguments << "\n" << result.err;
        EXPECT_TRUE(result.out.empty()) << c.arguments << "\n" << result.out;
    }
    // What a refusal found stays as it was, and a failed unpacking leaves no folder.
    EXPECT_EQ(vxtest::ReadBytes(folder / "Test Bible.tBL"), "old");
    EXPECT_FALSE(std::filesystem::exists(folder / "broken"));
}

} // namespace
