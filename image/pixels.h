// Pictures in memory: how a pixel is laid out, and memory for many of them.
//
// Rows lie back to back, the top one first. One pixel, by bits per pixel:
//
// -  8: an index into the palette
// - 15: a little-endian word, red in bits 10-14, green in 5-9, blue in 0-4; bit 15 is not used
// - 16: a little-endian word, red in bits 11-15, green in 5-10, blue in 0-4
// - 24: three bytes, red, green, blue
// - 32: four bytes, red, green, blue, alpha (255 is opaque)
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

using PaletteEntry = std::array<std::uint8_t, 3>; // red, green, blue
using Palette = std::array<PaletteEntry, 256>;

// Bytes that a pixel of 8, 15, 16, 24 or 32 bits takes; 0 for any other depth.
constexpr std::size_t pixelBytes(int bpp)
{
    const bool isKnown = bpp == 8 || bpp == 15 || bpp == 16 || bpp == 24 || bpp == 32;
    return isKnown ? static_cast<std::size_t>(bpp + 7) / 8 : 0;
}

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

// Owned bytes of malloc: not cleared, so that large ones take up memory only once they are written.
using PixelBuffer = std::unique_ptr<std::uint8_t[], FreeMemory>; // NOLINT(modernize-avoid-c-arrays)

// Allocates `width` x `height` pixels; empty if there is no memory or if the size in bytes
// overflows. 0 pixels give a buffer that is not empty but has nothing to be written to.
//
// OpenGL assumes that each row of 24-bit pixels takes up a multiple of four bytes and so reads past
// their end; the buffer is longer by what it may read there, three bytes for each row.
inline PixelBuffer allocatePixels(std::uint32_t width, std::uint32_t height,
                                  std::uint32_t bytesPerPixel)
{
    constexpr auto kLargest = std::uint64_t{std::numeric_limits<std::ptrdiff_t>::max()};

    // The product of two 32-bit numbers fits into 64 bits; only the third factor can overflow.
    const std::uint64_t pixels = std::uint64_t{width} * height;
    const std::uint64_t readTooFar = bytesPerPixel == 3 ? std::uint64_t{3} * height : 1;
    if (bytesPerPixel != 0 && pixels > (kLargest - readTooFar) / bytesPerPixel) {
        return nullptr;
    }
    const auto bytes = static_cast<std::size_t>(pixels * bytesPerPixel + readTooFar);
    return PixelBuffer{static_cast<std::uint8_t*>(std::malloc(bytes))};
}
