// vxhost bible info, pack and unpack: a folder Bible packed, read back and written
// out again, and the ways these commands refuse.
#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::RunHost;
using vxtest::SamplePath;

const char kSampleInfo[] = "books: 3\n"
                           "book: Genesis, chapters: 2\n"
                           "book: Ruth, chapters: 1\n"
                           "book: Jude, chapters: 1\n"
                           "abbreviation: KJV\n";

TEST(BibleTranslation, PackAndUnpackKeepEveryBook)
{
    vxtest::TempFolder folder;
    std::string packed = (folder / "kjv.tBL").string();
    std::string unpacked = (folder / "kjv").string();
    struct Step {
        std::string arguments;
        const char* out;
    } steps[] = {
        {"bible info " + SamplePath("bible"), kSampleInfo},
        {"bible pack " + SamplePath("bible") + " --out " + packed, nullptr},
        {"bible info " + packed, kSampleInfo},
        {"bible unpack " + packed + " --out " + unpacked, nullptr},
        {"bible info " + unpacked, kSampleInfo},
        // Replacing asks for --force, and then keeps nothing of what was there.
        {"bible unpack " + packed + " --out " + unpacked + " --force", nullptr},
        {"bible info " + unpacked, kSampleInfo},
    };
    for (const Step& step : steps) {
        auto result = RunHost(step.arguments);
        ASSERT_EQ(result.status, 0) << step.arguments << "\n" << result.err;
        if (step.out) {
            EXPECT_EQ(result.out, step.out) << step.arguments;
        }
    }
    // Nothing is left behind beside the targets.
    int entries = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        entries += entry.exists() ? 1 : 0;
    EXPECT_EQ(entries, 2);
}

TEST(BibleTranslation, RefusalsNameTheirCause)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "taken.tBL", "old");
    std::filesystem::create_directories(folder / "empty");
    struct Case {
        std::string arguments;
        int status;
        const char* reason;
    } cases[] = {
        {"bible info", 2, "missing the Bible to read"},
        {"bible info " + (folder / "none").string(), 1, "no such file or folder"},
        {"bible info " + (folder / "empty").string(), 1, "no books found"},
        {"bible pack " + SamplePath("bible"), 2, "missing --out"},
        {"bible pack " + SamplePath("bible") + " --out " + (folder / "x.zip").string(), 2, "ends in .tBL"},
        {"bible pack " + SamplePath("bible") + " --out " + (folder / "taken.tBL").string(), 1, "--force"},
        {"bible unpack " + SamplePath("bible") + " --out a --bogus", 2, "unexpected argument \"--bogus\""},
    };
    for (const Case& c : cases) {
        auto result = RunHost(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_NE(result.err.find(c.reason), std::string::npos) << c.arguments << "\n" << result.err;
    }
    EXPECT_EQ(vxtest::ReadBytes(folder / "taken.tBL"), "old");
}

} // namespace
