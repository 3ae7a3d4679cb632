#pragma once

#include "web/gl/matrix.h"

#include <array>
#include <optional>

// The corners of a wide line, in the order of a triangle strip.
using WideLine = std::array<Point, 4>;

// A line between two points in clip coordinates as OpenGL 1.1 draws it without smoothing: each
// column of pixels, or if the line is steeper than 45 degrees each row, gets `width` pixels about
// the line, so it is a parallelogram whose ends are upright or level:
//
//      width  ____----|
//      ____----   ____|
//     |   ____----
//     |---
//
// Widths count in pixels of a viewport of the given size, so on a larger one the line grows with
// all else. The part behind the near plane is cut off; nothing is left of a line that is all behind
// it.
std::optional<WideLine> wideLine(const Point& from, const Point& to, float width, int viewportWidth,
                                 int viewportHeight);
