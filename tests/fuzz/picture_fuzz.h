// The loader that a fuzzed program feeds files to.
#pragma once

#include "image/bitmap.h"

#include <cstddef>

// The first byte of an input chooses one of so many depths, the rest is the file.
constexpr std::size_t kDepthChoices = 8;

struct FuzzedLoader {
    void (Bitmap::*load)(const char* path, unsigned bpp);
    std::size_t sizeAt; // where in a file its width and height begin, two bytes each
    bool highByteFirst;
};

extern const FuzzedLoader kFuzzedLoader;
