// One chapter of a Bible book: the list of its verses, and a string whose text is the
// chapter's stretch of the book's buffer, heading and all. Only a book's scan makes one.
#pragma once
#include "persistence/NamedCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/OwnerHold.h"
#include "runtime/VXCore.h"

class CVXBibleChapter : public CObject<CVXBibleChapter>,
                        public IObjectInfoImpl<CVXBibleChapter>,
                        public INamedCollectionImpl<CVXBibleChapter, ISuperCollection, IVXTextReference>,
                        public IString {
public:
    static constexpr wchar_t kObjectName[] = L"VXBibleChapter";
    using Collection = INamedCollectionImpl<CVXBibleChapter, ISuperCollection, IVXTextReference>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>, Entry<IString>>;

    // A new chapter of book with one reference for the caller.
    static CVXBibleChapter* Create(IVXBook* book, wchar_t* text, int32_t length);

    int32_t Clear() override { return CollectionClear(); }

    // A chapter's verses are cut from its stretch of the book's text the first time
    // anything asks for them: a translation reads every book when it opens, and most of
    // their verses are never looked at. Every road to the verse list cuts them first.
    void SetPendingVerses(const wchar_t* begin, const wchar_t* end, int chapterNumber);
    void CutPendingVerses();
    // True when the verses are still uncut and none of their lines can hold the text, as
    // a search looks for it: the search needs no verse of this chapter then.
    bool PendingCannotHold(const CREFString& text);

    int32_t get_Count(int* count) override { return CutPendingVerses(), Collection::get_Count(count); }
    int32_t get_Item(int index, IUnknown** item) override { return CutPendingVerses(), Collection::get_Item(index, item); }
    int32_t get_Index(IUnknown* key, int* index) override { return CutPendingVerses(), Collection::get_Index(key, index); }
    int32_t get_ItemName(int index, IString** name) override
    {
        return CutPendingVerses(), Collection::get_ItemName(index, name);
    }
    int32_t Rename(int index, IString* name) override { return CutPendingVerses(), Collection::Rename(index, name); }
    int32_t get_ItemAttached(int index, IUnknown** attached) override
    {
        return CutPendingVerses(), Collection::get_ItemAttached(index, attached);
    }
    int32_t put_ItemAttached(int index, IUnknown* attached) override
    {
        return CutPendingVerses(), Collection::put_ItemAttached(index, attached);
    }
    int32_t get_ItemFlags(int index, int* flags) override
    {
        return CutPendingVerses(), Collection::get_ItemFlags(index, flags);
    }
    int32_t put_ItemFlags(int index, int flags) override
    {
        return CutPendingVerses(), Collection::put_ItemFlags(index, flags);
    }
    int32_t put_Item(int index, IUnknown* item) override { return CutPendingVerses(), Collection::put_Item(index, item); }
    int32_t Add(IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        return CutPendingVerses(), Collection::Add(name, item, attached, flags);
    }
    int32_t Insert(int index, IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        return CutPendingVerses(), Collection::Insert(index, name, item, attached, flags);
    }
    int32_t Remove(int index) override { return CutPendingVerses(), Collection::Remove(index); }
    int32_t Query(const IID& iid, int index, short attached, int* found) override
    {
        return CutPendingVerses(), Collection::Query(iid, index, attached, found);
    }
    int32_t Sort(int flags, void* compare) override { return CutPendingVerses(), Collection::Sort(flags, compare); }
    int32_t get_ItemIndex(IUnknown* item, int* index) override
    {
        return CutPendingVerses(), Collection::get_ItemIndex(item, index);
    }
    int32_t get_IndexAttached(IUnknown* attached, int* index) override
    {
        return CutPendingVerses(), Collection::get_IndexAttached(attached, index);
    }
    // Emptied, the chapter has nothing left to cut.
    int32_t CollectionClear() override
    {
        Lock();
        m_PendingBegin = m_PendingEnd = nullptr;
        Unlock();
        return Collection::CollectionClear();
    }
    int32_t Save(IDataStream* stream, int flags) override { return CutPendingVerses(), Collection::Save(stream, flags); }
    int32_t Load(IDataStream* stream, int flags) override { return CutPendingVerses(), Collection::Load(stream, flags); }
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
