#include "support/TestBible.h"

#include <string>
#include <vector>

#include "support/Fixture.h"

namespace vxtest {

std::filesystem::path WriteTestBible(const std::filesystem::path& parent)
{
    std::filesystem::path folder = parent / "Test Bible";
    std::filesystem::create_directories(folder);
    // The abbreviation alone: the books are looked up by the table's names.
    WriteBytes(folder / "bible.ini", "[Bible]\r\nAbbreviation=TB\r\n");
    struct Book {
        const char* name;
        std::vector<int> verses;
    } books[] = {{"Ruth", {3, 2, 4}}, {"Jonah", {2, 2}}, {"Jude", {3}}};
    for (const Book& book : books) {
        std::string text;
        for (size_t c = 1; c <= book.verses.size(); ++c) {
            text += std::string(book.name) + " " + std::to_string(c) + "\r\n \r\n";
            for (int v = 1; v <= book.verses[c - 1]; ++v)
                text += std::to_string(v) + ":\t" + book.name + " " + std::to_string(c) + "." + std::to_string(v) +
                        "\r\n";
        }
        WriteBytes(folder / (std::string(book.name) + ".bbl"), text);
    }
    return folder;
}

} // namespace vxtest
