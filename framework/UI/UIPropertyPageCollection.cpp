#include "framework/UI/UIPropertyPageCollection.h"

#include "runtime/Factories.h"

void CUIPropertyPageCollection::FinalRelease()
{
    // The edited object may hold this collection in turn (a page of its own).
    m_Object.Clear();
    m_Pages.Clear();
}

int32_t CUIPropertyPageCollection::put_Pages(IUnknown* pageNames, int mode)
{
    m_Pages = SmartPtr<IUnknown>(pageNames);
    m_PagesMode = mode;
    return S_OK;
}

int32_t CUIPropertyPageCollection::put_Object(IUnknown* object, int flags)
{
    m_Object = SmartPtr<IUnknown>(object);
    m_ObjectFlags = flags;
    return S_OK;
}

int32_t CUIPropertyPageCollection::get_Objects(ISimpleCollection** out)
{
    if (!out)
        return E_POINTER;
    // A new list each time: what a page holds is not changed under it by a later put_Object.
    auto list = SmartPtr<ISimpleCollection>::Adopt(BASEObject::CreateSimpleCollection());
    auto creatable = list.As<ICreatableSimpleCollection>();
    if (!creatable)
        return E_FAIL;
    if (m_Object && creatable->Add(m_Object) < 0)
        return E_FAIL;
    *out = list.Detach();
    return S_OK;
}

int32_t CUIPropertyPageCollection::SetFlags(int flags)
{
    m_Flags = flags;
    return S_OK;
}

int32_t CUIPropertyPageCollection::get_PageValue(int code, IUnknown** object, int* value)
{
    if (!value)
        return E_POINTER;
    if (code != PAGES_STRIPHEIGHT)
        return E_INVALIDARG;
    if (object)
        *object = nullptr;
    *value = m_StripHeight;
    return S_OK;
}

int32_t CUIPropertyPageCollection::Inquire(int code, int* value)
{
    if (!value)
        return E_POINTER;
    switch (code) {
    case PAGES_FLAGS: *value = m_Flags; return S_OK;
    case PAGES_OBJECTFLAGS: *value = m_ObjectFlags; return S_OK;
    case PAGES_PAGESMODE: *value = m_PagesMode; return S_OK;
    case PAGES_STRIPHEIGHT: *value = m_StripHeight; return S_OK;
    default: return E_INVALIDARG;
    }
}

int32_t CUIPropertyPageCollection::Control(int code, int value)
{
    if (code != PAGES_STRIPHEIGHT)
        return E_INVALIDARG;
    m_StripHeight = value;
    return S_OK;
}
