// The content search over one book: every verse line that holds the text, each
// under a label with the book, the chapter and the whole line.
#include "bible/VXBibleBook.h"
#include "bible/VXBibleChapter.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"
#include "songs/SongSearch.h"

int32_t CVXBibleBook::SearchString(IString* text, IString* pattern)
{
    if (!pattern || !text)
        return 0;
    return ContainsNoCase(CREFString(static_cast<IUnknown*>(text)), CREFString(static_cast<IUnknown*>(pattern)))
               ? 1
               : 0;
}

void CVXBibleBook::AddHit(IVXTextReference* verse, const wchar_t* between)
{
    auto label = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    label->Append(CREFString(m_UserName.get()));
    label->Append(CREFString(between));
    label->Append(CREFString(static_cast<IUnknown*>(verse)));
    if (m_SearchResults->Add(label, verse, nullptr, 0) < 0)
        return;
    // A hit the book keeps for itself must not keep the book: that would be a cycle.
    if (auto holds = QueryAs<IVXTextReferenceHolds>(verse))
        holds->put_IndexHolds(kHitHolds);
}

void CVXBibleBook::ClearHits()
{
    if (!m_SearchResults)
        return;
    int count = 0;
    m_SearchResults->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        m_SearchResults->get_Item(i, item.Receive());
        if (auto holds = item.As<IVXTextReferenceHolds>())
            holds->put_IndexHolds(kVerseHolds);
    }
    m_SearchResults->Clear();
}

int32_t CVXBibleBook::Find(IString* text, int, IUnknown** result)
{
    if (m_HasFile == 0)
        Load();
    if (!m_SearchResults)
        return S_FALSE;
    ClearHits();
    const CREFString pattern(static_cast<IUnknown*>(text));
    int count = 0;
    get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        get_Item(i, item.Receive());
        if (auto verse = item.As<IVXTextReference>()) {
            // A verse of a flat book: its line begins with its number already.
            if (ContainsNoCase(CREFString(item.get()), pattern))
                AddHit(verse, L"");
            continue;
        }
        auto chapter = item.As<ISuperCollection>();
        if (!chapter)
            continue;
        // A chapter whose verses are still uncut text is looked through as that text:
        // most chapters hold no hit and need no verse objects.
        auto* own = dynamic_cast<CVXBibleChapter*>(chapter.get());
        if (own && own->PendingCannotHold(pattern))
            continue;
        int verses = 0;
        chapter->get_Count(&verses);
        for (int v = 0; v < verses; ++v) {
            SmartPtr<IUnknown> line;
            chapter->get_Item(v, line.Receive());
            // The text is looked at first: asking every line for its faces would cost
            // more than the search, and only a line that holds the text needs them.
            if (!ContainsNoCase(CREFString(line.get()), pattern))
                continue;
            auto verse = line.As<IVXTextReference>();
            if (!verse)
                continue;
            wchar_t number[32] = {};
            _swprintf(number, 32, L" %d ", i + 1);
            AddHit(verse, number);
        }
    }
    int hits = 0;
    m_SearchResults->get_Count(&hits);
    if (hits == 0)
        return S_FALSE;
    if (result)
        *result = static_cast<IUnknown*>(m_SearchResults.Copy());
    return S_OK;
}
