#include "reference/plain_bitmap.h"

#include <cstddef>

void PlainBitmap::setAlpha(float alpha) const
{
    const auto byte = static_cast<std::uint8_t>(static_cast<long long>(255.0 * alpha));
    for (std::size_t i = 0; i < std::size_t{width} * height; ++i) {
        pixels[i * 4 + 3] = byte;
    }
}

void PlainBitmap::setColourKeyAlpha(std::uint8_t r, std::uint8_t g, std::uint8_t b,
                                    std::uint8_t a) const
{
    for (std::size_t i = 0; i < std::size_t{width} * height; ++i) {
        if (pixels[i * 4] == r && pixels[i * 4 + 1] == g && pixels[i * 4 + 2] == b) {
            pixels[i * 4 + 3] = a;
        }
    }
}
