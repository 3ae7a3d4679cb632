// HSI RAW files: a header of 32 bytes with big-endian numbers, a palette of up to 256 colours or
// none, and plain pixels: 8-bit indices where there is a palette, 24-bit colours where there is
// none.
#pragma once

#include "image/loaded_image.h"

// Reads the whole file; bytes and rows keep their order. Bytes that a short file lacks are zeros.
// Ends the process, with a message on standard error and status 0, when the file cannot be opened,
// has another format or more than 256 colours, or when there is no memory.
void readHsiRaw(const char* path, LoadedImage& image);
