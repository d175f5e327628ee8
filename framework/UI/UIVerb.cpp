#include "framework/UI/UIVerb.h"

SmartPtr<IUIVerb> CUIVerb::Create(tagREFString name, int code)
{
    IID iid = IID_IUIVerb;
    SmartPtr<IUIVerb> verb;
    if (_CreateInstance(nullptr, &iid, verb.ReceiveVoid()) < 0)
        return nullptr;
    auto* self = static_cast<CUIVerb*>(verb.get());
    if (name.m_Length > 0 && name.m_Buffer)
        self->m_Name.assign(name.m_Buffer, size_t(name.m_Length));
    self->m_Code = code;
    return verb;
}

int32_t CUIVerb::Control(int code, int value)
{
    if (code != UIVERB_DISABLED)
        return E_INVALIDARG;
    m_Disabled = value != 0;
    return S_OK;
}

int32_t CUIVerb::Inquire(int code, int* value)
{
    if (!value)
        return E_POINTER;
    if (code == UIVERB_DISABLED)
        *value = m_Disabled;
    else if (code == UIVERB_CODE)
        *value = m_Code;
    else
        return E_INVALIDARG;
    return S_OK;
}

int32_t CUIVerb::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Name.data();
    if (length)
        *length = int(m_Name.size());
    return S_OK;
}

int32_t CUIVerbCollection::get_Count(int* count)
{
    if (!count)
        return E_POINTER;
    *count = int(m_Verbs.size());
    return S_OK;
}

int32_t CUIVerbCollection::get_Item(int index, IUnknown** verb)
{
    if (!verb)
        return E_POINTER;
    if (index < 0 || size_t(index) >= m_Verbs.size())
        return E_INVALIDARG;
    *verb = m_Verbs[size_t(index)].Copy();
    return S_OK;
}

int32_t CUIVerbCollection::get_Index(int code)
{
    for (size_t i = 0; i < m_Verbs.size(); ++i) {
        int own = 0;
        if (QueryAs<IUIPropInterrogate>(m_Verbs[i].get())->Inquire(UIVERB_CODE, &own) >= 0 && own == code)
            return int(i);
    }
    return E_FAIL;
}

int32_t CUIVerbCollection::Add(int /*a*/, IString* name, int /*b*/, int /*c*/, int code, int /*d*/)
{
    SmartPtr<IUIVerb> verb = CUIVerb::Create(CREFString(name), code);
    if (!verb)
        return E_FAIL;
    m_Verbs.push_back(verb);
    return S_OK;
}
