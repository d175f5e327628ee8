// The sample translation in all four forms it comes in: its folder, a packed file made
// from it, its XML file and its HTML file cut into book files. Every form must give the
// same books, names, chapters and verses.
#include <filesystem>
#include <string>
#include <vector>

#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

namespace fs = std::filesystem;

// One line for each book ("Ruth | Ruth | 4 chapters") and for each verse ("Ruth 2:3 |
// text"), with the books in the translation's order.
std::vector<std::wstring> Contents(IFileArchive* bible)
{
    std::vector<std::wstring> lines;
    auto books = QueryAs<INamedCollection>(bible);
    int count = 0;
    books->get_Count(&count);
    for (int b = 0; b < count; ++b) {
        SmartPtr<IString> name;
        books->get_ItemName(b, name.Receive());
        SmartPtr<IUnknown> item;
        books->get_Item(b, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        auto book = item.As<IVXBook>();
        SmartPtr<IString> bare;
        book->Header(bare.Receive(), -1, 0, 1, nullptr);
        int chapters = 0;
        book->get_ChapterCount(&chapters);
        lines.push_back(Text(name) + L" | " + Text(bare) + L" | " + std::to_wstring(chapters) + L" chapters");
        for (int c = 0; c < chapters; ++c) {
            int verses = 0;
            book->get_VerseCount(c, &verses);
            for (int v = 0; v < verses; ++v) {
                std::wstring text = Verse(book, c, v, 1);
                // A cut HTML Bible ends its lines in CR LF, and a book's line keeps its CR:
                // that is how the cut files are written and read, not a difference of text.
                if (!text.empty() && text.back() == L'\r')
                    text.pop_back();
                lines.push_back(Text(name) + L" " + std::to_wstring(c + 1) + L":" + std::to_wstring(v + 1) + L" | " +
                                text);
            }
        }
    }
    return lines;
}

SmartPtr<IFileArchive> LoadBible(const fs::path& path)
{
    auto bible = Create<IFileArchive>(L"VXBible");
    bible->put_Filename(Str(path.wstring()));
    EXPECT_GE(bible->Load(), 0) << path;
    return bible;
}

// Packs the sample folder into `target`.tBL, as the host's pack does.
fs::path Pack(const fs::path& target)
{
    auto bible = LoadBible(SamplePath("bible"));
    bible->put_Filename(Str(target.wstring()));
    EXPECT_EQ(bible->Save(), S_OK);
    return target.string() + ".tBL";
}

// Cuts the sample HTML into book files and gathers them in `folder`. The cutting writes
// to a fixed name in the working folder, so it runs in a folder of its own that sees
// the modules through a link.
fs::path CutHtml(const fs::path& work, const fs::path& folder)
{
    fs::create_directories(work);
    fs::create_directories(folder);
    fs::create_directory_symlink(fs::current_path() / "_binlinux", work / "_binlinux");
    auto bible = Create<IFileArchive>(L"VXBible");
    bible->put_Filename(Str(fs::path(SamplePath("bible-html/sample.htm")).wstring()));
    fs::path back = fs::current_path();
    fs::current_path(work);
    EXPECT_EQ(bible->Load(), S_OK);
    fs::current_path(back);
    const std::string prefix = "C:\\Bible\\";
    for (const auto& entry : fs::directory_iterator(work)) {
        std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) == 0)
            fs::rename(entry.path(), folder / name.substr(prefix.size()));
    }
    return folder;
}

class BibleFormsTest : public ModuleTest {
protected:
    TempFolder m_Folder;
};

TEST_F(BibleFormsTest, EveryFormReadsTheSameBible)
{
    std::vector<std::wstring> expected = Contents(LoadBible(SamplePath("bible")));
    // Five books: Ruth 85 verses, Jonah 48, Philemon 25, 3 John 14, Jude 25.
    ASSERT_EQ(expected.size(), 5u + 85 + 48 + 25 + 14 + 25);
    EXPECT_EQ(expected[0], L"Ruth | Ruth | 4 chapters");
    EXPECT_EQ(expected.back().substr(0, 16), L"Jude 1:25 | 25:\t");

    struct Form {
        const char* name;
        fs::path path;
    } forms[] = {
        {"packed", Pack(m_Folder / "kjv")},
        {"xml", SamplePath("bible-xml/kjv-sample.xml")},
        {"html", CutHtml(m_Folder / "work", m_Folder / "html")},
    };
    for (const Form& form : forms) {
        std::vector<std::wstring> lines = Contents(LoadBible(form.path));
        EXPECT_EQ(lines.size(), expected.size()) << form.name;
        for (size_t i = 0; i < lines.size() && i < expected.size(); ++i)
            if (lines[i] != expected[i]) {
                ADD_FAILURE() << form.name << ": " << Narrow(lines[i]) << "\n  expected " << Narrow(expected[i]);
                break;
            }
    }
}

} // namespace
