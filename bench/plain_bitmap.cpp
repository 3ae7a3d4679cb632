#include "bench/plain_bitmap.h"

void plainSetAlpha(std::uint8_t* pixels, std::size_t count, std::uint8_t alpha)
{
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i * 4 + 3] = alpha;
    }
}

void plainSetColourKeyAlpha(std::uint8_t* pixels, std::size_t count, std::uint8_t r, std::uint8_t g,
                            std::uint8_t b, std::uint8_t a)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t* pixel = pixels + i * 4;
        if (pixel[0] == r && pixel[1] == g && pixel[2] == b) {
            pixel[3] = a;
        }
    }
}
