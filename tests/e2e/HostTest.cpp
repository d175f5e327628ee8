// vxhost as a person uses it: help, a song shown verse by verse in any encoding, clear failures.
#include <gtest/gtest.h>

#include <string>

#include "e2e/HostRun.h"

namespace {

using vxtest::RunHost;

TEST(Host, CommandsAnswerHelpAndRefuseWhatTheyDoNotKnow)
{
    struct Case {
        const char* arguments;
        int status;
        const char* said; // on stdout when the status is 0, else on stderr
    } cases[] = {
        {"--help", 0, "song show FILE"},         {"song --help", 0, "vxhost"},     {"song show --help", 0, "vxhost"},
        {"song text --help", 0, "vxhost"},       {"song import-ccli --help", 0, "vxhost"},
        {"song save --help", 0, "vxhost"},       {"song set --help", 0, "vxhost"}, {"demo --help", 0, "vxhost"},
        {"hymn show x", 2, "unknown command"}, {"song sing x", 2, "unknown command"},
    };
    for (const Case& c : cases) {
        auto result = RunHost(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_NE((c.status ? result.err : result.out).find(c.said), std::string::npos) << c.arguments;
    }
}

TEST(Host, ShowsASongVerseByVerse)
{
    auto result = RunHost("song show " + vxtest::SamplePath("songs/amazing-grace.txt"));
    ASSERT_EQ(result.status, 0) << result.err;
    // A plain text has no attributes of its own: the two that every song has are empty.
    EXPECT_EQ(result.out.rfind("attribute Title:\nattribute Author:\n\nverse 1: Verse1\n"
                               "header: never, title off, verse name off\n"
                               "footer: all, title off, copyright on, author off, CCLI off\n"
                               "Amazing grace! How sweet the sound\n",
                               0),
              0u)
        << result.out;
    EXPECT_NE(result.out.find("verse 4: Verse4\n"), std::string::npos);
    EXPECT_NE(result.out.find("The Lord has promised good to me,"), std::string::npos);
    EXPECT_EQ(result.out.find("verse 5"), std::string::npos);
    // The comment block with the title is no verse.
    EXPECT_EQ(result.out.find("Public domain"), std::string::npos);
}

TEST(Host, PathsAreTakenFromWhereTheUserIs)
{
    // The host changes into the build folder to open its modules; a relative path
    // still means what it meant where the user called it.
    auto result = RunHost("song show samples/songs/abide-with-me.txt", VX_SOURCE_DIR);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("Abide with me; fast falls the eventide;"), std::string::npos);
}

TEST(Host, DemoToursTheSamples)
{
    auto result = RunHost("demo " + vxtest::SamplePath(""));
    ASSERT_EQ(result.status, 0) << result.err;
    for (const char* song : {"abide-with-me.txt", "amazing-grace.txt", "holy-holy-holy.txt"})
        EXPECT_NE(result.out.find(std::string("== song ") + song), std::string::npos) << song;
}

vxtest::HostResult SongShow(const std::string& name)
{
    return vxtest::RunHost("song show " + vxtest::Quote(vxtest::SamplePath("encodings/a-toi-la-gloire." + name)));
}

// One hymn saved in four encodings shows the same verses from each.
TEST(Host, EveryEncodingShowsTheSameVerses)
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
