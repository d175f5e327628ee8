// "UIVerbCollection" and its verbs: the entries of an object's own menu, each a
// name and a code, and a disabled state that the menu shows greyed. A verb reads as
// its name through IString; its code and state through IUIPropInterrogate.
#pragma once
#include <string>
#include <vector>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

class CUIVerb : public CObject<CUIVerb>,
                public IObjectInfoImpl<CUIVerb>,
                public IUIVerb,
                public IUIPropInterrogate,
                public IString {
public:
    static constexpr wchar_t kObjectName[] = L"UIVerb";
    using Interfaces =
        QiList<Entry<IObjectInfo>, Entry<IUIVerb>, Entry<IUIPropInterrogate>, Entry<IString>>;

    static SmartPtr<IUIVerb> Create(tagREFString name, int code);

    // IUIVerb and IUIPropInterrogate: UIVERB_DISABLED is set and read, UIVERB_CODE read.
    int32_t Control(int code, int value) override;
    int32_t Inquire(int code, int* value) override;
    int32_t ParameterRange(int id, int* low, int* high) override { return E_NOTIMPL; }
    int32_t ParameterEnumeration(int id, IUnknown** enumeration) override { return E_NOTIMPL; }

    // IString: the name.
    int32_t GetBuffer(wchar_t** text, int* length) override;

private:
    std::wstring m_Name;
    int m_Code = 0;
    int m_Disabled = 0;
};

class CUIVerbCollection : public CObject<CUIVerbCollection>,
                          public IObjectInfoImpl<CUIVerbCollection>,
                          public IUIVerbCollection,
                          public ISimpleCollection {
public:
    static constexpr wchar_t kObjectName[] = L"UIVerbCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUIVerbCollection>, Entry<ISimpleCollection>>;

    void FinalRelease() override { m_Verbs.clear(); }

    // IUIVerbCollection and ISimpleCollection
    int32_t get_Count(int* count) override;
    int32_t get_Item(int index, IUnknown** verb) override;
    // The index of the first verb of that code; negative if there is none.
    int32_t get_Index(int code) override;
    // Appends a verb of that name and code; the other arguments are the menu's.
    int32_t Add(int a, IString* name, int b, int c, int code, int d) override;

private:
    std::vector<SmartPtr<IUIVerb>> m_Verbs;
};
