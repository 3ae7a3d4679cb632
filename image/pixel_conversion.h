// From one pixel layout to another; image/pixels.h describes them.
#pragma once

#include "image/pixels.h"

#include <cstddef>
#include <cstdint>

// Converts `count` pixels of `sourceBpp` bits (8, 15, 16, 24 or 32) into pixels of `bpp` bits (16,
// 24 or 32). Reduction keeps a channel's top bits, expansion leaves its new low bits 0; new alpha
// is 255. `palette` holds the colours of 8-bit sources. Writes nothing if the depths are equal.
void convertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination, int bpp,
                   std::size_t count, const Palette& palette);
