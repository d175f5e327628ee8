#include "framework/Collections/CreatableString.h"

ICreatableString* CCreatableString::New(tagREFString text)
{
    ICreatableString* string = nullptr;
    IID iid = ICreatableString::Iid();
    if (CObject<CCreatableString>::_CreateInstance(nullptr, &iid, reinterpret_cast<void**>(&string)) < 0)
        return nullptr;
    string->Clone(text);
    return string;
}

int32_t CCreatableString::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Text.data();
    if (length)
        *length = int(m_Text.size());
    return S_OK;
}

int32_t CCreatableString::Clone(tagREFString text)
{
    // The view may point into this very string: copy before replacing.
    std::wstring copy;
    if (text.m_Length > 0 && text.m_Buffer)
        copy.assign(text.m_Buffer, size_t(text.m_Length));
    m_Text.swap(copy);
    return S_OK;
}

int32_t CCreatableString::Append(tagREFString text)
{
    if (text.m_Length > 0 && text.m_Buffer) {
        std::wstring copy(text.m_Buffer, size_t(text.m_Length));
        m_Text += copy;
    }
    return S_OK;
}
