#pragma once

#include "image/bitmap.h"
#include "image/pixel_buffer.h"

#include <array>
#include <cstdint>

// A picture as a file holds it, in the layouts of image/bitmap.h.
struct LoadedImage {
    std::array<PaletteEntry, 256> palette{}; // what the file lacks is 0
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bpp = 0; // 8, 15, 16, 24 or 32
    PixelBuffer pixels;
};
