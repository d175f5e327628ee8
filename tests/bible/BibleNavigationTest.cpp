// The Bible in its tree: the walk by the keys through verses, chapters and books, what
// a chosen row tells the subscribers and the caption, and that nothing outlives the
// tree's release.
#include <tuple>

#include "bible/BibleRig.h"
#include "bible/VXBible.h"

using namespace vxtest;

namespace {

class BibleNavigationTest : public ModuleTest {
protected:
    TempFolder m_Folder;
};

// What the screen heard in the one event it may have had, cut to the length of what is
// expected; "none" when it heard nothing.
std::wstring Said(BibleRig& rig, const wchar_t* expected)
{
    EXPECT_LE(rig.Events().size(), 1u);
    return rig.Events().empty() ? L"none" : rig.Events()[0].text.substr(0, std::wcslen(expected));
}

// What a MoveDown then brings to the screen, in the same way; "fail" when it fails.
std::wstring Down(BibleRig& rig, const wchar_t* expected)
{
    rig.Events().clear();
    return rig.m_Manager->MoveDown() < 0 ? L"fail" : Said(rig, expected);
}

using Key = int32_t (IUIManager::*)();

TEST_F(BibleNavigationTest, KeysWalkVersesChaptersAndBooks)
{
    constexpr Key up = &IUIManager::MoveUp, down = &IUIManager::MoveDown, pageUp = &IUIManager::PageUp,
                  pageDown = &IUIManager::PageDown, next = &IUIManager::MoveNext;
    struct Case {
        int book, chapter, verse; // the selection to start from
        Key key;
        int32_t result;
        const wchar_t* heard; // the node's text in the one event, or "none"
        const wchar_t* next;  // what a MoveDown heard afterwards, or "fail"
    } cases[] = {
        {0, 0, 0, down, S_OK, L"2:\tRuth 1.2", L"3:\tRuth 1.3"},
        {0, 0, 2, down, S_OK, L"1:\tRuth 2.1", L"2:\tRuth 2.2"},
        {0, 1, 0, up, S_OK, L"3:\tRuth 1.3", L"1:\tRuth 2.1"},
        {0, 2, 3, up, S_OK, L"3:\tRuth 3.3", L"4:\tRuth 3.4"},
        {1, 0, 0, next, S_OK, L"2:\tJonah 1.2", L"1:\tJonah 2.1"},
        // The start and the end of a book stop, and the selection stays.
        {0, 0, 0, up, E_FAIL, L"none", L"2:\tRuth 1.2"},
        {0, 2, 3, down, E_FAIL, L"none", L"fail"},
        {1, 0, 0, up, E_FAIL, L"none", L"2:\tJonah 1.2"},
        // A flat book wraps to its first verse.
        {2, 0, 2, down, S_OK, L"1:\tJude 1.1", L"2:\tJude 1.2"},
        {2, 0, 0, up, E_FAIL, L"none", L"2:\tJude 1.2"},
        // Pages go by chapters, and across books at their ends: onto a chapter, from
        // which the keys go nowhere until a verse is chosen.
        {0, 0, 1, pageDown, S_OK, L"Ruth 2", L"fail"},
        {0, 2, 0, pageDown, S_OK, L"Jonah 1", L"fail"},
        {0, 1, 1, pageUp, S_OK, L"Ruth 1", L"fail"},
        {1, 1, 0, pageUp, S_OK, L"Jonah 1", L"fail"},
        {1, 0, 1, pageUp, S_OK, L"Ruth 1", L"fail"},
        {0, 0, 2, pageUp, E_FAIL, L"none", L"1:\tRuth 2.1"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.book << " " << c.chapter << ":" << c.verse << " expecting "
                                        << Narrow(c.heard));
        BibleRig rig(WriteTestBible(m_Folder.Path()));
        rig.Click(rig.m_Bible, 1, 0, rig.VerseNode(c.book, c.chapter, c.verse));
        rig.Events().clear();
        ASSERT_EQ((rig.m_Manager.get()->*c.key)(), c.result);
        ASSERT_EQ(Said(rig, c.heard), c.heard);
        if (!rig.Events().empty()) {
            const Heard& heard = rig.Events()[0];
            EXPECT_TRUE(SameObject(heard.source, rig.m_Bible));
            EXPECT_EQ(heard.action * 10 + heard.flags, 10);
            // The tree shows the verse it was told of, on the row below the one reported;
            // the rows are reckoned for a book of chapters.
            if ((c.key == up || c.key == down) && c.book != 2) {
                SmartPtr<IUnknown> active, node;
                int row = rig.m_Tree->GetSelection(0, 2, active.Receive());
                EXPECT_EQ(row, heard.row + 1);
                rig.m_Tree.As<IUITreeView>()->get_Row(row, nullptr, nullptr, node.Receive());
                EXPECT_EQ(node.get(), heard.node.get());
            }
        }
        EXPECT_EQ(Down(rig, c.next), c.next);
    }
}

TEST_F(BibleNavigationTest, ChosenRowsReachTheScreenWithTheirCaption)
{
    enum Node { Verse, Chapter, Ruth, Jude, None };
    enum Source { FromBible, FromRuth };
    struct Case {
        int action, flags;
        Node node;
        Source source;
        const wchar_t* heard;   // the node's text in the one event, or "none"
        int heardAction;
        const wchar_t* caption; // "-" where the caption stays as it was
        const wchar_t* next;    // what a MoveDown heard afterwards, or "fail"
    } cases[] = {
        {1, 0, Verse, FromBible, L"1:\tRuth 2.1", 1, L"Ruth 2:1 ", L"2:\tRuth 2.2"},
        {9, 0, Verse, FromBible, L"1:\tRuth 2.1", 9, L"Ruth 2:1 ", L"2:\tRuth 2.2"},
        {2, 0, Chapter, FromRuth, L"Ruth 2", 2, L"Ruth 2", L"fail"},
        {1, 0, None, FromBible, L"", 1, L"", L"fail"},
        // Only 1, 2 and 9 are selections, and the bit 2 of the flags says to ignore one.
        {3, 0, Verse, FromBible, L"none", 0, L"-", L"2:\tRuth 1.2"},
        {5, 0, Verse, FromBible, L"none", 0, L"-", L"2:\tRuth 1.2"},
        {1, 2, Verse, FromBible, L"none", 0, L"-", L"2:\tRuth 1.2"},
        // The flag 1 asks for the book: a book of chapters goes out alone, the walk stays.
        {1, 1, Ruth, FromBible, L"", 1, L"-", L"2:\tRuth 1.2"},
        {2, 1, Chapter, FromRuth, L"", 2, L"-", L"2:\tRuth 1.2"},
        {1, 1, Chapter, FromBible, L"none", 0, L"-", L"2:\tRuth 1.2"},
        {1, 1, Verse, FromBible, L"none", 0, L"-", L"2:\tRuth 1.2"},
        // A book of one chapter is chosen as any node is.
        {1, 1, Jude, FromBible, L"", 1, L"Jude  ", L"fail"},
        {1, 0, Ruth, FromBible, L"", 1, L"Ruth 1 ", L"fail"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "action " << c.action << " flags " << c.flags << " node " << c.node);
        BibleRig rig(WriteTestBible(m_Folder.Path()));
        rig.Click(rig.m_Bible, 1, 0, rig.VerseNode(0, 0, 0));
        QueryAs<IUIManagerCollection>(rig.m_Frame.get())->SetCaption(Str(L"-"), -1, 0);
        rig.Events().clear();
        SmartPtr<IUnknown> nodes[] = {rig.VerseNode(0, 1, 0), rig.ChapterNode(0, 1), QueryAs<IUnknown>(rig.Book(0)),
                                      QueryAs<IUnknown>(rig.Book(2)), nullptr};
        SmartPtr<IUnknown> node = nodes[c.node], ruth = nodes[Ruth], book = nodes[c.node == Jude ? Jude : Ruth];
        rig.Click(c.source == FromRuth ? ruth.get() : rig.m_Bible.get(), c.action, c.flags, node);
        ASSERT_EQ(Said(rig, c.heard), c.heard);
        if (!rig.Events().empty()) {
            const Heard& heard = rig.Events()[0];
            EXPECT_EQ(heard.action * 10 + heard.flags, c.heardAction * 10);
            // The book of a chapter is the chapter's source.
            if (c.flags & 1) {
                EXPECT_EQ(heard.node.get(), book.get());
            }
        }
        EXPECT_EQ(rig.Caption(), c.caption);
        EXPECT_EQ(Down(rig, c.next), c.next);
    }
}

TEST_F(BibleNavigationTest, HitsAreChosenTwiceAndWalkedByTheTree)
{
    BibleRig rig(WriteTestBible(m_Folder.Path()));
    SmartPtr<IUnknown> hits;
    ASSERT_EQ(rig.m_Bible.As<IVXSearch>()->Find(Str(L"Ruth 3"), BIBLEFIND_CONTENTS, hits.Receive()), S_OK);
    auto hit = [&](int i) {
        SmartPtr<IUnknown> item;
        hits.As<ISimpleCollection>()->get_Item(i, item.Receive());
        return item;
    };
    struct Step {
        int hit;    // the hit clicked, or -1 for the key down
        int action; // the click's action
        int heardAction;
        const wchar_t* heard;
    } steps[] = {
        {0, 2, 2, L"1:\tRuth 3.1"},
        // The same hit again is a plain selection, and the caption stays.
        {0, 9, 1, L"1:\tRuth 3.1"},
        {1, 9, 9, L"2:\tRuth 3.2"},
        {1, 2, 1, L"2:\tRuth 3.2"},
        // While the hits are up, the keys move through the tree's rows and the tree reports.
        {-1, 0, 1, L"3:\tRuth 3.3"},
    };
    rig.m_Tree->SelectRow(1, 5);
    for (const Step& step : steps) {
        SCOPED_TRACE(Narrow(step.heard));
        rig.Events().clear();
        QueryAs<IUIManagerCollection>(rig.m_Frame.get())->SetCaption(Str(L"-"), -1, 0);
        if (step.hit >= 0)
            rig.Click(hits, step.action, 0, hit(step.hit));
        else
            EXPECT_EQ(rig.m_Manager->MoveDown(), S_OK);
        ASSERT_EQ(Said(rig, step.heard), step.heard);
        EXPECT_EQ(rig.Events()[0].action, step.heardAction);
        EXPECT_EQ(rig.Caption(), step.heardAction == 1 && step.hit >= 0 ? L"-" : L" ");
    }
    // The hits stay up through a refresh.
    EXPECT_EQ(rig.m_Manager->Refresh(0), S_OK);
    SmartPtr<IUnknown> root;
    rig.m_Tree->get_Root(root.Receive());
    EXPECT_EQ(root.get(), QueryAs<IUnknown>(hits.get()).get());
}

TEST_F(BibleNavigationTest, OnlyVersesAreDraggedOutAndNothingDroppedIn)
{
    BibleRig rig(WriteTestBible(m_Folder.Path()));
    auto workspace = Create<IWorkspace>(L"ActiveWorkspace");
    // The holds a drag adds to the node: the workspace keeps a verse until the drag ends.
    std::pair<SmartPtr<IUnknown>, int> cases[] = {
        {rig.VerseNode(2, 0, 1), 1}, {rig.ChapterNode(0, 1), 0}, {QueryAs<IUnknown>(rig.Book(1)), 0}};
    for (auto& [node, held] : cases) {
        int before = OtherHolds(node);
        rig.m_Bible.As<_IUIContainerEvents>()->NodeDrag(rig.m_Bible, 0, 1, 2, node);
        EXPECT_EQ(OtherHolds(node) - before, held);
        workspace->BeginDrag(nullptr, 0, 0, nullptr);
    }
    auto drop = rig.m_Bible.As<IUIDropTarget>();
    EXPECT_EQ(drop->DragDrop(nullptr, 0, 0x20, 0, 0, nullptr), E_FAIL);
    EXPECT_EQ(drop->DragDrop(nullptr, 0, 0x30, 0, 0, nullptr), S_OK);
}

TEST_F(BibleNavigationTest, AnAbbreviationReachesEveryHeader)
{
    BibleRig rig(WriteTestBible(m_Folder.Path()));
    // Id, value, and then the caption of Jonah 2:1 and the header of Jude 2.
    std::tuple<int, const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
        {BIBLE_PROP_ABBREVIATION, L"KJV", L"Jonah 2:1 ", L"Jude 2 [KJV]"},
        {BIBLE_PROP_LANGUAGE, L"Deutsch", L"Jonah 2:1 ", L"Jude 2 [KJV]"},
        {BIBLE_PROP_ABBREVIATION, L"", L"Jonah 2:1", L"Jude 2"},
    };
    for (auto [id, value, caption, header] : cases) {
        EXPECT_EQ(rig.m_Bible.As<IUIPropInterrogateEx>()->ControlEx(id, Str(value)), S_OK);
        rig.Click(rig.m_Bible, 1, 0, rig.VerseNode(1, 1, 0));
        SmartPtr<IString> text;
        rig.Book(2)->Header(text.Receive(), 0, 1, 1, nullptr);
        EXPECT_EQ(rig.Caption(), caption);
        EXPECT_EQ(Text(text), header);
    }
    EXPECT_EQ(rig.m_Bible.As<IUIPropInterrogateEx>()->ControlEx(77, Str(L"X")), E_INVALIDARG);
}

