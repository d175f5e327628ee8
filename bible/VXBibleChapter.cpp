#include "bible/VXBibleChapter.h"

CVXBibleChapter* CVXBibleChapter::Create(wchar_t* text, int32_t length)
{
    auto* chapter = new CObjectInstance<CVXBibleChapter>();
    chapter->m_Text = text;
    chapter->m_TextLength = length;
    return chapter;
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
