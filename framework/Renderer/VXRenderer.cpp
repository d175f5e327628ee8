#include "framework/Renderer/VXRenderer.h"

#include "framework/Renderer/Canvas.h"

namespace {

// The style's attributes as the canvas takes them; a missing style draws with zeros.
CanvasStyle ReadStyle(IVXRenderStyle* style, int* lines, unsigned int* back)
{
    CanvasStyle out;
    *lines = 0;
    *back = 0;
    if (!style)
        return out;
    SmartPtr<IString> face;
    style->get_FontFace(face.Receive());
    CREFString view(face.get());
    if (view.m_Length > 0 && view.m_Buffer)
        out.m_Face.assign(view.m_Buffer, size_t(view.m_Length));
    style->get_FontHeight(&out.m_Height);
    style->get_Boldness(&out.m_Boldness);
    style->get_Italics(&out.m_Italics);
    style->get_Underline(&out.m_Underline);
    style->get_FontOutlined(&out.m_Outlined);
    style->get_OutlineWidth(&out.m_OutlineWidth);
    style->get_Color(&out.m_Color);
    style->get_ShadowColor(&out.m_ShadowColor);
    style->get_OutlineColor(&out.m_OutlineColor);
    style->GetTextLayout(&out.m_AlignX, &out.m_AlignY);
    style->GetShadowOffset(&out.m_ShadowX, &out.m_ShadowY);
    style->get_Angle(&out.m_Angle);
    style->get_NumberDisplayLines(lines);
    style->get_BackColor(back);
    return out;
}

} // namespace

int32_t CVXRenderer::Prepare(int /*mode*/, IVXRenderStyle* style, UbuntuCanvas* canvas)
{
    m_Style = SmartPtr<IVXRenderStyle>(style);
    m_Canvas = canvas;
    return S_OK;
}

int32_t CVXRenderer::DrawText(IString* text, CANVASRect* rect, int /*flags*/)
{
    return DrawString(CREFString(static_cast<IUnknown*>(text)), rect, 0, 0);
}

int32_t CVXRenderer::DrawString(tagREFString text, CANVASRect* rect, int, int)
{
    if (!m_Canvas || !rect)
        return E_FAIL;
    VXCanvas* canvas = VXCanvas::From(m_Canvas);
    int lines = 0;
    unsigned int back = 0;
    CanvasStyle style = ReadStyle(m_Style, &lines, &back);
    if (back != 0)
        canvas->FillRect(*rect, back);
    // Lines end at LF, with or without CR; the style says how many show.
    int32_t lineHeight = style.m_Height > 0 ? style.m_Height : 1;
    int32_t start = 0, row = 0;
    int32_t length = text.m_Buffer ? text.m_Length : 0;
    while (start < length && (lines <= 0 || row < lines)) {
        int32_t end = start;
        while (end < length && text.m_Buffer[end] != L'\n')
            ++end;
        int32_t cut = end > start && text.m_Buffer[end - 1] == L'\r' ? end - 1 : end;
        CANVASRect line{rect->left, rect->top + row * lineHeight, rect->width, lineHeight};
        canvas->DrawText(std::wstring(text.m_Buffer + start, size_t(cut - start)), line, style);
        ++row;
        start = end + 1;
    }
    return S_OK;
}

int32_t CVXRenderer::put_Mode(int mode)
{
    m_Mode = mode;
    return S_OK;
}
