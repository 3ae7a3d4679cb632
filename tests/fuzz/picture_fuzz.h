// The loader that a fuzzed program feeds files to.
#pragma once

#include "image/bitmap.h"

#include <cstddef>

struct FuzzedLoader {
    void (Bitmap::*load)(const char* path, unsigned bpp);
    std::size_t sizeAt; // where in a file its width and height begin, two bytes each
    bool highByteFirst;
};

extern const FuzzedLoader kFuzzedLoader;
