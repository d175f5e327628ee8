// The keys in the Bible's tree: up and down by verses across chapters, and page up and
// down by chapters across books. The place is the last node chosen, read back each time.
#include "bible/VXBible.h"

namespace {

// Where a chosen verse stands: its book, chapter, verse and count.
struct Place {
    SmartPtr<IVXBook> m_Book;
    int m_Chapter = -1;
    int m_Verse = -1;
    int m_Count = 1;
};

// False when the node is no verse: after a chapter or a book, the keys go nowhere.
bool PlaceOf(IUnknown* node, Place* place)
{
    auto reference = QueryAs<IVXTextReference>(node);
    if (!reference)
        return false;
    reference->GetPosition(&place->m_Chapter, &place->m_Verse, &place->m_Count);
    reference->GetBook(place->m_Book.Receive());
    return bool(place->m_Book);
}

} // namespace

int32_t CVXBible::ShowVerse(IUITree* tree, IVXBook* book, int chapter, int verse, IString* text)
{
    tree->Reset();
    int position = -1;
    get_ItemIndex(book, &position);
    tree->Expand(static_cast<ISuperCollection*>(this), position);
    tree->Expand(book, chapter);
    // The verse's row in a tree with only its book and chapter open.
    int row = chapter + position + 1 + verse;
    tree->SelectRow(row + 1, 5);
    NodeSelect(Primary(), 1, row, 0, text);
    Fire_UIItemChanged();
    return S_OK;
}

int32_t CVXBible::StepVerse(int step)
{
    SmartPtr<IUITree> tree = Tree();
    if (!tree)
        return E_FAIL;
    SmartPtr<IUnknown> active;
    int row = tree->GetSelection(0, 2, active.Receive());
    // While the tree lists hits, the keys move through its rows, and the tree reports.
    if ((!active && !m_SearchResults) || (active && SameObject(active, m_SearchResults))) {
        tree->SelectRow(row + step, 7);
        return S_OK;
    }
    Place place;
    if (!PlaceOf(m_LastNode, &place))
        return E_FAIL;
    SmartPtr<IVXBook> book = place.m_Book;
    int chapter = place.m_Chapter, verse = place.m_Verse;
    if (step > 0) {
        ++verse;
    } else if (verse > 0) {
        --verse;
    } else {
        if (--chapter < 0)
            return E_FAIL;
        int verses = 0;
        book->get_VerseCount(chapter, &verses);
        verse = verses - 1;
    }
    SmartPtr<IString> text;
    if (book->get_Verse(chapter, verse, 1, text.Receive()) < 0) {
        // Past a chapter's end: the first verse of the next one. A flat book answers
        // any chapter with its one list, and so wraps to its start.
        text.Clear();
        if (book->get_Verse(chapter + 1, 0, 1, text.Receive()) < 0)
            return E_FAIL;
        ++chapter;
        verse = 0;
    }
    return ShowVerse(tree, book, chapter, verse, text);
}

int32_t CVXBible::StepPage(int step)
{
    SmartPtr<IUITree> tree = Tree();
    if (!tree)
        return E_FAIL;
    Place place;
    if (!PlaceOf(m_LastNode, &place))
        return E_FAIL;
    SmartPtr<IVXBook> book = place.m_Book;
    int chapter = place.m_Chapter + step, count = place.m_Count;
    if (step > 0)
        count = 1;
    SmartPtr<IString> text;
    if (book->get_Verse(chapter, 0, count, text.Receive()) < 0) {
        // Into the book before or after, at its first chapter. The book is found by
        // identity: it reads as a string too, and a lookup by name would miss it.
        int position = -1;
        if (get_ItemIndex(book, &position) < 0)
            return E_FAIL;
        SmartPtr<IUnknown> item;
        get_Item(position + step, item.Receive());
        book = item.As<IVXBook>();
        if (!book)
            return E_FAIL;
        chapter = 0;
        text.Clear();
        if (book->get_Verse(0, 0, count, text.Receive()) < 0)
            return E_FAIL;
    }
    // The chapter, or in a flat book the verse at that position.
    SmartPtr<IUnknown> item;
    if (auto chapters = QueryAs<ISuperCollection>(book.get()))
        chapters->get_Item(chapter, item.Receive());
    auto shown = item.As<IString>();
    // Paging up shows its place in the tree; paging down leaves the tree as it is.
    if (step < 0) {
        tree->Reset();
        int position = -1;
        get_ItemIndex(book, &position);
        tree->Expand(static_cast<ISuperCollection*>(this), position);
        tree->Expand(book, chapter);
    }
    NodeSelect(Primary(), 1, 0, 0, shown);
    return S_OK;
}

int32_t CVXBible::MoveUp() { return StepVerse(-1); }
int32_t CVXBible::MoveDown() { return StepVerse(1); }
int32_t CVXBible::PageUp() { return StepPage(-1); }
int32_t CVXBible::PageDown() { return StepPage(1); }
int32_t CVXBible::MoveNext() { return MoveDown(); }
int32_t CVXBible::MovePrevious() { return MoveUp(); }

int32_t CVXBible::MoveLeft() { return E_FAIL; }
int32_t CVXBible::MoveRight() { return E_FAIL; }
