// The song commands an operator uses before a service: show, text, import-ccli,
// save and set, on the bundled samples and on files that go wrong.
#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

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
    struct Case { std::string arguments; int status; std::string message; } cases[] = {
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
    };
    for (const Case& c : cases) {
        auto run = RunHost(c.arguments);
        EXPECT_EQ(run.status, c.status) << c.arguments << "\n" << run.err;
        EXPECT_EQ(vxtest::LineCount(run.err), 1) << c.arguments << "\n" << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << c.arguments << "\n" << run.err;
        EXPECT_EQ(run.out, "") << c.arguments;
    }
    // Nothing new, and the old files as they were.
    EXPECT_EQ(vxtest::ReadBytes(folder / "kept.sng"), "old");
    EXPECT_EQ(vxtest::ReadBytes(folder / "plain.txt"), "a verse\n");
    EXPECT_EQ(vxtest::Entries(folder.Path()), 5);
}

} // namespace
