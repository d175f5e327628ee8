// vxhost bible show and search on the sample Bible, folder and packed, and the ways
// they refuse.
#include <gtest/gtest.h>

#include <string>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::RunHost;
using vxtest::SamplePath;

TEST(BibleSearchHost, ShowAndSearch)
{
    vxtest::TempFolder folder;
    std::string packed = (folder / "kjv.tBL").string();
    ASSERT_EQ(RunHost("bible pack " + SamplePath("bible") + " --out " + packed).status, 0);
    const std::string ruth16 = "16:\tAnd Ruth said, Intreat me not to leave thee";
    struct Case {
        std::string arguments;
        int status;
        std::string out; // a line the output must hold, or the whole output when it ends in "\n"
        std::string err; // a part of the error line
    } cases[] = {
        {"bible show BIBLE 'Ruth 1:16-17'", 0, "Ruth 1:16-17 [KJV]\n" + ruth16, ""},
        {"bible show BIBLE 'ruth 1 16' 'Jonah 2:1,10'", 0, "Jonah 2:1 [KJV]\n1:\tThen Jonah prayed", ""},
        {"bible show BIBLE 'Jonah 2:1,10'", 0, "Jonah 2:10 [KJV]\n10:\tAnd the LORD spake unto the fish", ""},
        {"bible show BIBLE 'Jude 25-'", 0, "Jude 25 [KJV]\n25:\tTo the only wise God", ""},
        {"bible show BIBLE 'Ruth 4:21-'", 0, "Ruth 4:21- [KJV]\n21:\tAnd Salmon begat Boaz", ""},
        {"bible show BIBLE 'Genesis 1:1' 'Ruth 1:16'", 1, "Ruth 1:16 [KJV]\n" + ruth16, "no book matches \"Genesis 1:1\""},
        {"bible show BIBLE Ruth", 1, "", "names a book but no chapter"},
        {"bible show BIBLE", 2, "", "takes a Bible and one or more references"},
        {"bible show BIBLE 'Ruth 1:1' --force", 2, "", "unexpected argument \"--force\""},
        {"bible show /nowhere/bible 'Ruth 1:1'", 1, "", "/nowhere/bible: no such file or folder"},
        {"bible search BIBLE mercy --within PEACE", 0, "Jude 2 Mercy unto you, and peace, and love, be multiplied.\nhits: 1\n", ""},
        {"bible search BIBLE 'fish'", 0, "Jonah 1:17 Now the LORD had prepared a great fish", ""},
        {"bible search BIBLE 'fish' --within nothing-like-it", 1, "", "no verse holds \"fish\" and every --within"},
        {"bible search BIBLE 'no such words'", 1, "", "no verse holds"},
        {"bible search BIBLE ' '", 2, "", "the text to look for"},
        {"bible search BIBLE fish --within", 2, "", "unexpected argument \"--within\""},
    };
    for (const std::string& bible : {SamplePath("bible"), packed}) {
        for (const Case& c : cases) {
            std::string arguments = c.arguments;
            if (size_t at = arguments.find("BIBLE"); at != std::string::npos)
                arguments.replace(at, 5, "'" + bible + "'");
            SCOPED_TRACE(arguments);
            vxtest::HostResult result = RunHost(arguments);
            EXPECT_EQ(result.status, c.status) << result.err;
            if (!c.out.empty() && c.out.back() == '\n')
                EXPECT_EQ(result.out, c.out);
            else
                EXPECT_NE(result.out.find(c.out), std::string::npos) << result.out;
            if (c.status == 0)
                EXPECT_EQ(result.err, "");
            else
                EXPECT_NE(result.err.find(c.err), std::string::npos) << result.err;
        }
    }
    // The count is that of the lines before it.
    vxtest::HostResult all = RunHost("bible search " + SamplePath("bible") + " 'the lord'");
    size_t lines = 0;
    for (char c : all.out)
        lines += c == '\n';
    EXPECT_NE(all.out.find("hits: " + std::to_string(lines - 1) + "\n"), std::string::npos);
}

} // namespace
