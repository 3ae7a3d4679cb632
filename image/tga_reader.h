// Truevision TGA files: colour-mapped, true-colour and grey pictures, plain or run-length encoded,
// with any of the four origins. Of Truevision's published description of the format, version 2.0,
// this reads the header, the colour map and the pixels.
#pragma once

#include "image/loaded_image.h"

// Reads a file whole. 16-bit pixels are 5-5-5 (reported as 15) where the header announces one
// attribute bit, 5-6-5 where it announces none. Pixels and palette entries that the file lacks are
// zeros.
//
// Dies, with a message on standard error and status 0, when the file cannot be opened, holds no
// image or one of an unknown type, depth or number of attribute bits, has a negative size or a
// colour map that is not of up to 256 colours of 24 bits, and when there is no memory, or far more
// is asked for than the file could fill.
void readTga(const char* path, LoadedImage& image);
