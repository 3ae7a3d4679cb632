// Pictures, and how they are held against those that were once looked at and found good.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// Red, green, blue, rows top first.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

Picture readPng(const std::filesystem::path& file);

// Each pixel is the mean of `factor` x `factor`.
Picture scaledDown(const Picture& picture, int factor);

struct Difference {
    int largest = 255;
    double mean = 255.0;
};

// Between the bytes of two pictures; as large as it can be where their sizes differ.
Difference differenceBetween(const Picture& one, const Picture& other);

// Fails unless the picture differs from tests/whole_show/golden/NAME.png by at most so much. It
// then leaves NAME-expected.png, NAME-got.png and NAME-difference.png in build/golden to be looked
// at.
//
// With KSO_RECORD_GOLDEN in the environment the golden picture is written anew instead, and that
// too is a failure, so that the result is looked at.
void expectGolden(const std::string& name, const Picture& picture, const Difference& allowed);
