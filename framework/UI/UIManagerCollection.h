// "UIManagerCollection": the frame around the application's trees, which shows a
// caption for the current selection. The caption reads back through IString.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CUIManagerCollection : public CObject<CUIManagerCollection>,
                             public IObjectInfoImpl<CUIManagerCollection>,
                             public IUIManagerCollection,
                             public IString {
public:
    static constexpr wchar_t kObjectName[] = L"UIManagerCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUIManagerCollection>, Entry<IString>>;

    // A null text empties the caption.
    int32_t SetCaption(IString* text, int a, int b) override;

    // IString: the caption.
    int32_t GetBuffer(wchar_t** text, int* length) override;

private:
    std::wstring m_Caption;
};
