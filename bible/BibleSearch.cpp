// The Bible's searcher: what a user types goes to Find, which reads it as
// references or looks for it in every verse, and shows the result in the tree.
#include "bible/VXBible.h"
#include "bible/VXBibleBook.h"
#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"
#include "songs/SongSearch.h"

int32_t CVXBible::Find(IString* text, int flags, IUnknown** result)
{
    m_SearchMode = 1;
    CREFString typed(static_cast<IUnknown*>(text));
    bool list = false;
    for (int32_t i = 0; i < typed.m_Length; ++i)
        list = list || typed.m_Buffer[i] == L'\r';
    TextTrimRight(typed);

    if (typed.IsEmpty() && (flags & BIBLEFIND_REFINE)) {
        // The end of searching: the tree shows the books again.
        if (auto tree = m_UserInterface.As<IUITree>()) {
            tree->Reset();
            tree->put_Root(static_cast<ISuperCollection*>(this));
        }
        if (m_SearchResults)
            m_SearchResults->Clear();
        m_SearchMode = 0;
        return S_OK;
    }
    if (!(flags & BIBLEFIND_CONTENTS))
        return FindReference(typed, list, flags, result);
    return FindContents(typed, flags, result);
}

int32_t CVXBible::FindContents(CREFString text, int flags, IUnknown** result)
{
    if (flags & BIBLEFIND_REFINE) {
        SmartPtr<ISuperCollection> previous = m_SearchResults;
        m_SearchResults.Attach(BASEObject::CreateNamedCollection());
        if (m_SearchResults && previous)
            SearchSearch(previous, text, m_SearchResults);
    } else if (m_SearchResults) {
        m_SearchResults->Clear();
        auto pattern = SmartPtr<IString>::Adopt(ISCreate(text));
        SearchContents(static_cast<ISuperCollection*>(this), pattern, m_SearchResults);
    }
    if (auto tree = m_UserInterface.As<IUITree>()) {
        tree->Reset();
        tree->SetOption(115, 0);
        tree->put_Root(m_SearchResults.get());
    }
    int hits = 0;
    if (m_SearchResults)
        m_SearchResults->get_Count(&hits);
    if (hits == 0)
        return S_FALSE;
    if (result)
        *result = static_cast<IUnknown*>(m_SearchResults.Copy());

    // Every hit with its header, for whoever shows the passages.
    auto passages = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    for (int i = 0; i < hits; ++i) {
        SmartPtr<IUnknown> item;
        m_SearchResults->get_Item(i, item.Receive());
        auto verse = item.As<IVXTextReference>();
        SmartPtr<IVXBook> book;
        if (!verse || verse->GetBook(book.Receive()) < 0 || !book)
            continue;
        int chapter = -1, number = -1;
        verse->GetPosition(&chapter, &number, nullptr);
        SmartPtr<IString> header, line;
        book->Header(header.Receive(), chapter, number, 1, nullptr);
        passages->Append(CREFString(header.get()));
        passages->Append(REFLiteral(L"\r\n"));
        book->get_Verse(chapter, number, 1, line.Receive());
        passages->Append(CREFString(line.get()));
        passages->Append(REFLiteral(L"\r\n\r\n"));
    }
    Fire_NodeSelect(Primary(), 1, 0, 0, static_cast<IString*>(passages.get()));
    return S_OK;
}

void CVXBible::SearchContents(ISuperCollection* books, IString* text, ISuperCollection* results)
{
    int count = 0;
    books->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        books->get_Item(i, item.Receive());
        auto book = item.As<IVXSearch>();
        SmartPtr<IUnknown> found;
        if (!book || book->Find(text, BIBLEFIND_CONTENTS, found.Receive()) != S_OK)
            continue;
        auto hits = found.As<INamedCollection>();
        int hitCount = 0;
        if (hits)
            hits->get_Count(&hitCount);
        for (int h = 0; h < hitCount; ++h) {
            SmartPtr<IString> name;
            SmartPtr<IUnknown> hit;
            hits->get_ItemName(h, name.Receive());
            hits->get_Item(h, hit.Receive());
            results->Add(name, hit, nullptr, 0);
        }
    }
}

void CVXBible::SearchSearch(ISuperCollection* previous, CREFString text, ISuperCollection* results)
{
    int count = 0;
    previous->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        previous->get_Item(i, item.Receive());
        auto line = item.As<IString>();
        if (!line || !ContainsNoCase(CREFString(static_cast<IUnknown*>(line.get())), text))
            continue;
        SmartPtr<IString> name;
        previous->get_ItemName(i, name.Receive());
        results->Add(name, item, nullptr, 0);
    }
}
