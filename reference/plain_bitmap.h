// The per-frame operations on 32-bit pixels in their plainest form: an image that walks over its
// bytes.
#pragma once

#include <cstdint>

struct PlainBitmap {
    std::uint8_t* pixels; // borrowed
    std::uint32_t width;
    std::uint32_t height;

    void setAlpha(float alpha) const;
    void setColourKeyAlpha(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) const;
};
