// How the scenes get their pictures from files, at 32 bits per pixel and with their textures.
#pragma once

#include "image/bitmap.h"

// Opaque everywhere.
void loadOpaque(Bitmap& bitmap, const char* path);

// With the file's alpha, and pure black made transparent.
void loadKeyed(Bitmap& bitmap, const char* path);

// Ends the process with a message on standard error and status 0 unless the picture has the size
// that an effect reads.
void requireSize(const Bitmap& bitmap, unsigned width, unsigned height, const char* path);
