// HSI RAW files: a header of 32 bytes with big-endian numbers, a palette of up to 256 colours or
// none, and plain pixels: 8-bit indices where there is a palette, 24-bit colours where there is
// none.
#pragma once

#include "image/loaded_image.h"

// Reads a file whole; bytes and rows stay as they come. What a short file lacks is zeros.
// Dies, with a message on standard error and status 0, when it cannot be opened, is of another
// format, has more than 256 colours, or when there is no memory.
void readHsiRaw(const char* path, LoadedImage& image);
