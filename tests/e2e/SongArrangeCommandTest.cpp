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
    struct Case { std::string options; const char* message; } cases[] = {
        {"--lines 4", "needs --chars"},
        {"--chars 30", "needs --lines"},
        {"--lines 4 --chars 0", "--chars must be a whole number from 1 to 100000, not \"0\""},
        {"--lines -1 --chars 30", "--lines must be a whole number from 0 to 100000, not \"-1\""},
        {"--lines 4 --chars 3x", "not \"3x\""},
        {"--lines 4 --chars 99999999999999999999", "--chars must be a whole number"},
        {"--lines 4 --chars", "--chars needs a value"},
    };
    for (const Case& c : cases) {
        auto run = RunHost("song arrange " + song + " " + c.options);
        EXPECT_EQ(run.status, 2) << c.options;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << c.options << ": " << run.err;
    }
    auto run = RunHost("song arrange " + Quote("/nonexistent/x.sng") + " --lines 4 --chars 30");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("/nonexistent/x.sng"), std::string::npos) << run.err;
}

} // namespace
