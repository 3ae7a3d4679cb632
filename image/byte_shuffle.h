// Rearranging the bytes of packed pixels, sixteen at a time, on machines that can.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// What becomes of one group of pixels. Byte i of the sixteen that are written is byte from[i] of
// the sixteen that are read, with the bits of set[i] added; 0x80 in `from` stands for a byte of 0.
// The next group begins `sourceStep` and `destinationStep` bytes further on and may overwrite the
// last bytes that this one has written.
struct ByteShuffle {
    std::array<std::uint8_t, 16> from;
    std::array<std::uint8_t, 16> set;
    std::size_t sourceStep;
    std::size_t destinationStep;
};

// Rearranges as many groups as lie, sixteen bytes each, within both sizes, and returns how many:
// none on machines without an instruction for it. The two must not overlap.
std::size_t shuffleBytes(const ByteShuffle& shuffle, const std::uint8_t* source,
                         std::size_t sourceBytes, std::uint8_t* destination,
                         std::size_t destinationBytes);
