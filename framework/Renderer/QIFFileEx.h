// "QIFFileEx": a picture file. Its IFileArchive names and reads a PNG file; its
// IRenderableObject draws what was read on the canvas, fitted into the rectangle.
// A failed load leaves no picture, so a damaged file draws nothing rather than
// what an earlier file held.
#pragma once
#include "framework/Renderer/Canvas.h"
#include "persistence/FileArchiveImpl.h"
#include "runtime/ObjectInfo.h"

class CQIFFileEx : public CObject<CQIFFileEx>,
                   public IObjectInfoImpl<CQIFFileEx>,
                   public IFileArchiveImpl<CQIFFileEx, IFileArchive>,
                   public IRenderableObject {
public:
    static constexpr wchar_t kObjectName[] = L"QIFFileEx";
    using Interfaces =
        QiList<Entry<IObjectInfo>, Entry<IRenderableObject>, Chain<IFileArchiveImpl<CQIFFileEx, IFileArchive>>>;

    int32_t FinalConstruct() override;

    // IFileArchive: reads the named file; pictures are only read here.
    int32_t Load() override;
    int32_t Save() override { return E_NOTIMPL; }
    int32_t Unload() override;

    // IRenderableObject: E_FAIL with no picture loaded. A null rectangle draws the
    // picture at its own size in the canvas's corner.
    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int flags) override;

private:
    CanvasPicture m_Picture;
};
