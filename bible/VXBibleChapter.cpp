#include "bible/VXBibleChapter.h"

namespace {

// The book's collection holds each chapter once.
constexpr int32_t kBookHolds = 1;

// The most derived class of a chapter: its count decides whether the book is held.
class CVXBibleChapterInstance final : public CVXBibleChapter {
public:
    CVXBibleChapterInstance(IVXBook* book, wchar_t* text, int32_t length)
    {
        m_Book = book;
        m_Text = text;
        m_TextLength = length;
    }

    int32_t QueryInterface(const IID& iid, void** object) override
    {
        return QueryThroughTable<CVXBibleChapter>(this, iid, object);
    }

    int32_t AddRef() override
    {
        int32_t count = m_RefCount.fetch_add(1) + 1;
        Repin(count);
        return count;
    }

    int32_t Release() override
    {
        int32_t count = m_RefCount.fetch_sub(1) - 1;
        if (count == 0) {
            IVXBook* pinned = m_Pinned ? m_Book : nullptr;
            FinalRelease();
            delete this;
            if (pinned)
                pinned->Release();
            return 0;
        }
        Repin(count);
        return count;
    }

private:
    // Letting the book go may end it, and this chapter with it: nothing follows.
    void Repin(int32_t count)
    {
        bool wanted = m_Book && count > kBookHolds;
        if (wanted == m_Pinned)
            return;
        m_Pinned = wanted;
        if (wanted)
            m_Book->AddRef();
        else
            m_Book->Release();
    }
};

} // namespace

CVXBibleChapter* CVXBibleChapter::Create(IVXBook* book, wchar_t* text, int32_t length)
{
    return new CVXBibleChapterInstance(book, text, length);
}

int32_t CVXBibleChapter::VerifyInterface(IUnknown* item, IVXTextReference** verified)
{
    if (!item)
        return E_FAIL;
    return item->QueryInterface(IID_IVXTextReference, reinterpret_cast<void**>(verified)) < 0 ? E_FAIL : S_OK;
}

int32_t CVXBibleChapter::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Text;
    if (length)
        *length = m_TextLength;
    return S_OK;
}
