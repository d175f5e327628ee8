#include "framework/Renderer/VXText.h"

#include "framework/Renderer/VXRenderer.h"

int32_t CVXText::GetBuffer(wchar_t** text, int* length)
{
    CREFString view(m_Text.get());
    if (text)
        *text = view.m_Buffer;
    if (length)
        *length = view.m_Length > 0 ? view.m_Length : 0;
    return S_OK;
}

int32_t CVXText::put_Text(tagREFString text)
{
    m_Text.Attach(ISCreate(text));
    return S_OK;
}

int32_t CVXText::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int /*flags*/)
{
    SmartPtr<IVXRenderer> renderer;
    int32_t result = CObject<CVXRenderer>::_CreateInstance(nullptr, const_cast<IID*>(&IID_IVXRenderer),
                                                           renderer.ReceiveVoid());
    if (result < 0)
        return result;
    renderer->Prepare(0, this, canvas);
    return renderer->DrawText(m_Text, rect, 0);
}
