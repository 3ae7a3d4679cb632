// A row of the twisted bar in its plainest form, pixel after pixel: what Twister must equal and is
// measured against.
#pragma once

#include <cstdint>

struct PlainBar {
    std::uint32_t* target; // borrowed: width x height pixels
    int width;
    int height;
    const std::uint32_t* source; // borrowed: 256 x 256 pixels
    int radius;
};

void plainTwisterRow(const PlainBar& bar, int centreX, int row, float angle);
