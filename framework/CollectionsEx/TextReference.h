// "VXTextReference": names a stretch of a book's text, with its chapter, first verse
// and number of verses. The text belongs to the book, so the reference keeps the book
// alive while anyone but the book's own index holds it: no reference outlives the text
// it views, and the book's index of references is no cycle.
#pragma once
#include <atomic>

#include "runtime/VXCore.h"

class CTextReference final : public IVXTextReference,
                             public IString,
                             public IReplicableObject,
                             public IVXTextReferenceHolds {
public:
    static int32_t _CreateInstance(void* outer, IID* iid, void** object);

    int32_t QueryInterface(const IID& iid, void** object) override;
    int32_t AddRef() override;
    int32_t Release() override;

    // IVXTextReference and IString: the stretch; a negative length reads as empty.
    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t GetPosition(int* chapter, int* verse, int* count) override;
    int32_t GetBook(IVXBook** book) override;
    int32_t SetReference(IVXBook* book, wchar_t* text, int length, int chapter, int verse, int count) override;

    // A new reference to the same stretch, held by nobody's index.
    int32_t Replicate(IUnknown** copy) override;

    int32_t put_IndexHolds(int holds) override;

private:
    CTextReference() = default;
    ~CTextReference() = default;

    // Takes or drops the book's reference as the count stands against the index's holds.
    // The book may die inside, and this object with it: nothing may touch a member after.
    void Repin(int32_t count);

    std::atomic<int32_t> m_RefCount{1};
    int32_t m_IndexHolds = 0;
    bool m_Pinned = false;
    IVXBook* m_Book = nullptr;
    wchar_t* m_Text = nullptr;
    int32_t m_Length = 0;
    int32_t m_Chapter = -1;
    int32_t m_Verse = -1;
    int32_t m_Count = -1;
};
