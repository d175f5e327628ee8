// One hymn saved in four encodings: vxhost shows the same verses for each.
#include <gtest/gtest.h>

#include <string>

#include "e2e/HostRun.h"

namespace {

vxtest::HostResult SongShow(const std::string& file) { return vxtest::RunHost("song show " + vxtest::Quote(file)); }

std::string Sample(const char* name) { return vxtest::SamplePath(std::string("encodings/") + name); }

size_t Count(const std::string& text, const std::string& part)
{
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST(Encodings, EveryEncodingShowsTheSameVerses)
{
    auto reference = SongShow(Sample("a-toi-la-gloire.utf8.txt"));
    ASSERT_EQ(reference.status, 0) << reference.err;
    EXPECT_EQ(Count(reference.out, "\nverse "), 3u) << reference.out;
    // The accented letters must arrive as themselves, not as their bytes.
    for (const char* line : {"\xC3\x80 toi la gloire, \xC3\xB4 Ressuscit\xC3\xA9!",
                             "Vois-le para\xC3\xAEtre: c'est lui, c'est J\xC3\xA9sus,",
                             "ma vie et ma gloire: non, je ne crains rien!"})
        EXPECT_NE(reference.out.find(line), std::string::npos) << line << "\n" << reference.out;

    for (const char* file : {"a-toi-la-gloire.utf16-mark.txt", "a-toi-la-gloire.utf16-no-mark.txt",
                             "a-toi-la-gloire.latin1.txt"}) {
        auto run = SongShow(Sample(file));
        EXPECT_EQ(run.status, 0) << file << ": " << run.err;
        EXPECT_EQ(run.out, reference.out) << file;
    }
}

} // namespace
