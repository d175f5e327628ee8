// vxhost bible info, pack and unpack: a folder Bible packed, read back and written
// out again, and the ways these commands refuse.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "e2e/HostRun.h"
#include "support/Fixture.h"

namespace {

using vxtest::RunHost;
using vxtest::SamplePath;

const char kSampleInfo[] = "books: 5\n"
                           "book: Ruth, chapters: 4\n"
                           "book: Jonah, chapters: 4\n"
                           "book: Philemon, chapters: 1\n"
                           "book: 3 John, chapters: 1\n"
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
    EXPECT_EQ(vxtest::Entries(folder.Path()), 2) << "nothing is left beside the targets";

    // The packed file is a plain zip archive that holds each book's text.
    std::string listing = (folder / "listing").string();
    ASSERT_EQ(std::system(("unzip -l '" + packed + "' >'" + listing + "' && unzip -tq '" + packed + "' >>'" +
                           listing + "'").c_str()),
              0);
    std::string listed = vxtest::ReadBytes(listing);
    EXPECT_NE(listed.find("No errors detected"), std::string::npos) << listed;
    for (const char* book : {"Ruth", "Jonah", "Philemon", "3 John", "Jude"}) {
        EXPECT_NE(listed.find("VXBible/BibleText/" + std::string(book) + "/Item/Text\n"), std::string::npos) << book;
        // Book for book the text comes back as it went in. A book is read with the zero
        // that ends its 16-bit text counted in, and it is packed and written out so: one
        // more 16-bit zero at the end.
        EXPECT_EQ(vxtest::ReadBytes(folder / "kjv" / (std::string(book) + ".bbl")),
                  vxtest::ReadBytes(SamplePath("bible/" + std::string(book) + ".bbl")) + std::string(2, '\0'))
            << book;
    }
}

// The .bbl file as 8-bit text: its 16-bit units after the byte order mark.
std::string BookText(const std::filesystem::path& file)
{
    std::string bytes = vxtest::ReadBytes(file), text;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += bytes[i];
    return bytes.rfind("\xFF\xFE", 0) == 0 ? text : "<no mark>";
}

TEST(BibleTranslation, HtmlIsCutIntoBookFiles)
{
    struct Case {
        const char* html;
        std::vector<std::pair<const char*, const char*>> books; // file, text
    } cases[] = {
        {"<body><a name=\"Ruth\"></a><p><a>Ruth 1</a><p><b>1</b> Famine\r\nin the land<b>2</b> Naomi</body>",
         {{"Ruth.bbl", "Ruth 1\r\n \r\n1:\t Faminein the land\r\n2:\t Naomi\r\n"}}},
        // A title without an anchor name gives the book's name by its words before the number;
        // an anchor of another kind is a chapter title; other tags go with their content.
        {"<BODY><A>Song of Songs 1</A><i>note</i><B>1</B>Kiss<A href=\"x\">Chapter 2</A><B>1</B>I am</BODY>",
         {{"Song of Songs.bbl", "Song of Songs 1\r\n \r\n1:\tKiss\r\n\r\nx\r\n \r\n1:\tI am\r\n"}}},
        // The last anchor name with no text behind it writes nothing.
        {"<body><a name='Jude'></a><b>1</b>Jude<a name='Ruth'></a></body>", {{"Jude.bbl", "1:\tJude\r\n"}}},
    };
    for (const Case& c : cases) {
        vxtest::TempFolder folder;
        vxtest::WriteBytes(folder / "in.htm", c.html);
        auto result = RunHost("bible from-html " + (folder / "in.htm").string() + " --out " + (folder / "out").string());
        ASSERT_EQ(result.status, 0) << c.html << "\n" << result.err;
        EXPECT_EQ(vxtest::Entries(folder / "out"), long(c.books.size())) << c.html;
        for (const auto& [file, text] : c.books)
            EXPECT_EQ(BookText(folder / "out" / file), text) << c.html;
    }
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "none.htm", "<html><p>no body</p></html>");
    auto result = RunHost("bible from-html " + (folder / "none.htm").string() + " --out " + (folder / "out").string());
    EXPECT_EQ(result.status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

} // namespace
