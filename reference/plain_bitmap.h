// The operations on 32-bit pixels that scenes do in every frame, in their plainest form, byte by
// byte: what Bitmap's are measured against.
#pragma once

#include <cstdint>

struct PlainBitmap {
    std::uint8_t* pixels; // borrowed: red, green, blue, alpha
    std::uint32_t width;
    std::uint32_t height;

    // Gives every pixel an alpha: 1 becomes 255.
    void setAlpha(float alpha) const;

    // Gives the pixels of one colour the alpha `a`.
    void setColourKeyAlpha(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) const;
};
