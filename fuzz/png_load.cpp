// Any bytes as a picture file: "QIFFileEx" loads it and draws it. A load that
// succeeds must give a picture whose pixels fill its size, within the size limit;
// one that fails must draw nothing.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "framework/Renderer/RecordingCanvas.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    static const std::string input = "/tmp/vx-fuzz-png-" + std::to_string(getpid()) + ".png";
    FILE* file = std::fopen(input.c_str(), "wb");
    if (!file)
        return 0;
    std::fwrite(bytes, 1, count, file);
    std::fclose(file);

    IID iid = IID_IRenderableObject;
    auto picture = SmartPtr<IRenderableObject>::Adopt(
        static_cast<IRenderableObject*>(static_cast<void*>(CreateObject(REFLiteral(L"QIFFileEx"), &iid))));
    if (!picture)
        std::abort();
    std::wstring name(input.begin(), input.end());
    auto archive = picture.As<IFileArchive>();
    archive->put_Filename(SmartPtr<IString>::Adopt(ISCreate(CREFString(name.data(), int32_t(name.size())))));
    int32_t loaded = archive->Load();
    RecordingCanvas canvas;
    int32_t drawn = picture->Render(canvas.Handle(), nullptr, nullptr, 0);
    if ((loaded >= 0) != (drawn >= 0) || canvas.m_Calls.size() != (drawn >= 0 ? 1u : 0u))
        std::abort();
    if (drawn >= 0) {
        const CanvasPicture& read = canvas.m_Calls[0].m_Picture;
        if (read.m_Width < 1 || read.m_Height < 1 || read.m_Width > 4096 || read.m_Height > 4096 ||
            read.m_Pixels.size() != size_t(read.m_Width) * size_t(read.m_Height))
            std::abort();
    }
    std::remove(input.c_str());
    return 0;
}
