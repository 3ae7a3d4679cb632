// Truevision TGA files: colour-mapped, true-colour and grey pictures, plain or run-length encoded,
// with any of the four origins. Of Truevision's published description of the format, version 2.0,
// this reads the header, the colour map and the pixels.
#pragma once

#include "image/loaded_image.h"

// Reads the whole file. 16-bit pixels are 5-5-5 (reported as 15) if the header announces one
// attribute bit, 5-6-5 if it announces none. Pixels and palette entries that the file lacks are
// zeros.
//
// Ends the process, with a message on standard error and status 0, when the file cannot be opened;
// when its image is missing or has an unknown type, depth or number of attribute bits, or a
// negative size; when its colour map has more than 256 colours or others than 24-bit ones; and when
// there is no memory, or the picture is far larger than the file could fill.
void readTga(const char* path, LoadedImage& image);
