// How a piece of text is drawn: font, size, weight, colours, shadow, outline,
// alignment, line count and rotation, as one plain block of attributes. Every song
// verse is one of these, and so is the renderer's own style component. The class
// that derives from it supplies QueryInterface, AddRef and Release.
#pragma once
#include <cstdint>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

// The source pointer with all bits set that asks CopyAttributes for the
// application's default style, "UIDefault".
inline IVXRenderStyle* const kRenderStyleUIDefault = reinterpret_cast<IVXRenderStyle*>(~uintptr_t(0));

// The heaviest weight a font takes through put_Boldness.
constexpr int32_t RENDERSTYLE_MAX_BOLDNESS = 1000;

class IVXRenderStyleImpl : public IVXRenderStyle {
public:
    IVXRenderStyleImpl() : m_FontFace(SmartPtr<IString>::Adopt(ISCreate(L"Courier New"))) {}
    IVXRenderStyleImpl(const IVXRenderStyleImpl&) = delete;
    IVXRenderStyleImpl& operator=(const IVXRenderStyleImpl&) = delete;

    int32_t get_FontFace(IString** face) override
    {
        if (!face)
            return E_POINTER;
        *face = m_FontFace.Copy();
        return *face ? S_OK : E_FAIL;
    }
    int32_t put_FontFace(tagREFString face) override
    {
        m_FontFace.Attach(ISCreate(face));
        return S_OK;
    }

    int32_t get_DisplayMode(int* mode) override { return Read(m_DisplayMode, mode); }
    int32_t put_DisplayMode(int mode) override { return Write(m_DisplayMode, mode); }
    int32_t get_NumberDisplayLines(int* lines) override { return Read(m_NumberDisplayLines, lines); }
    int32_t put_NumberDisplayLines(int lines) override { return Write(m_NumberDisplayLines, lines); }
    int32_t get_FontHeight(int* height) override { return Read(m_FontHeight, height); }
    int32_t put_FontHeight(int height) override { return Write(m_FontHeight, height); }
    // The width accessors have always reached the height; callers depend on it, and
    // the real width lives only in saved styles.
    int32_t get_FontWidth(int* width) override { return Read(m_FontHeight, width); }
    int32_t put_FontWidth(int width) override { return Write(m_FontHeight, width); }

    int32_t SetTextLayout(short x, short y) override
    {
        m_TextAlignX = x;
        m_TextAlignY = y;
        return S_OK;
    }
    int32_t GetTextLayout(short* x, short* y) override
    {
        Read(m_TextAlignX, x);
        return Read(m_TextAlignY, y);
    }

    int32_t get_Color(unsigned int* color) override { return Read(m_Color, color); }
    int32_t put_Color(unsigned int color) override { return Write(m_Color, color); }
    int32_t get_ShadowColor(unsigned int* color) override { return Read(m_ShadowColor, color); }
    int32_t put_ShadowColor(unsigned int color) override { return Write(m_ShadowColor, color); }

    int32_t SetShadowOffset(short x, short y) override
    {
        m_ShadowOffsetX = x;
        m_ShadowOffsetY = y;
        return S_OK;
    }
    int32_t GetShadowOffset(short* x, short* y) override
    {
        Read(m_ShadowOffsetX, x);
        return Read(m_ShadowOffsetY, y);
    }

    int32_t get_Boldness(int* boldness) override { return Read(m_Boldness, boldness); }
    // Only the top of the scale is guarded; a negative weight is stored as given.
    int32_t put_Boldness(int boldness) override
    {
        return Write(m_Boldness, boldness > RENDERSTYLE_MAX_BOLDNESS ? RENDERSTYLE_MAX_BOLDNESS : boldness);
    }
    int32_t get_Italics(int* italics) override { return Read(m_Italics, italics); }
    int32_t put_Italics(int italics) override { return Write(m_Italics, italics); }
    int32_t get_FontOutlined(int* outlined) override { return Read(m_FontOutlined, outlined); }
    int32_t put_FontOutlined(int outlined) override { return Write(m_FontOutlined, outlined); }
    int32_t get_Underline(int* underline) override { return Read(m_Underline, underline); }
    // The underline is a byte: 256 is no underline.
    int32_t put_Underline(int underline) override { return Write(m_Underline, int32_t(uint8_t(underline))); }

