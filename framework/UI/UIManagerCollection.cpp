#include "framework/UI/UIManagerCollection.h"

int32_t CUIManagerCollection::SetCaption(IString* text, int /*a*/, int /*b*/)
{
    CREFString view(text);
    m_Caption.assign(view.IsEmpty() ? L"" : view.m_Buffer, size_t(view.IsEmpty() ? 0 : view.m_Length));
    return S_OK;
}

int32_t CUIManagerCollection::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Caption.data();
    if (length)
        *length = int(m_Caption.size());
    return S_OK;
}
