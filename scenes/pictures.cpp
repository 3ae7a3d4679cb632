#include "scenes/pictures.h"

#include "base/fatal.h"

#include <cstdio>

void loadOpaque(Bitmap& bitmap, const char* path)
{
    bitmap.load(path, 32);
    bitmap.setAlpha(1.0F);
    bitmap.makeTexture();
}

void loadKeyed(Bitmap& bitmap, const char* path)
{
    bitmap.load(path, 32);
    bitmap.setColourKeyAlpha(0, 0, 0, 0);
    bitmap.makeTexture();
}

void requireSize(const Bitmap& bitmap, unsigned width, unsigned height, const char* path)
{
    if (bitmap.getWidth() != width || bitmap.getHeight() != height) {
        fatal(stderr, 0, "\n\nError! %s must have %u x %u pixels!!\n\n", path, width, height);
    }
}