    int32_t get_OutlineColor(unsigned int* color) override { return Read(m_OutlineColor, color); }
    int32_t put_OutlineColor(unsigned int color) override { return Write(m_OutlineColor, color); }
    int32_t get_BackColor(unsigned int* color) override { return Read(m_BackColor, color); }
    int32_t put_BackColor(unsigned int color) override { return Write(m_BackColor, color); }
    int32_t get_OutlineWidth(int* width) override { return Read(m_OutlineWidth, width); }
    int32_t put_OutlineWidth(int width) override { return Write(m_OutlineWidth, width); }
    int32_t get_Angle(double* angle) override { return Read(m_Angle, angle); }
    int32_t put_Angle(double angle) override { return Write(m_Angle, angle); }

    int32_t CopyAttributes(IVXRenderStyle* source) override
    {
        if (!source)
            return S_OK;
        if (source == kRenderStyleUIDefault) {
            IID iid = IID_IVXRenderStyle;
            auto standard = SmartPtr<IVXRenderStyle>::Adopt(
                static_cast<IVXRenderStyle*>(static_cast<void*>(CreateObject(REFLiteral(L"UIDefault"), &iid))));
            return standard ? CopyAttributes(standard) : S_OK;
        }
        if (source == static_cast<IVXRenderStyle*>(this))
            return S_OK;
        // The face is shared with the source, not copied. Width, orientation and
        // strike-out have no accessors and stay as they are.
        m_FontFace = nullptr;
        source->get_FontFace(m_FontFace.Receive());
        source->get_FontHeight(&m_FontHeight);
        source->get_Boldness(&m_Boldness);
        source->get_NumberDisplayLines(&m_NumberDisplayLines);
        source->GetTextLayout(&m_TextAlignX, &m_TextAlignY);
        source->GetShadowOffset(&m_ShadowOffsetX, &m_ShadowOffsetY);
        source->get_Color(&m_Color);
        source->get_ShadowColor(&m_ShadowColor);
        source->get_OutlineColor(&m_OutlineColor);
        source->get_BackColor(&m_BackColor);
        source->get_FontOutlined(&m_FontOutlined);
        source->get_OutlineWidth(&m_OutlineWidth);
        source->get_Angle(&m_Angle);
        source->get_Italics(&m_Italics);
        source->get_Underline(&m_Underline);
        source->get_DisplayMode(&m_DisplayMode);
        return S_OK;
    }

    // Both write every key the stream's kind holds; see RenderStyleStream.h.
    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;

protected:
    unsigned int m_Color = 0xFFFF;
    unsigned int m_ShadowColor = 0x10101;
    unsigned int m_OutlineColor = 0x10101;
    unsigned int m_BackColor = 0;
    short m_TextAlignX = -1;
    short m_TextAlignY = 1;
    short m_ShadowOffsetX = 3;
    short m_ShadowOffsetY = 3;
    int32_t m_FontOutlined = 0;
    int32_t m_OutlineWidth = 1;
    int32_t m_NumberDisplayLines = 10;
    int32_t m_FontHeight = 12;
    int32_t m_FontWidth = 0;
    int32_t m_Orientation = 0;
    int32_t m_Boldness = 550;
    int32_t m_Italics = 0;
    int32_t m_Underline = 0;
    short m_StrikeOut = 0;
    SmartPtr<IString> m_FontFace;
    double m_Angle = 0.0;
    int32_t m_DisplayMode = 0;

private:
    // A null out pointer is no error for a plain number.
    template <class F, class V> static int32_t Read(const F& field, V* out)
    {
        if (out)
            *out = field;
        return S_OK;
    }
    template <class F, class V> static int32_t Write(F& field, V value)
    {
        field = value;
        return S_OK;
    }

    friend struct RenderStyleKeys;
};

#include "presentation/RenderStyleStream.h"
