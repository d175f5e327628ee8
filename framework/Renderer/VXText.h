// "VXText": a plain text object with a style of its own, what a verse replicates
// into. It draws itself through the renderer.
#pragma once
#include "presentation/RenderStyleImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"

class CVXText : public CObject<CVXText>,
                public IObjectInfoImpl<CVXText>,
                public IVXText,
                public IVXRenderStyleImpl,
                public IRenderableObject {
public:
    static constexpr wchar_t kObjectName[] = L"VXText";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXText>, Entry<IString, IVXText>, Entry<IVXRenderStyle>,
                              Entry<IRenderableObject>>;

    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t put_Text(tagREFString text) override;
    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int flags) override;

private:
    SmartPtr<IString> m_Text;
};
