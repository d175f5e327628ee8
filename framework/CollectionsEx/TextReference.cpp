#include "framework/CollectionsEx/TextReference.h"

int32_t CTextReference::_CreateInstance(void* /*outer*/, IID* iid, void** object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (!iid)
        return E_POINTER;
    auto* reference = new CTextReference();
    int32_t result = reference->QueryInterface(*iid, object);
    reference->Release();
    return result;
}

int32_t CTextReference::QueryInterface(const IID& iid, void** object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IVXTextReference)
        *object = static_cast<IVXTextReference*>(this);
    else if (iid == IID_IString)
        *object = static_cast<IString*>(this);
    else if (iid == IID_IReplicableObject)
        *object = static_cast<IReplicableObject*>(this);
    else if (iid == IID_IVXTextReferenceHolds)
        *object = static_cast<IVXTextReferenceHolds*>(this);
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

int32_t CTextReference::AddRef()
{
    int32_t count = m_RefCount.fetch_add(1) + 1;
    Repin(count);
    return count;
}

int32_t CTextReference::Release()
{
    int32_t count = m_RefCount.fetch_sub(1) - 1;
    if (count == 0) {
        IVXBook* pinned = m_Pinned ? m_Book : nullptr;
        delete this;
        if (pinned)
            pinned->Release();
        return 0;
    }
    Repin(count);
    return count;
}

void CTextReference::Repin(int32_t count)
{
    bool wanted = m_Book && count > m_IndexHolds;
    if (wanted == m_Pinned)
        return;
    m_Pinned = wanted;
    if (wanted)
        m_Book->AddRef();
    else
        m_Book->Release();
}

int32_t CTextReference::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Text;
    if (length)
        *length = m_Length > 0 ? m_Length : 0;
    return S_OK;
}

int32_t CTextReference::GetPosition(int* chapter, int* verse, int* count)
{
    if (chapter)
        *chapter = m_Chapter;
    if (verse)
        *verse = m_Verse;
    if (count)
        *count = m_Count;
    return S_OK;
}

int32_t CTextReference::GetBook(IVXBook** book)
{
    if (!book)
        return E_POINTER;
    *book = m_Book;
    if (!m_Book)
        return E_FAIL;
    m_Book->AddRef();
    return S_OK;
}

int32_t CTextReference::SetReference(IVXBook* book, wchar_t* text, int length, int chapter, int verse, int count)
{
    if (text)
        m_Text = text;
    if (length != -1)
        m_Length = length;
    if (chapter != -1)
        m_Chapter = chapter;
    if (verse != -1)
        m_Verse = verse;
    if (count != -1)
        m_Count = count;
    if (book && book != m_Book) {
        // The new book is held before the old one may go; the old one goes last.
        IVXBook* old = m_Pinned ? m_Book : nullptr;
        m_Pinned = false;
        m_Book = book;
        Repin(m_RefCount.load());
        if (old)
            old->Release();
    }
    return S_OK;
}

int32_t CTextReference::Replicate(IUnknown** copy)
{
    if (!copy)
        return E_POINTER;
    auto* replica = new CTextReference();
    replica->m_Text = m_Text;
    replica->m_Length = m_Length;
    replica->m_Chapter = m_Chapter;
    replica->m_Verse = m_Verse;
    replica->m_Count = m_Count;
    replica->SetReference(m_Book, nullptr, -1, -1, -1, -1);
    *copy = static_cast<IVXTextReference*>(replica);
    return S_OK;
}

int32_t CTextReference::put_IndexHolds(int holds)
{
    m_IndexHolds = holds > 0 ? holds : 0;
    Repin(m_RefCount.load());
    return S_OK;
}
