// Rearranges the bytes of packed pixels, sixteen at a time, on processors that have an instruction
// for it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// How one group of sixteen bytes is rearranged. Byte i of the sixteen that are written is byte
// from[i] of the sixteen that are read, with the bits of set[i] set; 0x80 in `from` stands for a
// byte of 0. The next group begins `sourceStep` and `destinationStep` bytes further on and may
// overwrite the last bytes that this one has written.
struct ByteShuffle {
    std::array<std::uint8_t, 16> from;
    std::array<std::uint8_t, 16> set;
    std::size_t sourceStep;
    std::size_t destinationStep;
};

// Rearranges as many groups as fit, with sixteen bytes each, into both sizes, and returns how many:
// 0 on processors without the instruction. Source and destination must not overlap.
std::size_t shuffleBytes(const ByteShuffle& shuffle, const std::uint8_t* source,
                         std::size_t sourceBytes, std::uint8_t* destination,
                         std::size_t destinationBytes);
