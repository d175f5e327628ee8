// What a user types at a Bible: references selecting rows of a real tree, lists of
// references giving their passages, and phrases found in every verse of the sample.
#include <cwctype>
#include <string>
#include <vector>

#include "bible/BibleRig.h"
#include "bible/BookMaker.h"
#include "support/Collections.h"

using namespace vxtest;

namespace {

constexpr int kContents = 1, kRefine = 0x100, kQuiet = 0x400;
const char* const kBooks[] = {"Ruth", "Jonah", "Philemon", "3 John", "Jude"};

std::wstring W(const std::string& text) { return std::wstring(text.begin(), text.end()); }

std::wstring Lower(std::wstring text)
{
    for (wchar_t& c : text)
        c = wchar_t(std::towlower(wint_t(c)));
    return text;
}

// The first line of each passage of a list's text; the text must open with a break.
std::vector<std::wstring> Headers(const std::wstring& out)
{
    std::vector<std::wstring> headers;
    for (size_t at = 0; (at = out.find(L"\r\n\r\n", at)) != std::wstring::npos;) {
        at += 4;
        headers.push_back(out.substr(at, out.find_first_of(L"\r\n", at) - at));
    }
    return headers;
}

// The count a reference gives for itself, or -1 for any other node.
int CountOf(IUnknown* node)
{
    int count = -1;
    if (auto reference = QueryAs<IVXTextReference>(node))
        reference->GetPosition(nullptr, nullptr, &count);
    return count;
}

// The sample Bible in a tree, with a screen that hears what the Bible fires.
class BibleFindTest : public ModuleTest {
protected:
    BibleRig m_Rig{SamplePath("bible"), false};
    SmartPtr<IVXSearch> m_Bible = m_Rig.m_Bible.As<IVXSearch>();
    std::vector<vxtest::Heard>& Heard() { return m_Rig.Events(); }

    // The label of the selected row up to its first tab, or "-" when none is selected.
    std::wstring Selected()
    {
        SmartPtr<IUnknown> root;
        int row = m_Rig.m_Tree->GetSelection(0, 2, root.Receive());
        SmartPtr<IString> label;
        if (row < 0 || m_Rig.m_Tree.As<IUITreeView>()->get_Row(row, label.Receive(), nullptr, nullptr) < 0)
            return L"-";
        std::wstring text = Text(label);
        return text.substr(0, text.find_first_of(L"\t\r"));
    }

