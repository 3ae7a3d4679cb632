// Picture files read in the plainest way: row after row, packets byte after byte, red and blue
// exchanged one pixel at a time, rows copied into place, then each pixel converted. What the
// readers and the conversion of depths must equal and are measured against.
//
// These are for good files and for ones that were cut short, whose end counts as zeros; nothing is
// refused. A file that does not open ends the process with status 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

struct PlainPicture {
    std::array<std::uint8_t, 768> palette{}; // red, green, blue of each entry
    int width = 0;
    int height = 0;
    int bpp = 0;                      // 8, 15, 16, 24 or 32
    std::vector<std::uint8_t> pixels; // rows top first, without gaps

    [[nodiscard]] std::size_t pixelCount() const;
};

PlainPicture plainReadTga(const char* path);
PlainPicture plainReadHsiRaw(const char* path);

// The picture at another depth, of 16, 24 or 32 bits; at its own it is handed on as it is.
PlainPicture plainConvert(PlainPicture picture, int bpp);

// Converts `count` pixels from one depth to another: `bpp` is 16, 24 or 32.
void plainConvertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination,
                        int bpp, std::size_t count, const std::array<std::uint8_t, 768>& palette);
