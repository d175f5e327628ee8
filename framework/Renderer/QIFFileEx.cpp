#include "framework/Renderer/QIFFileEx.h"

#include <memory>

#include "framework/Renderer/PNGPicture.h"
#include "persistence/FileBuffer.h"

int32_t CQIFFileEx::FinalConstruct()
{
    m_Filter.Attach(ISCreate(L"PNG pictures (*.png)|*.png||"));
    return S_OK;
}

int32_t CQIFFileEx::Load()
{
    Unload();
    CREFString file(m_Filename.get());
    if (file.IsEmpty())
        return E_FAIL;
    void* buffer = nullptr;
    unsigned long size = 0;
    int32_t result = FileArchiveLoad(file, &buffer, &size, FILELOAD_RAW, 0);
    if (result < 0)
        return result;
    std::unique_ptr<unsigned char[]> bytes(static_cast<unsigned char*>(buffer));
    result = PNGDecode(bytes.get(), size, &m_Picture);
    if (result < 0)
        return result;
    m_HasFile = 1;
    m_Modified = 0;
    return S_OK;
}

int32_t CQIFFileEx::Unload()
{
    m_Picture = CanvasPicture();
    m_HasFile = 0;
    return S_OK;
}

int32_t CQIFFileEx::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int)
{
    if (!canvas)
        return E_POINTER;
    if (m_Picture.m_Pixels.empty())
        return E_FAIL;
    CANVASRect place = rect ? *rect : CANVASRect{0, 0, m_Picture.m_Width, m_Picture.m_Height};
    VXCanvas::From(canvas)->DrawPicture(place, m_Picture);
    return S_OK;
}
