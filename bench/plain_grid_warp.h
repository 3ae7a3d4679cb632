// The grid's warp in its plainest form, point after point: what GridWarp must equal and is measured
// against.
#pragma once

#include <array>

// The texture coordinates of a grid mesh, in its layout: a block of 4 * (columns + 2) floats for
// each strip, and in it s, t of the top and then of the bottom vertex of every column line.
struct PlainGrid {
    int columns;
    int rows;
    float* texCoords; // borrowed
};

// Each returns the phases at the corners: top left, top right, bottom left, bottom right.
std::array<float, 4> plainWarp(const PlainGrid& grid, float time);
std::array<float, 4> plainWarpFast(const PlainGrid& grid, float time);
std::array<float, 4> plainWarpFastBiased(const PlainGrid& grid, float time, float base);
