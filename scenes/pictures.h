// Loads a scene's pictures from files, at 32 bits per pixel, and makes their textures.
#pragma once

#include "image/bitmap.h"

// Makes the picture opaque everywhere.
void loadOpaque(Bitmap& bitmap, const char* path);

// Keeps the file's alpha and makes pure black transparent.
void loadKeyed(Bitmap& bitmap, const char* path);

// Ends the process with a message on standard error and status 0 unless the picture has the size
// that an effect reads.
void requireSize(const Bitmap& bitmap, unsigned width, unsigned height, const char* path);
