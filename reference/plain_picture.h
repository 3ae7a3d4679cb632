// Picture files read in the plainest way: one row or one packet byte after the other, red and blue
// exchanged byte by byte, rows copied into place, then each pixel converted by its depths. For good
// files and for ones that were cut short; there are no refusals.
#pragma once

#include "image/pixels.h"

#include <array>
#include <cstddef>
#include <cstdint>

struct PlainPicture {
    std::array<std::uint8_t, 768> palette{}; // red, green, blue of each entry
    int width = 0;
    int height = 0;
    int bpp = 0;
    PixelBuffer pixels;

    [[nodiscard]] std::size_t pixelCount() const;
    [[nodiscard]] std::size_t byteCount() const;
};

PlainPicture plainReadTga(const char* path);
PlainPicture plainReadHsiRaw(const char* path);

// The picture at another depth, of 16, 24 or 32 bits; at its own it is handed on as it is.
PlainPicture plainConvert(PlainPicture picture, int bpp);

// `bpp` bits of `count` pixels out of `sourceBpp`, which is another depth.
void plainConvertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination,
                        int bpp, std::size_t count, const std::array<std::uint8_t, 768>& palette);
