// References and chapters view a book's text: they keep the book alive while held
// outside its index, and the book goes with the last of them.
#include "bible/BibleRig.h"
#include "bible/BookMaker.h"

using namespace vxtest;

namespace {

class TextReference : public ModuleTest {};

// A book that only counts its references.
struct CountingBook : IVXBook {
    int32_t count = 1;
    int32_t QueryInterface(const IID&, void** object) override
    {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    int32_t AddRef() override { return ++count; }
    int32_t Release() override { return --count; }
    int32_t get_ChapterCount(int*) override { return E_NOTIMPL; }
    int32_t get_VerseCount(int, int*) override { return E_NOTIMPL; }
    int32_t get_Verse(int, int, int, IString**) override { return E_NOTIMPL; }
    int32_t Header(IString**, int, int, int, IUnknown*) override { return E_NOTIMPL; }
    int32_t Footer(IString**, int, int, int, IUnknown*) override { return E_NOTIMPL; }
};

TEST_F(TextReference, HoldsItsBookWhileHeldOutsideTheIndex)
{
    struct Case {
        const char* what;
        int indexHolds;
        int extraHolds; // taken after the index's holds are told
        int32_t bookCount;
    } cases[] = {
        {"a passage made on demand holds its book", 0, 0, 2},
        {"a verse held only by its chapter does not", 2, 1, 1},
        {"a verse handed out does", 2, 2, 2},
        {"a heading held by the book alone does not", 1, 0, 1},
        {"a heading handed out does", 1, 1, 2},
    };
    wchar_t text[] = L"1:\tword";
    for (const Case& c : cases) {
        CountingBook book;
        {
            auto reference = Create<IVXTextReference>(L"VXTextReference");
            ASSERT_TRUE(reference);
            reference->SetReference(&book, text, 7, 0, 0, 1);
            reference.As<IVXTextReferenceHolds>()->put_IndexHolds(c.indexHolds);
            for (int i = 0; i < c.extraHolds; ++i)
                reference->AddRef();
            EXPECT_EQ(book.count, c.bookCount) << c.what;
            for (int i = 0; i < c.extraHolds; ++i)
                reference->Release();
            // A copy is nobody's index entry.
            SmartPtr<IUnknown> copy;
            reference.As<IReplicableObject>()->Replicate(copy.Receive());
            EXPECT_EQ(Text(copy), L"1:\tword") << c.what;
            EXPECT_EQ(book.count, c.indexHolds == 0 ? 3 : 2) << c.what;
        }
        EXPECT_EQ(book.count, 1) << c.what << ": the book is let go with the reference";
    }
}

TEST_F(TextReference, SetReferenceKeepsWhatIsNotGiven)
{
    CountingBook first, second;
    wchar_t text[] = L"3:\tthird";
    auto reference = Create<IVXTextReference>(L"VXTextReference");
    reference->SetReference(&first, text, 8, 2, 3, 4);
    reference->SetReference(nullptr, nullptr, -1, -1, 7, -1);
    int chapter = 0, verse = 0, count = 0;
    reference->GetPosition(&chapter, &verse, &count);
    EXPECT_EQ(chapter * 100 + verse * 10 + count, 274);
    EXPECT_EQ(Text(reference), L"3:\tthird");
    reference->SetReference(&second, nullptr, -1, -1, -1, -1);
    EXPECT_EQ(first.count, 1);
    EXPECT_EQ(second.count, 2);
    reference->SetReference(nullptr, text, -5, -1, -1, -1);
    EXPECT_EQ(Text(reference), L"") << "a negative length reads as empty";
}

TEST_F(TextReference, OutlivesItsBookAndChapter)
{
    auto book = MakeBook({L"Ruth", L"Ruth", L"", L"Ruth 1\n1:\ta\n2:\tb\nRuth 2\n1:\tc\n2:\td\n"});
    ASSERT_TRUE(book);
    SmartPtr<IUnknown> chapter;
    QueryAs<ISuperCollection>(book.get())->get_Item(1, chapter.Receive());
    // An object that only the index holds besides us: its count shows when the index goes.
    SmartPtr<IUnknown> lineLength;
    chapter.As<ISuperCollection>()->get_ItemAttached(0, lineLength.Receive());
    ASSERT_TRUE(lineLength);
    EXPECT_EQ(OtherHolds(lineLength), 1);

    SmartPtr<IString> verse, passage;
    book->get_Verse(1, 1, 1, verse.Receive());
    book->get_Verse(0, 0, BIBLE_VERSES_TO_END, passage.Receive());
    ASSERT_TRUE(verse && passage);
    book = nullptr;

    // Each still reads the text it views.
    EXPECT_EQ(Text(verse), L"2:\td");
    EXPECT_EQ(Text(passage), L"1:\ta\n2:\tb");
    EXPECT_EQ(Text(chapter), L"Ruth 2\n1:\tc\n2:\td");
    SmartPtr<IVXBook> owner;
    verse.As<IVXTextReference>()->GetBook(owner.Receive());
    ASSERT_TRUE(owner);
    owner = nullptr;
    verse = nullptr;
    passage = nullptr;
    EXPECT_EQ(OtherHolds(lineLength), 1) << "the chapter still holds the book";
    chapter = nullptr;
    EXPECT_EQ(OtherHolds(lineLength), 0) << "the book and its index are gone";
}

} // namespace
