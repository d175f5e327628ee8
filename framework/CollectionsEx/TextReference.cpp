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
    m_Book.Update(count);
    return count;
}

int32_t CTextReference::Release()
{
    return m_Book.Released(m_RefCount.fetch_sub(1) - 1, [this] { delete this; });
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
    *book = m_Book.m_Owner;
    if (!*book)
        return E_FAIL;
    (*book)->AddRef();
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
    if (book && book != m_Book.m_Owner) {
        // The new book is held before the old one may go; the old one goes last.
        IVXBook* old = m_Book.Take();
        m_Book.m_Owner = book;
        m_Book.Update(m_RefCount.load());
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
    replica->SetReference(m_Book.m_Owner, nullptr, -1, -1, -1, -1);
    *copy = static_cast<IVXTextReference*>(replica);
    return S_OK;
}

int32_t CTextReference::put_IndexHolds(int holds)
{
    m_Book.m_OwnerHolds = holds > 0 ? holds : 0;
    m_Book.Update(m_RefCount.load());
    return S_OK;
}
