// The grid's warp in its plainest form, point after point: what GridWarp must equal and is measured
// against.
#pragma once

// The texture coordinates of a grid mesh, in its layout: a block of 4 * (columns + 2) floats for
// each strip, and in it s, t of the top and then of the bottom vertex of every column line.
struct PlainGrid {
    int columns;
    int rows;
    float* texCoords; // borrowed
};

// Write the coordinates of every point as they are after so many seconds; the fast ones leave out
// the last column and the last row of points.
void plainWarp(const PlainGrid& grid, float time);
void plainWarpFast(const PlainGrid& grid, float time);
void plainWarpFastBiased(const PlainGrid& grid, float time, float base);
