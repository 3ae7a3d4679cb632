// The pictures on the stage: noise, so that every byte of them tells, with black in between.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum How {
    kAsItIs = 0,
    kOpaque = 1,       // every pixel's alpha becomes 255
    kBlackIsClear = 2, // then that of black ones 0
    kGrey = 4,         // a byte a pixel, and no texture
    kThenSeeds = 8,    // the random numbers are seeded next
};

// A picture or an empty canvas as the show's start makes it.
struct Loaded {
    std::string file; // below the data folder; none: a canvas
    int width, height;
    int how;
};

// In the order in which they are made, and so in the order of the textures' names.
extern const std::vector<Loaded> kAllLoaded;

// The pixels as they are uploaded, top row first, and the file that they come from.
std::vector<std::uint8_t> pixelsOf(const Loaded& picture);
std::vector<std::uint8_t> pixelsOf(const std::string& file); // of its first entry
std::vector<std::uint8_t> tgaOf(Loaded picture);
