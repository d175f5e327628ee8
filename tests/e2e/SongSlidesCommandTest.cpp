// vxhost song slides: each verse with the bands it goes on the screen with.
#include <gtest/gtest.h>

#include "e2e/HostRun.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"

namespace {

using vxtest::RunHost;

TEST(SongSlidesCommand, BandsByTheSwitchesAndTheLicence)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "registry.ini", "[Vexilon]\nCCLI=7654321\n");
    const std::string song = vxtest::Quote(vxtest::SamplePath("songs/abide-with-me.sng"));
    // A new verse shows the copyright alone, on every verse.
    auto run = RunHost("song slides " + song);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("slide 1\ntext: Abide with me; fast falls the eventide;\n", 0), 0u) << run.out;
    EXPECT_NE(run.out.find("\nfooter: Public domain\n\nslide 2\ntext: "), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("header:"), std::string::npos) << run.out;
    vxtest::ScopedRegistry registry(folder / "registry.ini");
    run = RunHost("song slides --all-bands " + song);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("slide 2\nheader: Abide with Me: Verse2\ntext: "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("\nfooter: CCLI# 7654321; Abide with Me; Henry Francis Lyte; Public domain\n"),
              std::string::npos)
        << run.out;
}

} // namespace
