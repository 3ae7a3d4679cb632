// The line figure in its plainest form, byte by byte: what LineSet must equal and is measured
// against.
#pragma once

#include "render/line_set.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

struct PlainCanvas {
    std::uint8_t* pixels; // borrowed: red, green, blue, alpha; rows top first
    int width;
    int height;
};

// Adds one segment, a colour of any size, into the canvas.
void plainDrawLine(const PlainCanvas& canvas, float x0, float y0, float x1, float y1, int c0,
                   int c1, int c2, int thickness);

// Rotation, translation and projection of a copy of a line set's figure.
class PlainFigure {
public:
    explicit PlainFigure(std::span<const LineVertex> vertices);

    void transform(const std::array<float, 3>& angles, const std::array<float, 3>& position);
    void scaleColours(float factor);
    void draw(const PlainCanvas& canvas, int thickness);

    [[nodiscard]] std::span<const LineVertex> transformed() const { return transformed_; }

private:
    std::vector<LineVertex> vertices_;
    std::vector<LineVertex> transformed_;
};
