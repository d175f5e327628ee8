// vxhost song arrange: a song broken anew for a screen, printed or saved.
#include <gtest/gtest.h>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::RunHost;
using vxtest::Quote;

TEST(SongArrangeCommand, PrintsOrSavesTheNewBreaks)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "doxology.txt", "Praise God, from whom all blessings flow;\nPraise Him, all creatures here below\n");
    auto run = RunHost("song arrange " + Quote(folder / "doxology.txt") + " --lines 2 --chars 20");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "Praise God, from \nwhom all blessings\n\nflow; \nPraise Him, all\n\ncreatures here below\n\n");
    run = RunHost("song arrange " + Quote(folder / "doxology.txt") + " --chars 20 --lines 0 --out " + Quote(folder / "d.sng"));
    ASSERT_EQ(run.status, 0) << run.err;
    run = RunHost("song text " + Quote(folder / "d.sng"));
    EXPECT_EQ(run.out, "Praise God, from \nwhom all blessings \nflow; \nPraise Him, all \ncreatures here below\n\n");
}

TEST(SongArrangeCommand, RefusesNonsenseLimits)
{
    const std::string song = Quote(vxtest::SamplePath("songs/amazing-grace.sng"));
    struct Case { std::string arguments; int status; const char* message; } cases[] = {
        {song + " --lines 4", 2, "needs --chars"},
        {song + " --chars 30", 2, "needs --lines"},
        {song + " --lines 4 --chars 0", 2, "--chars must be a whole number from 1 to 100000, not \"0\""},
        {song + " --lines -1 --chars 30", 2, "--lines must be a whole number from 0 to 100000, not \"-1\""},
        {song + " --lines 4 --chars 3x", 2, "not \"3x\""},
        {song + " --lines 4 --chars 99999999999999999999", 2, "--chars must be a whole number"},
        {song + " --lines 4 --chars", 2, "--chars needs a value"},
        {"/nonexistent/x.sng --lines 4 --chars 30", 1, "/nonexistent/x.sng"},
    };
    for (const Case& c : cases) {
        auto run = RunHost("song arrange " + c.arguments);
        EXPECT_EQ(run.status, c.status) << c.arguments;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << c.arguments << ": " << run.err;
    }
}

} // namespace
