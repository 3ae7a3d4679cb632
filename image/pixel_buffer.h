// Memory for pixels: owned, plain bytes, not cleared and not committed before it is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

using PixelBuffer = std::unique_ptr<std::uint8_t[], FreeMemory>; // NOLINT(modernize-avoid-c-arrays)

// Memory for `width` x `height` pixels; empty when there is none, or when the size in bytes does
// not fit. A size of nothing gives a buffer that holds no byte.
//
// OpenGL takes rows of 24-bit pixels in steps of four bytes, so behind those lies as much again as
// it may read too far.
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
