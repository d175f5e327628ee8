// The one pass over a book's text that indexes its chapters and verses in place.
#include <cwctype>

#include "bible/BibleReference.h"
#include "bible/VXBibleBook.h"
#include "bible/VXBibleChapter.h"
#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"
#include "songs/SongSearch.h"

namespace {

// A heading begins with the book's name in the text, ignoring case. A line shorter
// than the name that repeats its beginning counts too: "1" opens a chapter of "1 Samuel".
bool IsHeading(const CREFString& name, const CREFString& line) { return BibleStartsAlike(name, line); }

SmartPtr<IVXTextReference> NewReference(IVXBook* book, const CREFString& line, int chapter, int verse, int count,
                                        int holds)
{
    auto reference = SmartPtr<IVXTextReference>::Adopt(VXCoreObject::CreateVXTextReference());
    if (!reference)
        return reference;
    reference->SetReference(book, line.m_Buffer, line.m_Length, chapter, verse, count);
    if (auto pins = reference.As<IVXTextReferenceHolds>())
        pins->put_IndexHolds(holds);
    return reference;
}

void AddVerse(IVXBook* book, CVXBibleChapter* chapter, CREFString line, int chapterNumber)
{
    int verseNumber = _IS2Integer(line, 10);
    auto reference = NewReference(book, line, chapterNumber - 1, verseNumber - 1, 1, CVXBibleBook::kVerseHolds);
    if (!reference)
        return;
    // The line's length ends a range of verses that stops at this one.
    auto length = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    if (length)
        length->put_Integer(line.m_Length);
    chapter->Add(reference.As<IString>(), reference, length, 0);
}

} // namespace

CVXBibleChapter* CVXBibleBook::AddChapter(CREFString line, int32_t length)
{
    auto reference = NewReference(this, line, -1, -1, -1, CVXBibleBook::kHeadingHolds);
    if (!reference)
        return nullptr;
    auto chapter = SmartPtr<ISuperCollection>::Adopt(CVXBibleChapter::Create(this, line.m_Buffer, length));
    if (Add(reference.As<IString>(), chapter, nullptr, 0) < 0)
        return nullptr;
    // The book's collection holds the chapter from here on.
    return static_cast<CVXBibleChapter*>(static_cast<CVXBibleChapter::Collection*>(chapter.get()));
}

void CVXBibleChapter::SetPendingVerses(const wchar_t* begin, const wchar_t* end, int chapterNumber)
{
    m_PendingBegin = begin;
    m_PendingEnd = end;
    m_PendingChapter = chapterNumber;
}

// The lines of the stretch that begin with a digit, each a verse, in their order.
void CVXBibleChapter::CutPendingVerses()
{
    Lock();
    if (m_PendingBegin && m_Book.m_Owner) {
        CREFString rest(m_PendingBegin, int32_t(m_PendingEnd - m_PendingBegin));
        // Cleared first: adding a verse comes back through these roads.
        m_PendingBegin = m_PendingEnd = nullptr;
        CREFString line;
        while (TextNextLine(rest, &line)) {
            TextTrimLeft(line);
            if (!line.IsEmpty() && std::iswdigit(wint_t(line.m_Buffer[0])))
                AddVerse(m_Book.m_Owner, this, line, m_PendingChapter);
        }
    }
    Unlock();
}

bool CVXBibleChapter::PendingCannotHold(const CREFString& text)
{
    // The stretch is searched as one text. The search starts afresh at each line when
    // the text doesn't begin with what a line's start drops (a blank, a control, a
    // stray mark), so the stretch lacks the text only where every line does. (A text
    // with a line break is in no line, and the stretch may hold it: the verses are cut.)
    if (text.m_Length < 1 || !text.m_Buffer)
        return false;
    CREFString start = text;
    TextTrimLeft(start);
    if (start.m_Buffer != text.m_Buffer)
        return false;
    Lock();
    bool lacks = m_PendingBegin &&
                 !ContainsNoCase(CREFString(m_PendingBegin, int32_t(m_PendingEnd - m_PendingBegin)), text);
    Unlock();
    return lacks;
}

// A book of one chapter keeps its verses in its own collection, without their lengths.
void CVXBibleBook::MakeFlat()
{
    SmartPtr<IUnknown> item;
    get_Item(0, item.Receive());
    auto verses = item.As<ISuperCollection>();
    m_HasChapters = 0;
    Clear();
    if (!verses)
        return;
    int count = 0;
    verses->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> verse;
        verses->get_ItemName(i, name.Receive());
        verses->get_Item(i, verse.Receive());
        if (verse)
            Add(name, verse, nullptr, 0);
    }
}

void CVXBibleBook::SetBufferPtrs()
{
    if (!m_Text)
        return;
    CREFString name(m_NameInText.get());
    CREFString rest(m_Text, m_TextLength);
    TextTrimLeft(rest);
    CVXBibleChapter* open = nullptr;
    const wchar_t* verses = nullptr;
    int chapterNumber = 0;
    CREFString line;
    while (TextNextLine(rest, &line)) {
        TextTrimLeft(line);
        if (line.IsEmpty() || !IsHeading(name, line))
            continue;
        int32_t n = name.m_Length < line.m_Length ? name.m_Length : line.m_Length;
        CREFString number(line.m_Buffer + n, line.m_Length - n);
        TextTrimLeft(number);
        if (open) {
            open->m_TextLength = int32_t(line.m_Buffer - open->m_Text);
            open->SetPendingVerses(verses, line.m_Buffer, chapterNumber);
        }
        chapterNumber = _IS2Integer(number, 10);
        // Up to the end of the text less one: the last chapter keeps that length.
        int32_t length = int32_t(m_Text + m_TextLength - 1 - line.m_Buffer);
        if (CVXBibleChapter* chapter = AddChapter(line, length)) {
            open = chapter;
        } else if (open) {
            // A chapter that couldn't be made leaves its verses to the one before, after
            // that one's own.
            open->CutPendingVerses();
        }
        // The open chapter's verses are the lines after the heading, up to the next one.
        verses = rest.m_Buffer;
    }
    if (open)
        open->SetPendingVerses(verses, m_Text + m_TextLength, chapterNumber);
    m_HasChapters = 1;
    int count = 0;
    get_Count(&count);
    if (count == 1)
        MakeFlat();
}
