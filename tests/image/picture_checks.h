// What the tests of both picture readers check files with.
#pragma once

#include "image/bitmap.h"
#include "reference/picture_files.h"
#include "reference/plain_picture.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

inline const testing::ExitedWithCode kStatus0{0};

// One of Bitmap's loaders, and the plain reader of the same files.
using Load = void (Bitmap::*)(const char*, unsigned);
using PlainRead = PlainPicture (*)(const char*);

Bytes pixelsOf(const Bitmap& bitmap);

// Loads the file at its own depth and at each of the others; all must be as the plain reader has
// it.
void compareWithPlain(const Bytes& file, Load load, PlainRead plainRead);

// Bytes of a good file to change, as place and new value, and the message that it then ends with:
// a regular expression where "%s" stands for the file's path.
struct Refusal {
    std::vector<std::pair<std::size_t, std::uint8_t>> patches;
    std::string message;
};

void expectRefusals(const Bytes& good, Load load, const std::vector<Refusal>& refusals);
