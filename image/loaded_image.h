#pragma once

#include "image/pixels.h"

#include <cstdint>

// A picture as a file holds it, laid out as image/pixels.h says.
struct LoadedImage {
    Palette palette{}; // colours that the file lacks are 0
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bpp = 0; // 8, 15, 16, 24 or 32
    PixelBuffer pixels;
};
