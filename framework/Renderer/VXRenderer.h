// "VXRenderer": draws text in a style on a canvas. Prepare names the style and the
// canvas; each DrawText or DrawString then lays the text out line by line in the
// rectangle, one canvas call a line, over the style's background if it has one.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CVXRenderer : public CObject<CVXRenderer>, public IObjectInfoImpl<CVXRenderer>, public IVXRenderer {
public:
    static constexpr wchar_t kObjectName[] = L"VXRenderer";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXRenderer>>;

    int32_t Prepare(int mode, IVXRenderStyle* style, UbuntuCanvas* canvas) override;
    int32_t DrawText(IString* text, CANVASRect* rect, int flags) override;
    // E_FAIL without a canvas or a rectangle.
    int32_t DrawString(tagREFString text, CANVASRect* rect, int a, int b) override;
    int32_t put_Mode(int mode) override;

private:
    SmartPtr<IVXRenderStyle> m_Style;
    UbuntuCanvas* m_Canvas = nullptr;
    int32_t m_Mode = 0;
};
