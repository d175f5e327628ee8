// "UIPropertyPageCollection": what a property frame shows, before the frame is
// made. It holds the names of the pages to show, the objects they edit (one, put
// there by put_Object, or none), the frame's flags, and the values a page asks
// the frame for, such as the height of a panel's button strip. Pages and their
// owners subscribe through IEventSource to hear when the user confirms.
#pragma once
#include "runtime/EventSource.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

class CUIPropertyPageCollection : public CObject<CUIPropertyPageCollection>,
                                  public IObjectInfoImpl<CUIPropertyPageCollection>,
                                  public IUIPropertyPageCollection,
                                  public IUIPropInterrogate,
                                  public IEventSourceImpl<CUIPropertyPageCollection, &IID_IUnknown> {
public:
    static constexpr wchar_t kObjectName[] = L"UIPropertyPageCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUIPropertyPageCollection>, Entry<IUIPropInterrogate>,
                              Entry<IEventSource>>;

    void FinalRelease() override;

    // IUIPropertyPageCollection
    // The collection of page names (null: none) and how the frame reads it.
    int32_t put_Pages(IUnknown* pageNames, int mode) override;
    // The object whose pages to show, in place of any before; null edits nothing.
    int32_t put_Object(IUnknown* object, int flags) override;
    // A collection of the objects being edited, the first at 0; empty when none.
    int32_t get_Objects(ISimpleCollection** out) override;
    int32_t SetFlags(int flags) override;
    // PAGES_STRIPHEIGHT gives the strip's height in *value; *object, if asked for,
    // is null, as no page value is an object. Other codes: E_INVALIDARG.
    int32_t get_PageValue(int code, IUnknown** object, int* value) override;

    // IUIPropInterrogate: the PAGES_ codes are read; PAGES_STRIPHEIGHT is also set.
    int32_t Inquire(int code, int* value) override;
    int32_t Control(int code, int value) override;
    int32_t ParameterRange(int id, int* low, int* high) override { return E_NOTIMPL; }
    int32_t ParameterEnumeration(int id, IUnknown** enumeration) override { return E_NOTIMPL; }

private:
    SmartPtr<IUnknown> m_Pages;
    SmartPtr<IUnknown> m_Object;
    int m_Flags = 0;
    int m_ObjectFlags = 0;
    int m_PagesMode = 0;
    int m_StripHeight = 22;
};
