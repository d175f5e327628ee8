// The song commands an operator uses before a service: show, text, import-ccli, save,
// set, arrange, slides and find, on the bundled samples and on files that go wrong.
#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/HostRun.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"

namespace {

using vxtest::Quote;
using vxtest::RunHost;
using vxtest::SamplePath;

TEST(SongCommands, ImportSaveSetAndShowTogether)
{
    vxtest::TempFolder folder;
    const auto imported = folder / "harbour.sng";
    auto run = RunHost("song import-ccli " + Quote(SamplePath("ccli/harbour-song.txt")) + " --out " + Quote(imported));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "saved " + imported.string() + "\n");

    run = RunHost("song set " + Quote(imported) + " key=G 'author=Maria P.'");
    ASSERT_EQ(run.status, 0) << run.err;
    run = RunHost("song show " + Quote(imported));
    ASSERT_EQ(run.status, 0) << run.err;
    for (const char* line :
         {"attribute title: Harbour Song\n", "attribute CCLIsong: CCLI Song # 7000002\n", "attribute author: Maria P.\n",
          "attribute publisher: Fictional Publishing House\n",
          "attribute info: For use solely with the SongSelect Terms of Use.\\nCCLI License # 7654321\n",
          "attribute key: G\n", "\nverse 2: Chorus\nheader: never", "\nverse 3: Bridge\n", "Hold fast, hold fast\n"})
        EXPECT_NE(run.out.find(line), std::string::npos) << line << "\n" << run.out;

    // A song file written again is byte for byte the same.
    const auto again = folder / "again.sng";
    run = RunHost("song save " + Quote(imported) + " --out " + Quote(again));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(vxtest::ReadBytes(again), vxtest::ReadBytes(imported));
    run = RunHost("song text " + Quote(again));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("The boats come home at evening\nWith lanterns on the tide\n\nHold fast", 0), 0u) << run.out;
}

TEST(SongCommands, SamplesLoadAsTheyWereWritten)
{
    vxtest::TempFolder folder;
    for (const char* name : {"abide-with-me", "amazing-grace", "holy-holy-holy"}) {
        std::string sng = SamplePath(std::string("songs/") + name + ".sng");
        // The bundled song file holds the verses of the plain text it was made from.
        auto fromText = RunHost("song text " + Quote(SamplePath(std::string("songs/") + name + ".txt")));
        auto fromSong = RunHost("song text " + Quote(sng));
        EXPECT_EQ(fromSong.status, 0) << name << fromSong.err;
        EXPECT_EQ(fromSong.out, fromText.out) << name;
        auto run = RunHost("song save " + Quote(sng) + " --out " + Quote(folder / "x.sng") + " --force");
        EXPECT_EQ(run.status, 0) << name << run.err;
        EXPECT_EQ(vxtest::ReadBytes(folder / "x.sng"), vxtest::ReadBytes(sng)) << name;
    }
    auto paste = RunHost("song import-ccli - < " + Quote(SamplePath("ccli/morning-light.txt")));
    ASSERT_EQ(paste.status, 0) << paste.err;
    EXPECT_NE(paste.out.find("attribute author: Anna Example | Paul Sample\n"), std::string::npos) << paste.out;
    EXPECT_NE(paste.out.find("\nverse 3: Verse 2\n"), std::string::npos) << paste.out;
}

