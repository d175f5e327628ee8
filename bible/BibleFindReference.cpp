// The reference search: a typed reference selects its row in the tree, and a list
// of references also gives the text of every passage it names.
#include "bible/BibleReference.h"
#include "bible/VXBible.h"
#include "persistence/TextLine.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IUnknown> ItemAt(ISuperCollection* collection, int index)
{
    SmartPtr<IUnknown> item;
    if (index >= 0)
        collection->get_Item(index, item.Receive());
    return item;
}

void AppendText(ICreatableString* out, IUnknown* text) { out->Append(CREFString(text)); }

} // namespace

int32_t CVXBible::SearchTitles(ISuperCollection* titles, IString* text, int* row, IUnknown** item)
{
    BibleReference reference = BibleParseReference(CREFString(static_cast<IUnknown*>(text)));
    int count = 0;
    titles->get_Count(&count);
    int found = -1;
    for (int i = 0; i < count && found < 0; ++i) {
        SmartPtr<IString> title;
        titles->get_ItemName(i, title.Receive());
        if (BibleStartsAlike(reference.m_Book, CREFString(static_cast<IUnknown*>(title.get()))))
            found = i;
    }
    if (found < 0)
        return 0;
    auto tree = m_UserInterface.As<IUITree>();
    if (tree)
        tree->Expand(titles, found);
    *row = found + 1;
    SmartPtr<IUnknown> chosen = ItemAt(titles, found);
    auto book = chosen.As<ISuperCollection>();
    if (!book) {
        *item = chosen.Detach();
        return reference.m_Count;
    }
    SmartPtr<IUnknown> chapter = ItemAt(book, reference.m_Chapter);
    if (!chapter) {
        *item = nullptr;
        return reference.m_Count;
    }
    *row += reference.m_Chapter + (reference.m_Verse >= 0 ? 1 : 0);
    if (tree)
        tree->Expand(book, reference.m_Chapter);
    auto verses = chapter.As<ISuperCollection>();
    if (!verses) {
        // A flat book: the chapter number chose the verse, and a verse number is ignored.
        *item = chapter.Detach();
        return reference.m_Count;
    }
    SmartPtr<IUnknown> verse = ItemAt(verses, reference.m_Verse);
    if (verse) {
        *row += reference.m_Verse;
        *item = verse.Detach();
        return reference.m_Count;
    }
    verses->get_Count(&count);
    *item = chapter.Detach();
    return count;
}

int32_t CVXBible::FindReference(CREFString text, bool list, int flags, IUnknown** result)
{
    auto tree = m_UserInterface.As<IUITree>();
    if (!tree)
        return E_FAIL;
    tree->Reset();
    SmartPtr<IUnknown> root;
    tree->get_Root(root.Receive());
    auto titles = root.As<ISuperCollection>();
    if (!titles)
        return E_FAIL;
    auto output = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    int row = 0;

    if (!list) {
        auto typed = SmartPtr<IString>::Adopt(ISCreate(text));
        SmartPtr<IUnknown> item;
        // With no title to match the selection stays where it was.
        if (SearchTitles(titles, typed, &row, item.Receive()) > 0)
            tree->SelectRow(row, 5);
        if (result)
            *result = static_cast<IString*>(output.Detach());
        return S_OK;
    }

    int references = 0, shown = 0;
    SmartPtr<IVXTextReference> sample;
    SmartPtr<IVXBook> book;
    int chapter = -1, verse = -1;
    CREFString rest = text;
    while (!rest.IsEmpty()) {
        bool comma = false;
        CREFString piece = BibleNextPiece(rest, &comma);
        while (!piece.IsEmpty()) {
            auto typed = SmartPtr<IString>::Adopt(ISCreate(piece));
            SmartPtr<IUnknown> item;
            int count = SearchTitles(titles, typed, &row, item.Receive());
            piece = CREFString();
            if (count == 0)
                break;
            ++references;
            if (shown++ == 0)
                tree->SelectRow(row, 5);
            output->Append(REFLiteral(L"\r\n\r\n"));
            if (!item)
                break;
            auto found = item.As<IVXTextReference>();
            if (!found) {
                // A chapter: its whole text.
                AppendText(output, item);
                break;
            }
            if (!sample) {
                SmartPtr<IUnknown> copy;
                if (auto replicable = found.As<IReplicableObject>())
                    replicable->Replicate(copy.Receive());
                sample = copy.As<IVXTextReference>();
                if (sample)
                    sample->SetReference(nullptr, nullptr, -1, -1, -1, count);
            }
            m_LastNode = SmartPtr<IUnknown>(found.get());
            book = nullptr;
            found->GetPosition(&chapter, &verse, nullptr);
            found->GetBook(book.Receive());
            // The passage, then bare verses of the same chapter behind commas.
            for (;;) {
                SmartPtr<IString> header, lines;
                if (book) {
                    book->Header(header.Receive(), chapter, verse, count, nullptr);
                    book->get_Verse(chapter, verse, count, lines.Receive());
                }
                AppendText(output, header);
                output->Append(REFLiteral(L"\r\n"));
                AppendText(output, lines);
                if (!comma)
                    break;
                CREFString next = BibleNextPiece(rest, &comma);
                int number = _IS2Integer(next, 10);
                if (next.IsEmpty() || number == 0) {
                    // A full reference behind the comma: it is read as such.
                    piece = next;
                    break;
                }
                ++references;
                verse = int(uint32_t(number) - 1u);
                count = BibleRangeCount(next, verse);
                output->Append(REFLiteral(L"\r\n\r\n"));
            }
        }
    }

    if (!(flags & BIBLEFIND_QUIET)) {
        IUnknown* passages = static_cast<IString*>(output.get());
        if (!sample)
            Fire_NodeSelect(Primary(), 1, row, 0, passages);
        else if (references == 1)
            Fire_NodeSelect(Primary(), 1, row, 0, sample.get());
        else
            Fire_NodeSelect(sample.get(), 1, row, 0, passages);
    }
    if (result)
        *result = static_cast<IString*>(output.Detach());
    return S_OK;
}
