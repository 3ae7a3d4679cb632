// Truevision TGA files: colour-mapped, true-colour and grey pictures, plain or run-length encoded,
// with any of the four origins. The format is described in Truevision's "TGA File Format
// Specification", version 2.0; of that this reads the header, the colour map and the pixels.
#pragma once

#include "image/bitmap.h"
#include "image/pixel_buffer.h"

#include <array>
#include <cstdint>

// A picture as a file holds it, in the layouts of image/bitmap.h.
struct LoadedImage {
    std::array<PaletteEntry, 256> palette{}; // entries that the file lacks are black
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bpp = 0; // 8, 15, 16, 24 or 32
    PixelBuffer pixels;
};

// Reads a file whole. 16-bit pixels are 5-5-5 (reported as 15) where the header announces one
// attribute bit, 5-6-5 where it announces none. Pixels that a short file lacks are black.
//
// Dies, with the message on standard error and status 0, when the file cannot be opened
// ("\n\nError opening %s!\n\n"), when it says something that it must not, and when there is no
// memory. Beside the format's known refusals these are "\n\nError! Unsupported image type in
// %s!!\n\n", "\n\nError! Negative size in %s!!\n\n" and, for another depth, what the conversion
// says of it: "\n\nError! Not a valid bitdepth for the source!!\n\n".
void readTga(const char* path, LoadedImage& image);