TEST(SongCommands, BadInputIsOneLineAndNothingIsWritten)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "binary.dat", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    vxtest::WriteBytes(folder / "blank.txt", "\n \n\t\n");
    vxtest::WriteBytes(folder / "empty.txt", "");
    vxtest::WriteBytes(folder / "kept.sng", "old");
    vxtest::WriteBytes(folder / "plain.txt", "a verse\n");
    const std::string missing = Quote(folder / "missing.txt"), dir = Quote(folder.Path()), binary = Quote(folder / "binary.dat");
    const std::string plain = Quote(folder / "plain.txt"), kept = Quote(folder / "kept.sng");
    const std::string unwritable = Quote(folder / "plain.txt" / "x.sng");
    const std::string cannotRead = "vxhost: cannot read " + folder.Path().string();
    const std::string tooLong = (folder / std::string(260, 'x')).string();
    const vxtest::Refusal cases[] = {
        {"song show " + missing, 1, cannotRead + "/missing.txt: no such file"},
        {"song show " + dir, 1, cannotRead + ": it is a folder"},
        {"song show " + Quote(folder / "empty.txt"), 1, cannotRead + "/empty.txt ("},
        {"song show " + Quote(tooLong), 1, "vxhost: cannot read " + tooLong},
        {"song show " + binary, 1, "not a text file"},
        {"song show", 2, "wrong number of arguments"},
        {"song show " + plain + " " + plain, 2, "wrong number of arguments"},
        {"song show --loud " + plain, 2, "unknown option --loud"},
        {"song text " + missing, 1, "no such file"},
        {"song import-ccli " + dir, 1, "it is a folder"},
        {"song import-ccli " + binary, 1, "not a text file"},
        {"song import-ccli " + Quote(folder / "blank.txt") + " --out " + Quote(folder / "new.sng"), 1, "no verse found"},
        {"song import-ccli - --out " + Quote(folder / "new.sng") + " < /dev/null", 1, "no verse found"},
        {"song import-ccli " + Quote(SamplePath("ccli/morning-light.txt")) + " --out " + kept, 1, "add --force"},
        {"song import-ccli " + Quote(SamplePath("ccli/morning-light.txt")) + " --out " + unwritable, 1, "cannot write"},
        {"song import-ccli x --out", 2, "--out needs a file"},
        {"song save " + plain, 2, "needs --out"},
        {"song save " + plain + " --out " + kept, 1, "add --force"},
        {"song save " + plain + " --out " + dir + " --force", 1, "it is a folder"},
        {"song save " + plain + " --out " + unwritable, 1, "cannot write"},
        {"song set " + plain, 2, "wrong number of arguments"},
        {"song set " + plain + " title", 2, "is not NAME=VALUE"},
        {"song set " + plain + " =x", 2, "is not NAME=VALUE"},
        {"song set " + missing + " a=b", 1, "no such file"},
        {"song set " + plain + " a=b --out " + unwritable, 1, "cannot write"},
        {"song arrange " + plain + " --lines 4", 2, "needs --chars"},
        {"song arrange " + plain + " --chars 30", 2, "needs --lines"},
        {"song arrange " + plain + " --lines 4 --chars 0", 2,
         "--chars must be a whole number from 1 to 100000, not \"0\""},
        {"song arrange " + plain + " --lines -1 --chars 30", 2,
         "--lines must be a whole number from 0 to 100000, not \"-1\""},
        {"song arrange " + plain + " --lines 4 --chars 3x", 2, "not \"3x\""},
        {"song arrange " + plain + " --lines 4 --chars 99999999999999999999", 2, "--chars must be a whole number"},
        {"song arrange " + plain + " --lines 4 --chars", 2, "--chars needs a value"},
        {"song arrange " + missing + " --lines 4 --chars 30", 1, "missing.txt: no such file"},
        {"song find " + Quote(folder / "missing") + " x", 1, "no such folder"},
        {"song find " + plain + " x", 1, "not a folder"},
        {"song find " + dir, 2, "wrong number of arguments"},
        {"song find " + dir + " x --lines 3", 2, "unknown option --lines"},
    };
    for (const vxtest::Refusal& c : cases)
        vxtest::ExpectRefusal(c);
    // Nothing new, and the old files as they were.
    EXPECT_EQ(vxtest::ReadBytes(folder / "kept.sng"), "old");
    EXPECT_EQ(vxtest::ReadBytes(folder / "plain.txt"), "a verse\n");
    EXPECT_EQ(vxtest::Entries(folder.Path()), 5);
}

TEST(SongCommands, ArrangePrintsOrSavesTheNewBreaks)
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

TEST(SongCommands, SlidesBandsByTheSwitchesAndTheLicence)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "registry.ini", "[Vexilon]\nCCLI=7654321\n");
    const std::string song = Quote(SamplePath("songs/abide-with-me.sng"));
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

// A folder of songs searched as a song list searches it.
TEST(SongCommands, FindSearchesAFolderAndStepsOverDamagedFiles)
{
    vxtest::TempFolder folder;
    std::filesystem::create_directories(folder / "sub/deeper");
    std::filesystem::copy_file(SamplePath("songs/amazing-grace.sng"), folder / "sub/amazing-grace.sng");
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

} // namespace
