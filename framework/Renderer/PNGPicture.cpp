#include "framework/Renderer/PNGPicture.h"

#include <png.h>

#include <cstring>
#include <utility>
#include <vector>

#include "runtime/Result.h"

namespace {

// Frees what libpng kept; safe to call twice, as the library may have done it already.
struct ImageGuard {
    png_image* m_Image;
    ~ImageGuard() { png_image_free(m_Image); }
};

} // namespace

int32_t PNGDecode(const unsigned char* data, size_t size, CanvasPicture* picture)
{
    if (!data || size == 0 || !picture)
        return E_FAIL;
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    ImageGuard guard{&image};
    if (!png_image_begin_read_from_memory(&image, data, size))
        return E_FAIL;
    if (image.width == 0 || image.height == 0 || image.width > kPNGMaxSide || image.height > kPNGMaxSide)
        return E_FAIL;
    image.format = PNG_FORMAT_RGBA;
    std::vector<png_byte> bytes(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr))
        return E_FAIL;
    CanvasPicture read;
    read.m_Width = int32_t(image.width);
    read.m_Height = int32_t(image.height);
    read.m_Pixels.resize(size_t(image.width) * image.height);
    for (size_t i = 0; i < read.m_Pixels.size(); ++i) {
        const png_byte* p = &bytes[i * 4];
        read.m_Pixels[i] = uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
    }
    *picture = std::move(read);
    return S_OK;
}
