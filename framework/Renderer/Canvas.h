// The surface that the renderer draws on. The application hands the module an
// opaque UbuntuCanvas*, which the module only passes on; on our side of the fence
// it is one of these. A host or a test makes the canvas, and a canvas that puts
// pixels in a picture is one more subclass.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "runtime/VXCore.h"

// What a text is drawn with, as the renderer read it from the style.
struct CanvasStyle {
    std::wstring m_Face;
    int32_t m_Height = 0;
    int32_t m_Boldness = 0;
    int32_t m_Italics = 0;
    int32_t m_Underline = 0;
    int32_t m_Outlined = 0;
    int32_t m_OutlineWidth = 0;
    unsigned int m_Color = 0;
    unsigned int m_ShadowColor = 0;
    unsigned int m_OutlineColor = 0;
    short m_AlignX = 0;
    short m_AlignY = 0;
    short m_ShadowX = 0;
    short m_ShadowY = 0;
    double m_Angle = 0;
};

// A picture's pixels, row by row from the top, each 0xAABBGGRR: red in the low
// byte, as colours are everywhere else, and alpha on top.
struct CanvasPicture {
    int32_t m_Width = 0;
    int32_t m_Height = 0;
    std::vector<uint32_t> m_Pixels;
};

class VXCanvas {
public:
    virtual ~VXCanvas() = default;
    // One line of text in its rectangle.
    virtual void DrawText(const std::wstring& text, const CANVASRect& rect, const CanvasStyle& style) = 0;
    // A rectangle filled with a colour (0x00BBGGRR).
    virtual void FillRect(const CANVASRect& rect, unsigned int color) = 0;
    // A picture fitted into the rectangle. A canvas that shows no pictures (a text
    // terminal, say) leaves it out, so this one is not required of every canvas.
    virtual void DrawPicture(const CANVASRect& rect, const CanvasPicture& picture) {}

    // The handle that travels through the module.
    UbuntuCanvas* Handle() { return reinterpret_cast<UbuntuCanvas*>(this); }
    static VXCanvas* From(UbuntuCanvas* canvas) { return reinterpret_cast<VXCanvas*>(canvas); }
};
