#pragma once

#include "stage/picture_size.h"

#include <cstdint>
#include <filesystem>
#include <span>

// Writes pixels (red, green, blue, rows top first) as a PNG file. Throws RecordError.
void writePng(const std::filesystem::path& file, PictureSize size,
              std::span<const std::uint8_t> pixels);