    std::wstring FindText(const std::wstring& text, int flags, int32_t* result = nullptr)
    {
        SmartPtr<IUnknown> out;
        int32_t got = m_Bible->Find(Str(text), flags, out.Receive());
        if (result)
            *result = got;
        return Text(out);
    }
    std::vector<std::wstring> Shown()
    {
        SmartPtr<IUnknown> root;
        m_Rig.m_Tree->get_Root(root.Receive());
        return ItemNames(root);
    }
};

// Each reference alone selects a row; as a list of one it gives its passage, whose
// verses must be the file's own, from `first` through `last` (0: the chapter's end).
TEST_F(BibleFindTest, ReferencesSelectRowsAndGivePassages)
{
    struct Case {
        const char* text;
        const char* row;    // the selected row's label
        const char* header; // the passage's first line; "" for a book alone, "-" for nothing
        int book, chapter, first, last;
    } cases[] = {
        {"Ruth 1:16-18", "16:", "Ruth 1:16-18 [KJV]", 0, 1, 16, 18},
        {"Ruth 1:16-", "16:", "Ruth 1:16- [KJV]", 0, 1, 16, 0},
        {"Ruth 1:16-14", "16:", "Ruth 1:16- [KJV]", 0, 1, 16, 0},
        {"ruth 1 16", "16:", "Ruth 1:16 [KJV]", 0, 1, 16, 16},
        {"Ruth 1.16", "16:", "Ruth 1:16 [KJV]", 0, 1, 16, 16},
        {"Ruth 2:3", "3:", "Ruth 2:3 [KJV]", 0, 2, 3, 3},
        {"  Jonah   1 :  2  - 4 ", "2:", "Jonah 1:2-4 [KJV]", 1, 1, 2, 4},
        {"Jonah4", "Jonah 4", "Jonah 4", 1, 4, 1, 0},
        // Past the chapter's end: the chapter, one row below its own.
        {"Ruth 1:99", "1:", "Ruth 1", 0, 1, 1, 0},
        // Past the book's end, or a book alone: the row below the book's.
        {"Ruth 9:1", "Ruth 1", "", 0, 0, 0, 0},
        {"Ruth", "Ruth 1", "", 0, 0, 0, 0},
        {"J", "Jonah 1", "", 1, 0, 0, 0},
        {"3", "1:", "", 3, 0, 0, 0},
        // A flat book: the chapter number picks the verse; a verse number is ignored.
        {"Jude 5", "5:", "Jude 5 [KJV]", 4, 1, 5, 5},
        {"Jude 1:5", "2:", "Jude 1 [KJV]", 4, 1, 1, 1},
        {"3 John 4", "4:", "3 John 4 [KJV]", 3, 1, 4, 4},
        {"Philemon 1:1", "2:", "Philemon 1 [KJV]", 2, 1, 1, 1},
        {"3:16", "-", "-", 0, 0, 0, 0},
        {"Genesis 1:1", "-", "-", 0, 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        int32_t result = 0;
        EXPECT_EQ(FindText(W(c.text), 0, &result), L"");
        EXPECT_EQ(result, S_OK);
        EXPECT_EQ(Selected(), W(c.row));
        EXPECT_TRUE(Heard().empty()) << "a single line fires nothing";

        std::wstring out = FindText(W(c.text) + L"\r\n", 0);
        ASSERT_EQ(Heard().size(), 1u);
        std::string header = c.header;
        if (header == "-" || header.empty()) {
            EXPECT_EQ(out, header.empty() ? L"\r\n\r\n" : L"");
            EXPECT_EQ(Heard()[0].text, out);
        } else {
            ASSERT_FALSE(Headers(out).empty());
            EXPECT_EQ(Headers(out)[0], W(header));
            std::string file = SamplePath(std::string("bible/") + kBooks[c.book] + ".bbl");
            int end = c.last;
            for (const SampleLine& line : SampleLines(file))
                end += c.last == 0 && line.chapter == c.chapter - 1;
            for (int verse = c.first; verse <= end; ++verse)
                EXPECT_NE(out.find(SampleVerse(file, c.chapter - 1, verse - 1).substr(0, 40)), std::wstring::npos)
                    << verse;
            std::wstring after = SampleVerse(file, c.chapter - 1, end);
            EXPECT_TRUE(after == L"<missing>" || out.find(after) == std::wstring::npos);
        }
        Heard().clear();
    }
}

// Lists cut at line breaks, commas and semicolons; behind a comma a bare number is a
// verse of the same chapter, anything else a reference of its own.
TEST_F(BibleFindTest, ListsShowEveryPassageAndFireOnce)
{
    struct Case {
        const char* text;
        std::vector<std::wstring> headers;
        const char* fired; // "bible" (text), "sample" (the Bible fires its copy), "copy" (the copy fires the text)
        const char* row;
    } cases[] = {
        {"Ruth 1:16,18-20;Jonah 2\r\n", {L"Ruth 1:16 [KJV]", L"Ruth 1:18-20 [KJV]", L"Jonah 2"}, "copy", "16:"},
        {"Ruth 1:16,1 John 2:3\r\n", {L"Ruth 1:16 [KJV]", L"Ruth 1:1 [KJV]"}, "copy", "16:"},
        {"Ruth 1:16, Jonah 1:2\r\n", {L"Ruth 1:16 [KJV]", L"Jonah 1:2 [KJV]"}, "copy", "16:"},
        {"Ruth 1:16-,20 - 21\r\n", {L"Ruth 1:16- [KJV]", L"Ruth 1:20-21 [KJV]"}, "copy", "16:"},
        {"Jude 3\r\n", {L"Jude 3 [KJV]"}, "sample", "3:"},
        {"Nowhere 1\r\n\r\nRuth 2:1\n", {L"Ruth 2:1 [KJV]"}, "sample", "1:"},
        {"Ruth 2\r\n", {L"Ruth 2"}, "bible", "Ruth 2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::wstring out = FindText(W(c.text), 0);
        EXPECT_EQ(Headers(out), c.headers);
        EXPECT_EQ(Selected(), W(c.row)) << "the first passage's row";
        ASSERT_EQ(Heard().size(), 1u);
        std::string fired = c.fired;
        EXPECT_EQ(SameObject(Heard()[0].source, m_Bible), fired != "copy");
        EXPECT_EQ(CountOf(Heard()[0].node), fired == "sample" ? 1 : -1);
        EXPECT_TRUE(fired == "sample" || Heard()[0].text == out);
        Heard().clear();

        // Quiet: the same selection and text, and no event.
        m_Rig.m_Tree->Reset();
        EXPECT_EQ(FindText(W(c.text), kQuiet), out);
        EXPECT_EQ(Selected(), W(c.row));
        EXPECT_TRUE(Heard().empty());
    }
}

// A phrase is found in exactly the verse lines that hold it, ignoring case; a
// refinement keeps those that also hold the second phrase and reads no book again.
TEST_F(BibleFindTest, ContentSearchAndRefinement)
{
    // Marks every book read or not, and gives the marks they had.
    auto MarkRead = [books = m_Bible.As<INamedCollection>()](int read) {
        std::vector<int> had;
        for (int b = 0; b < 5; ++b) {
            SmartPtr<IUnknown> book;
            books->get_Item(b, book.Receive());
            had.push_back(-1);
            book.As<IFileArchive>()->Inquire(ARCHIVE_HASFILE, &had.back());
            book.As<IFileArchive>()->Control(ARCHIVE_HASFILE, read);
        }
        return had;
    };
    struct Case {
        const char* phrase;
        const char* within;
    } cases[] = {{"the lord", "said"}, {"MERCY", "peace"}, {"jonah", "fish"}, {"no such words", ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.phrase);
        int32_t result = 0;
        std::vector<std::wstring> expected, refined;
        for (int b = 0; b < 5; ++b) {
            bool flat = b >= 2;
            for (const SampleLine& line : SampleLines(SamplePath(std::string("bible/") + kBooks[b] + ".bbl"))) {
                std::wstring verse = line.line.substr(0, line.line.find_last_not_of(L"\r") + 1);
                if (Lower(verse).find(Lower(W(c.phrase))) == std::wstring::npos)
                    continue;
                std::wstring label = W(kBooks[b]) + (flat ? L"" : L" " + std::to_wstring(line.chapter + 1) + L" ") + verse;
                expected.push_back(label);
                if (*c.within && Lower(verse).find(W(c.within)) != std::wstring::npos)
                    refined.push_back(label);
            }
        }
        SmartPtr<IUnknown> hits;
        EXPECT_EQ(m_Bible->Find(Str(W(c.phrase)), kContents, hits.Receive()), expected.empty() ? S_FALSE : S_OK);
        EXPECT_EQ(ItemNames(hits), expected);
        EXPECT_EQ(Shown(), expected) << "the tree shows the hits";
        EXPECT_EQ(Heard().size(), expected.empty() ? 0u : 1u);
        if (expected.empty())
            continue;

        // No book may be read for a refinement: each is marked unread, and stays so.
        EXPECT_EQ(MarkRead(0), std::vector<int>(5, 1));
        FindText(W(c.within), kContents | kRefine, &result);
        EXPECT_EQ(result, refined.empty() ? S_FALSE : S_OK);
        EXPECT_EQ(Shown(), refined);
        EXPECT_EQ(MarkRead(1), std::vector<int>(5, 0));
        Heard().clear();
    }
    // An empty refinement ends the search: the tree shows the books again.
    EXPECT_EQ(FindText(L" ", kContents | kRefine), L"");
    SmartPtr<IUnknown> root;
    m_Rig.m_Tree->get_Root(root.Receive());
    EXPECT_TRUE(SameObject(root, m_Bible));
}

// Hits hold their books, and a book its own hits: all of it goes with the Bible.
TEST_F(BibleFindTest, ABibleWithHitsIsFreed)
{
    SmartPtr<IUnknown> ruth = QueryAs<IUnknown>(m_Rig.Book(0));
    EXPECT_EQ(m_Bible->Find(Str(L"the"), kContents, nullptr), S_OK);
    EXPECT_NE(FindText(L"Ruth 1:16\r\n", 0), L"");
    SmartPtr<IUnknown> hits;
    ruth.As<IVXSearch>()->Find(Str(L"Boaz"), 0, hits.Receive());
    hits = nullptr;
    Heard().clear();
    m_Rig.Untie();
    m_Rig.m_Books.clear();
    m_Rig.m_Bible = nullptr, m_Rig.m_Manager = nullptr, m_Rig.m_Tree = nullptr, m_Bible = nullptr;
    EXPECT_EQ(OtherHolds(ruth), 0);
}

// Without a tree a reference search has nowhere to go; a content search still runs.
TEST_F(BibleFindTest, WithoutATree)
{
    m_Rig.m_Manager->put_UserInterface(nullptr);
    int32_t result = 0;
    FindText(L"Ruth 1:1", 0, &result);
    EXPECT_EQ(result, E_FAIL);
    FindText(L"Boaz", kContents, &result);
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(Heard().size(), 1u);
}

} // namespace
