#include "framework/Collections/LineString.h"

ICreatableString* CLineString::New(const SharedText& text, tagREFString line)
{
    ICreatableString* string = nullptr;
    IID iid = ICreatableString::Iid();
    if (CObject<CLineString>::_CreateInstance(nullptr, &iid, reinterpret_cast<void**>(&string)) < 0)
        return nullptr;
    auto* self = static_cast<CLineString*>(string);
    self->m_Shared = text;
    self->m_View = line.m_Length > 0 ? line : tagREFString{0, nullptr};
    return string;
}

int32_t CLineString::GetBuffer(wchar_t** text, int* length)
{
    // An empty line still gives a buffer that holds a terminator, as a string does.
    static wchar_t empty[1] = {0};
    if (text)
        *text = m_Owned ? m_Own.data() : m_View.m_Length > 0 ? m_View.m_Buffer : empty;
    if (length)
        *length = m_Owned ? int(m_Own.size()) : int(m_View.m_Length);
    return S_OK;
}

void CLineString::Own()
{
    if (m_Owned)
        return;
    if (m_View.m_Length > 0)
        m_Own.assign(m_View.m_Buffer, size_t(m_View.m_Length));
    m_Owned = true;
    m_Shared.reset();
    m_View = {0, nullptr};
}

int32_t CLineString::Clone(tagREFString text)
{
    // The view may point into this very line: copy before replacing.
    std::wstring copy;
    if (text.m_Length > 0 && text.m_Buffer)
        copy.assign(text.m_Buffer, size_t(text.m_Length));
    m_Own.swap(copy);
    m_Owned = true;
    m_Shared.reset();
    m_View = {0, nullptr};
    return S_OK;
}

int32_t CLineString::Append(tagREFString text)
{
    std::wstring copy;
    if (text.m_Length > 0 && text.m_Buffer)
        copy.assign(text.m_Buffer, size_t(text.m_Length));
    Own();
    m_Own += copy;
    return S_OK;
}
