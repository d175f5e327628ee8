// A chapter's verses are cut from its book's text the first time anything asks for them.
// Whichever road asks first, the chapter then holds what a counted chapter holds.
#include <functional>

#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

class BibleChapterCut : public ModuleTest {};

const wchar_t kRuth[] = L"Ruth 1\n1:\ta\n2:\tb\nRuth 2\n1:\tc\n  2:\td\n\nnot a verse\n3:\te\nRuth 3\n1:\tf\n";

SmartPtr<ISuperCollection> ChapterOf(IVXBook* book, int index)
{
    SmartPtr<IUnknown> chapter;
    QueryAs<ISuperCollection>(book)->get_Item(index, chapter.Receive());
    return chapter.As<ISuperCollection>();
}

// The chapter's verses by their text, "|" between them.
std::wstring Verses(ISuperCollection* chapter)
{
    int count = 0;
    chapter->get_Count(&count);
    std::wstring verses;
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> verse;
        chapter->get_Item(i, verse.Receive());
        verses += (i ? L"|" : L"") + Text(verse);
    }
    return verses;
}

TEST_F(BibleChapterCut, EveryRoadCutsTheVersesFirst)
{
    // A verse of another chapter, to add and insert.
    auto other = MakeBook({L"Ruth", L"Ruth", L"", kRuth});
    ASSERT_TRUE(other);
    SmartPtr<IUnknown> extra;
    ChapterOf(other, 2)->get_Item(0, extra.Receive());
    ASSERT_TRUE(extra);
    auto name = SmartPtr<IString>::Adopt(ISCreate(CREFString(L"1:\tf")));

    const wchar_t* whole = L"1:\tc|2:\td|3:\te";
    struct Road {
        const char* what;
        std::function<int32_t(ISuperCollection*)> ask;
        const wchar_t* after;
    } roads[] = {
        {"count", [](ISuperCollection* c) { int n = 0; return c->get_Count(&n) == S_OK && n == 3 ? S_OK : E_FAIL; }, whole},
        {"item", [](ISuperCollection* c) {
             SmartPtr<IUnknown> item;
             return c->get_Item(2, item.Receive()) == S_OK && Text(item) == L"3:\te" ? S_OK : E_FAIL; }, whole},
        {"name", [](ISuperCollection* c) {
             SmartPtr<IString> name;
             return c->get_ItemName(1, name.Receive()) == S_OK && Text(name) == L"2:\td" ? S_OK : E_FAIL; }, whole},
        {"index by name", [](ISuperCollection* c) {
             int index = -1;
             c->get_Index(SmartPtr<IString>::Adopt(ISCreate(CREFString(L"3:\te"))), &index);
             return index == 2 ? S_OK : E_FAIL; }, whole},
        {"length beside a verse", [](ISuperCollection* c) {
             SmartPtr<IUnknown> length;
             c->get_ItemAttached(1, length.Receive());
             auto number = length.As<IVariant>();
             return number && number->get_Integer() == 4 ? S_OK : E_FAIL; }, whole},
        {"flags", [](ISuperCollection* c) { int flags = -1; return c->get_ItemFlags(2, &flags); }, whole},
        {"query", [](ISuperCollection* c) {
             int found = -1;
             c->Query(IID_IVXTextReference, 0, 0, &found);
             return found == 0 ? S_OK : E_FAIL; }, whole},
        {"remove", [](ISuperCollection* c) { return c->Remove(0); }, L"2:\td|3:\te"},
        {"add goes after the verses", [&](ISuperCollection* c) { return c->Add(name, extra, nullptr, 0); },
         L"1:\tc|2:\td|3:\te|1:\tf"},
        {"insert", [&](ISuperCollection* c) { return c->Insert(0, name, extra, nullptr, 0); },
         L"1:\tf|1:\tc|2:\td|3:\te"},
    };
    for (const Road& road : roads) {
        auto book = MakeBook({L"Ruth", L"Ruth", L"", kRuth});
        ASSERT_TRUE(book) << road.what;
        auto chapter = ChapterOf(book, 1);
        ASSERT_TRUE(chapter) << road.what;
        EXPECT_EQ(road.ask(chapter), S_OK) << road.what;
        EXPECT_EQ(Narrow(Verses(chapter)), Narrow(road.after)) << road.what;
    }
}

TEST_F(BibleChapterCut, AClearedChapterStaysEmptyAndAHeldOneOutlivesItsBook)
{
    auto book = MakeBook({L"Ruth", L"Ruth", L"", kRuth});
    ASSERT_TRUE(book);
    auto cleared = ChapterOf(book, 0);
    auto held = ChapterOf(book, 1);
    ASSERT_TRUE(cleared && held);
    EXPECT_EQ(cleared->Clear(), S_OK);
    EXPECT_EQ(Verses(cleared), L"");
    // The chapter holds the book while someone holds the chapter: its text is still there
    // to be cut.
    book = nullptr;
    EXPECT_EQ(Narrow(Verses(held)), "1:\tc|2:\td|3:\te");
}

} // namespace

namespace {

// The hits of a content search of the book by their labels, "|" between them.
std::wstring Hits(IVXBook* book, const wchar_t* text)
{
    SmartPtr<IUnknown> found;
    auto query = SmartPtr<IString>::Adopt(ISCreate(CREFString(text)));
    auto hits = QueryAs<IVXSearch>(book)->Find(query, 0, found.Receive()) == S_OK ? found.As<ISuperCollection>()
                                                                                   : nullptr;
    int count = 0;
    if (hits)
        hits->get_Count(&count);
    std::wstring labels;
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> label;
        hits->get_ItemName(i, label.Receive());
        labels += (i ? L"|" : L"") + Text(label);
    }
    return labels;
}

TEST_F(BibleChapterCut, ASearchFindsWhatItFindsInCutVerses)
{
    // Texts that an uncut chapter is looked through for as a whole, and texts it can't
    // be (a line break, a blank or a mark at the start), found or not.
    const wchar_t* texts[] = {L"d", L"\tE", L"3:", L"not", L"zzz", L" a", L"a\n2", L"\xEF" L"1", L"C\r"};
    for (const wchar_t* text : texts) {
        auto uncut = MakeBook({L"Ruth", L"Ruth", L"", kRuth});
        auto cut = MakeBook({L"Ruth", L"Ruth", L"", kRuth});
        ASSERT_TRUE(uncut && cut);
        for (int i = 0; i < 3; ++i)
            Verses(ChapterOf(cut, i));
        EXPECT_EQ(Narrow(Hits(uncut, text)), Narrow(Hits(cut, text))) << Narrow(text);
    }
}

} // namespace
