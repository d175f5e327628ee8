// One hymn saved in four encodings: vxhost shows the same verses for each.
#include <gtest/gtest.h>

#include <string>

#include "e2e/HostRun.h"

namespace {

vxtest::HostResult SongShow(const std::string& name)
{
    return vxtest::RunHost("song show " + vxtest::Quote(vxtest::SamplePath("encodings/a-toi-la-gloire." + name)));
}

TEST(Encodings, EveryEncodingShowsTheSameVerses)
{
    auto reference = SongShow("utf8.txt");
    ASSERT_EQ(reference.status, 0) << reference.err;
    // Three verses, and the accented letters arrive as themselves, not as their bytes.
    for (const char* line : {"\nverse 3: ", "\xC3\x80 toi la gloire, \xC3\xB4 Ressuscit\xC3\xA9!",
                             "Vois-le para\xC3\xAEtre: c'est lui, c'est J\xC3\xA9sus,"})
        EXPECT_NE(reference.out.find(line), std::string::npos) << line << "\n" << reference.out;
    EXPECT_EQ(reference.out.find("\nverse 4: "), std::string::npos);

    for (const char* file : {"utf16-mark.txt", "utf16-no-mark.txt", "latin1.txt"}) {
        auto run = SongShow(file);
        EXPECT_EQ(run.status, 0) << file << ": " << run.err;
        EXPECT_EQ(run.out, reference.out) << file;
    }
}

} // namespace
