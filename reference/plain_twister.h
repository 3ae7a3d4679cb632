// A row of the twisted bar in its plainest form, pixel after pixel: what Twister must equal and is
// measured against.
#pragma once

#include <cstdint>

struct PlainBar {
    std::uint32_t* target; // borrowed: width x height pixels
    int width;
    int height;
    const std::uint32_t* source; // borrowed: 256 x 256 pixels
    int radius;                  // pixels, from the axis to an edge
};

// Draws the visible faces of one row, with the axis at column centreX, turned by `angle` radians.
// What lies outside the target is left out.
void plainTwisterRow(const PlainBar& bar, int centreX, int row, float angle);
