// vxhost bible walk, compress and uncompress: a reference walked by the keys as the
// screen hears it, and a translation packed and unpacked through its own menu.
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

} // namespace
