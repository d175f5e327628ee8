// A whole file is written beside its target and renamed over it: a failed save
// leaves the old file, and no half-written or stray file is ever left behind.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "persistence/FileBuffer.h"
#include "support/Fixture.h"

namespace {

using namespace vxtest;
namespace fs = std::filesystem;

int32_t Save(const fs::path& file, const std::string& bytes, short append)
{
    std::wstring name = file.wstring();
    return FileArchiveSave(View(name),
                           reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                           static_cast<unsigned long>(bytes.size()), 0, append);
}

size_t Entries(const fs::path& folder) { return size_t(std::distance(fs::directory_iterator(folder), {})); }

TEST(FileReplacement, OldFileSurvivesAFailedSave)
{
    TempFolder folder;
    WriteBytes(folder / "kept.txt", "old");
    fs::create_directory(folder / "folder.txt");
    // content: what the target holds after, "-" for no file
    struct Case { const char* what; fs::path target; std::string bytes; short append; int32_t result;
        std::string content; } cases[] = {
        {"a new file", folder / "new.txt", "new", 0, S_OK, "new"},
        {"an old file replaced", folder / "kept.txt", "new", 0, S_OK, "new"},
        {"appended in place", folder / "kept.txt", "new", 1, S_OK, "newnew"},
        {"a folder in the way stays", folder / "folder.txt", "new", 0, E_FAIL, "-"},
        {"a missing folder", folder / "no" / "such.txt", "new", 0, E_FAIL, "-"},
        {"writing nothing fails, yet leaves the file emptied", folder / "new.txt", "", 0, E_FAIL, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Save(c.target, c.bytes, c.append), c.result) << c.what;
        if (c.content == "-")
            EXPECT_FALSE(fs::is_regular_file(c.target)) << c.what;
        else
            EXPECT_EQ(ReadBytes(c.target), c.content) << c.what;
        EXPECT_EQ(Entries(folder.Path()), 3u) << c.what << ": no stray file beside the target";
    }
    EXPECT_TRUE(fs::is_directory(folder / "folder.txt"));
}

TEST(FileReplacement, AFileWrittenAgainKeepsItsPermissions)
{
    TempFolder folder;
    WriteBytes(folder / "private.txt", "old");
    fs::permissions(folder / "private.txt", fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_EQ(Save(folder / "private.txt", "new", 0), S_OK);
    EXPECT_EQ(fs::status(folder / "private.txt").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

} // namespace
