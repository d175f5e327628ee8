// A canvas that keeps every call, so that a test can say what was drawn.
#pragma once
#include <vector>

#include "framework/Renderer/Canvas.h"

class RecordingCanvas : public VXCanvas {
public:
    struct Call {
        bool m_IsText;
        std::wstring m_Text;
        CANVASRect m_Rect;
        CanvasStyle m_Style;
        unsigned int m_Fill;
        // A picture call keeps a copy of the picture; the others leave it empty.
        bool m_IsPicture;
        CanvasPicture m_Picture;
    };

    void DrawText(const std::wstring& text, const CANVASRect& rect, const CanvasStyle& style) override
    {
        m_Calls.push_back(Call{true, text, rect, style, 0, false, CanvasPicture()});
    }
    void FillRect(const CANVASRect& rect, unsigned int color) override
    {
        m_Calls.push_back(Call{false, std::wstring(), rect, CanvasStyle(), color, false, CanvasPicture()});
    }
    void DrawPicture(const CANVASRect& rect, const CanvasPicture& picture) override
    {
        m_Calls.push_back(Call{false, std::wstring(), rect, CanvasStyle(), 0, true, picture});
    }

    std::vector<Call> m_Calls;
};
