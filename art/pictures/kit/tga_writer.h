#pragma once

#include "art/pictures/kit/picture.h"

#include <string>

// Writes run-length encoded TGA files, rows top first (the format's description is
// Truevision's, 2.0). Both throw std::runtime_error where the file cannot be written.

// Depth 24 leaves alpha out, 32 keeps it.
void writeTga(const Picture& picture, int depth, const std::string& path);

// 8 bits of grey.
void writeTga(const GreyPicture& picture, const std::string& path);
