#pragma once

#include "art/pictures/kit/picture.h"

#include <cstdint>
#include <string>

// Writes run-length encoded TGA files, rows top first (the format's description is
// Truevision's, 2.0). Both throw std::runtime_error where the file cannot be written.

// Depth 24 leaves alpha out, 32 keeps it.
void writeTga(const Picture& picture, int depth, const std::string& path);

// 8 bits of grey.
void writeTga(const GreyPicture& picture, const std::string& path);

// The one place where display values become bytes: clamped to 0 ... 1 and rounded to the nearest.
std::uint8_t toByte(float value);
