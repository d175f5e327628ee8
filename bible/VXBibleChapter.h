// One chapter of a Bible book: the list of its verses, and a string whose text is the
// chapter's stretch of the book's buffer, heading and all. Only a book's scan makes one.
#pragma once
#include "persistence/PendingCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/OwnerHold.h"
#include "runtime/VXCore.h"

class CVXBibleChapter : public CObject<CVXBibleChapter>,
                        public IObjectInfoImpl<CVXBibleChapter>,
                        public IPendingCollectionImpl<CVXBibleChapter, IVXTextReference>,
                        public IString {
public:
    static constexpr wchar_t kObjectName[] = L"VXBibleChapter";
    using Collection = IPendingCollectionImpl<CVXBibleChapter, IVXTextReference>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>, Entry<IString>>;

    // A new chapter of book with one reference for the caller.
    static CVXBibleChapter* Create(IVXBook* book, wchar_t* text, int32_t length);

    int32_t Clear() override { return CollectionClear(); }

    // A chapter's verses are cut from its stretch of the book's text the first time
    // anything asks for them: a translation reads every book when it opens, and most of
    // their verses are never looked at.
    void SetPendingVerses(const wchar_t* begin, const wchar_t* end, int chapterNumber);
    void CutPendingVerses();
    void DropPendingVerses() { m_PendingBegin = m_PendingEnd = nullptr; }
    // True when the verses are still uncut and none of their lines can hold the text, as
    // a search looks for it: the search needs no verse of this chapter then.
    bool PendingCannotHold(const CREFString& text);

    // Verses only: anything without IVXTextReference is refused.
    int32_t VerifyInterface(IUnknown* item, IVXTextReference** verified) override;
    int32_t GetBuffer(wchar_t** text, int* length) override;

    // Not owned: a stretch of the book's text.
    wchar_t* m_Text = nullptr;
    int32_t m_TextLength = 0;

protected:
    // The stretch of verse lines not yet cut, and the chapter's number in its heading.
    const wchar_t* m_PendingBegin = nullptr;
    const wchar_t* m_PendingEnd = nullptr;
    int m_PendingChapter = 0;

    // The book, held only while someone besides the book's own collection holds the
    // chapter: its text must outlive the chapter's view of it, without a cycle.
    OwnerHold<IVXBook> m_Book;
};
