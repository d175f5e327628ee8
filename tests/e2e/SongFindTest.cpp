// vxhost song find: a folder of songs searched as a song list searches it.
#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::Quote;
using vxtest::RunHost;

TEST(SongFind, SearchesAFolderAndStepsOverDamagedFiles)
{
    vxtest::TempFolder folder;
    std::filesystem::create_directories(folder / "sub/deeper");
    std::filesystem::copy_file(vxtest::SamplePath("songs/amazing-grace.sng"), folder / "sub/amazing-grace.sng");
    vxtest::WriteBytes(folder / "abide.TXT", "Abide with me; fast falls the eventide\n\nThe darkness deepens\n");
    vxtest::WriteBytes(folder / "sub/deeper/newton.txt",
                       "<attributes><author>John Newton</author></attributes>\nGlorious things of thee are spoken\n");
    vxtest::WriteBytes(folder / "broken.sng", std::string("\x01\x02grace\x00\x03", 9));
    vxtest::WriteBytes(folder / "notes.md", "grace\n");
    const std::string dir = folder.Path().string();
    struct Case {
        std::string arguments;
        int status;
        std::string out;
    } cases[] = {
        {"GRACE", 0, dir + "/sub/amazing-grace.sng\n"},
        {"the darkness", 0, dir + "/abide.TXT\n"},
        {"auth = newton", 0, dir + "/sub/amazing-grace.sng\n" + dir + "/sub/deeper/newton.txt\n"},
        {"--count author=newton", 0, "2\n"},
        {"--count nowhere", 1, "0\n"},
        {"nowhere", 1, ""},
    };
    for (const Case& c : cases) {
        auto run = RunHost("song find " + Quote(folder.Path()) + " " + c.arguments);
        EXPECT_EQ(run.status, c.status) << c.arguments << run.err;
        EXPECT_EQ(run.out, c.out) << c.arguments;
        // The damaged file is named once on the error stream, and the search goes on.
        EXPECT_NE(run.err.find("warning: skipped"), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("broken.sng"), std::string::npos) << run.err;
        EXPECT_EQ(run.err.find("notes.md"), std::string::npos) << run.err;
    }
}

TEST(SongFind, RefusesWhatIsNoSearch)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "file.txt", "x\n");
    struct Case {
        std::string arguments;
        int status;
        const char* message;
    } cases[] = {
        {Quote(folder / "missing") + " x", 1, "no such folder"},
        {Quote(folder / "file.txt") + " x", 1, "not a folder"},
        {Quote(folder.Path()), 2, "wrong number of arguments"},
        {Quote(folder.Path()) + " x --lines 3", 2, "unknown option --lines"},
    };
    for (const Case& c : cases) {
        auto run = RunHost("song find " + c.arguments);
        EXPECT_EQ(run.status, c.status) << c.arguments;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(vxtest::LineCount(run.err), 1) << run.err;
    }
}

} // namespace
