// What a measurement takes from the pixels of a film, frame by frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <span>
#include <vector>

// Of all colours of all pixels, as they are in 8 bits.
struct FrameValues {
    double change = 0.0;   // mean absolute difference from the frame before, 0 to 255
    double mean = 0.0;     // 0 to 255
    double blownOut = 0.0; // share of the pixels whose colours are all kBlownOut or above
};
constexpr int kBlownOut = 250;

// Both are red, green, blue, of the same size; `before` is empty for a first frame.
FrameValues valuesOf(std::span<const std::uint8_t> before, std::span<const std::uint8_t> now);

// Reads frames of so many bytes to the stream's end; an incomplete one is dropped.
std::vector<FrameValues> readFrames(std::istream& stream, std::size_t frameBytes);