TEST_F(BibleNavigationTest, ATiedBibleLetsGoOfEverything)
{
    BibleRig rig(WriteTestBible(m_Folder.Path()));
    auto tree = rig.m_Tree;
    // Tied: the tree shows the Bible, reports to it and has it as its manager.
    SmartPtr<IUnknown> root, parent;
    tree->get_Root(root.Receive());
    tree.As<IParent>()->get_Parent(parent.Receive());
    EXPECT_EQ(root.get(), QueryAs<IUnknown>(rig.m_Bible.get()).get());
    EXPECT_EQ(QueryAs<IUnknown>(parent.get()).get(), root.get());
    EXPECT_EQ(tree.As<IEventSource>()->GetAdviseCount(), 1);
    root.Clear();
    parent.Clear();
    // A row chosen in the tree reaches the screen through the Bible.
    tree.As<IUITreeView>()->ExpandRow(0);
    tree.As<IUITreeView>()->ExpandRow(1);
    tree->SelectRow(3, 7);
    ASSERT_EQ(rig.Events().size(), 1u);
    EXPECT_EQ(rig.Events()[0].text.substr(0, 11), L"2:\tRuth 1.2");
    EXPECT_EQ(rig.m_Manager->MoveDown(), S_OK);
    EXPECT_EQ(rig.m_Screen->m_Refreshes, 1);
    EXPECT_EQ(rig.m_Manager->Refresh(0), S_OK);
    EXPECT_EQ(rig.m_Screen->m_Refreshes, 2);
    rig.Events().clear();

    rig.Untie();
    EXPECT_EQ(rig.m_Manager->MoveDown(), E_FAIL) << "no tree";
    EXPECT_EQ(rig.m_Manager->Refresh(0), S_OK);
    rig.m_Tree.Clear();
    rig.m_Manager.Clear();
    EXPECT_EQ(tree.As<IEventSource>()->GetAdviseCount(), 0);
    EXPECT_LT(tree->get_Root(root.Receive()), 0);
    EXPECT_EQ(OtherHolds(tree), 0);
    EXPECT_EQ(OtherHolds(rig.m_Bible), 0);
    EXPECT_EQ(OtherHolds(rig.m_ScreenHeld), 0);
    // The last node chosen goes with the Bible, and with it the hold on its book.
    SmartPtr<IUnknown> book = QueryAs<IUnknown>(rig.Book(0));
    rig.m_Books.clear();
    rig.m_Bible.Clear();
    EXPECT_EQ(OtherHolds(book), 0);
}

} // namespace
