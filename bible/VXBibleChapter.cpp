#include "bible/VXBibleChapter.h"

namespace {

// The book's collection holds each chapter once.
constexpr int32_t kBookHolds = 1;

// The most derived class of a chapter: its count decides whether the book is held.
class CVXBibleChapterInstance final : public CVXBibleChapter {
public:
    CVXBibleChapterInstance(IVXBook* book, wchar_t* text, int32_t length)
    {
        m_Book.m_Owner = book;
        m_Book.m_OwnerHolds = kBookHolds;
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
        m_Book.Update(count);
        return count;
    }

    int32_t Release() override
    {
        return m_Book.Released(m_RefCount.fetch_sub(1) - 1, [this] {
            FinalRelease();
            delete this;
        });
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
