// Damaged translations: a packed file cut short or overwritten, an XML Bible that is not
// well-formed, a bible.ini that names books that aren't there. The host reads the books
// that can be read or says in one line what is wrong, and leaves the files as they were.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

namespace fs = std::filesystem;
using namespace vxtest;

// Every file below `folder`: its bytes and when it was last written.
std::map<std::string, std::string> Snapshot(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        files[entry.path().string()] =
            std::to_string(entry.last_write_time().time_since_epoch().count()) + ":" +
            (entry.is_regular_file() ? ReadBytes(entry.path()) : std::string("<folder>"));
    return files;
}

TEST(BibleDamage, DamagedTranslationsFailCleanly)
{
    const char* kDamaged = "could not be read: damaged, or not a packed Bible";
    TempFolder folder;
    auto packedResult = RunHost("bible pack " + SamplePath("bible") + " --out " + Quote(folder / "kjv.tBL"));
    ASSERT_EQ(packedResult.status, 0) << packedResult.err;
    const std::string packed = ReadBytes(folder / "kjv.tBL");
    const std::string xml = ReadBytes(SamplePath("bible-xml/kjv-sample.xml"));
    const std::string ruth = ReadBytes(SamplePath("bible/Ruth.bbl"));
    ASSERT_GT(packed.size(), 4000u);
    std::string overwritten = packed;
    overwritten.replace(packed.size() / 2, 64, 64, '\x5a');

    struct Case {
        const char* name; // a file, or a folder when it has no extension
        std::string bytes; // the file's, or the folder's Ruth.bbl
        std::string ini; // the folder's bible.ini
        int books; // that can be read (1: Ruth alone); 0: none, and the host fails
        const char* reason = "no books found";
    } cases[] = {
        {"half.tBL", packed.substr(0, packed.size() / 2), "", 0, kDamaged},
        {"no-directory.tBL", packed.substr(0, packed.size() - 22), "", 0, kDamaged},
        {"overwritten.tBL", overwritten, "", 0, kDamaged},
        {"empty.tBL", "", "", 0, kDamaged},
        {"text.tBL", "Ruth 1\r\n1:\tNow it came to pass\r\n", "", 0, kDamaged},
        {"unclosed.xml", "<?xml version=\"1.0\"?><Bible><Book name=\"Ruth\"><Chapter><Verse>Now it", "", 0},
        {"half.xml", xml.substr(0, xml.size() / 2), "", 0},
        {"no-root.xml", "</Bible></Book><Verse>Now</Verse", "", 0},
        {"binary.xml", std::string("\xff\xfe<\0B\0", 6) + packed.substr(0, 300), "", 0},
        // Nine books named, of which only Ruth has a file.
        {"missing", ruth, "[Bible]\r\n1=Anfang\r\n2=Auszug\r\n3=Leviticus\r\n4=Numbers\r\n5=Deut\r\n6=Josua\r\n"
                          "7=Richter\r\n8=Ruth\r\n9=Naomi\r\n", 1},
        {"all-missing", "", "[Bible]\r\n1=Genesis\r\n2=Exodus\r\n", 0},
    };
    for (const Case& c : cases) {
        fs::path path = folder / c.name;
        if (path.has_extension()) {
            WriteBytes(path, c.bytes);
        } else {
            fs::create_directories(path);
            WriteBytes(path / "bible.ini", c.ini);
            if (!c.bytes.empty())
                WriteBytes(path / "Ruth.bbl", c.bytes);
        }
        auto before = Snapshot(folder.Path());
        auto info = RunHost("bible info " + Quote(path));
        if (c.books == 0) {
            EXPECT_EQ(info.status, 1) << c.name;
            EXPECT_EQ(info.err, "vxhost: " + path.string() + ": " + c.reason + "\n") << c.name;
        } else {
            // Whatever was found reads to its end.
            EXPECT_EQ(info.status, 0) << c.name << ": " << info.err;
            EXPECT_EQ(info.out.rfind("books: 1\nbook: Ruth, chapters: 4\n", 0), 0u) << info.out;
        }
        EXPECT_EQ(Snapshot(folder.Path()), before) << c.name;
    }
}

} // namespace
