// Drawing and styles: the renderer, render styles, renderable objects.
#pragma once
#include "runtime/interfaces/Streams.h"

struct CANVASRect {
    int32_t left;
    int32_t top;
    int32_t width;
    int32_t height;
};

// The application's drawing surface: passed on, never opened by the module.
struct UbuntuCanvas;

struct IVXRenderStyle : IUnknown {
    static const IID& Iid() { return IID_IVXRenderStyle; }
    virtual int32_t get_FontFace(IString** face) = 0;
    virtual int32_t put_FontFace(tagREFString face) = 0;
    virtual int32_t get_DisplayMode(int* mode) = 0;
    virtual int32_t put_DisplayMode(int mode) = 0;
    virtual int32_t get_NumberDisplayLines(int* lines) = 0;
    virtual int32_t put_NumberDisplayLines(int lines) = 0;
    virtual int32_t get_FontHeight(int* height) = 0;
    virtual int32_t put_FontHeight(int height) = 0;
    virtual int32_t get_FontWidth(int* width) = 0;
    virtual int32_t put_FontWidth(int width) = 0;
    virtual int32_t SetTextLayout(short x, short y) = 0;
    virtual int32_t GetTextLayout(short* x, short* y) = 0;
    virtual int32_t get_Color(unsigned int* color) = 0;
    virtual int32_t put_Color(unsigned int color) = 0;
    virtual int32_t get_ShadowColor(unsigned int* color) = 0;
    virtual int32_t put_ShadowColor(unsigned int color) = 0;
    virtual int32_t SetShadowOffset(short x, short y) = 0;
    virtual int32_t GetShadowOffset(short* x, short* y) = 0;
    virtual int32_t get_Boldness(int* boldness) = 0;
    virtual int32_t put_Boldness(int boldness) = 0;
    virtual int32_t get_Italics(int* italics) = 0;
    virtual int32_t put_Italics(int italics) = 0;
    virtual int32_t get_FontOutlined(int* outlined) = 0;
    virtual int32_t put_FontOutlined(int outlined) = 0;
    virtual int32_t get_Underline(int* underline) = 0;
    virtual int32_t put_Underline(int underline) = 0;
    virtual int32_t get_OutlineColor(unsigned int* color) = 0;
    virtual int32_t put_OutlineColor(unsigned int color) = 0;
    virtual int32_t get_BackColor(unsigned int* color) = 0;
    virtual int32_t put_BackColor(unsigned int color) = 0;
    virtual int32_t get_OutlineWidth(int* width) = 0;
    virtual int32_t put_OutlineWidth(int width) = 0;
    virtual int32_t get_Angle(double* angle) = 0;
    virtual int32_t put_Angle(double angle) = 0;
    virtual int32_t CopyAttributes(IVXRenderStyle* source) = 0;
    virtual int32_t Save(IDataStream* stream, int flags) = 0;
    virtual int32_t Load(IDataStream* stream, int flags) = 0;
};

struct IVXRenderer : IUnknown {
    static const IID& Iid() { return IID_IVXRenderer; }
    virtual int32_t Prepare(int mode, IVXRenderStyle* style, UbuntuCanvas* canvas) = 0;
    virtual int32_t DrawText(IString* text, CANVASRect* rect, int flags) = 0;
    virtual int32_t DrawString(tagREFString text, CANVASRect* rect, int a, int b) = 0;
    virtual int32_t put_Mode(int mode) = 0;
};

// A plain text object; its first operation is that of IString, so a verse can stand for it.
struct IVXText : IString {
    static const IID& Iid() { return IID_IVXText; }
    virtual int32_t put_Text(tagREFString text) = 0;
};

struct IRenderableObject : IUnknown {
    static const IID& Iid() { return IID_IRenderableObject; }
    virtual int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int flags) = 0;
};
