// PNG files in and out of pictures, through libpng's simplified interface: it
// keeps libpng's longjmp inside the library and frees its own state on every
// error, so a damaged file costs nothing but a failed result.
#pragma once
#include <cstddef>
#include <cstdint>

#include "framework/Renderer/Canvas.h"

// The widest and tallest picture taken: an icon or a slide, never a poster. Keeps
// a damaged header from asking for gigabytes.
constexpr uint32_t kPNGMaxSide = 4096;

// Decodes a whole PNG file held in memory, of any colour type, depth and
// interlacing, into 8-bit RGBA. E_FAIL for anything that is not a whole, sound
// PNG; *picture is then left as it was.
int32_t PNGDecode(const unsigned char* data, size_t size, CanvasPicture* picture);
