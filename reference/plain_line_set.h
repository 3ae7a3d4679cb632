// The line figure in its plainest form, byte by byte: what LineSet must equal and is measured
// against.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

struct PlainCanvas {
    std::uint8_t* pixels; // borrowed: red, green, blue, alpha; rows top first
    int width;
    int height;
};

// Adds a colour into the canvas along one segment, whose ends are in pixels, y down: c0, c1 and c2
// into the bytes blue, green and red, up to 255. Alpha becomes 0. What lies outside is left out.
void plainDrawLine(const PlainCanvas& canvas, float x0, float y0, float x1, float y1, int c0,
                   int c1, int c2, int thickness);

// Vertices 2i and 2i + 1 are the ends of segment i, which has the colour of its first vertex.
struct PlainVertex {
    float x, y, z;
    std::array<float, 3> colour; // 0 to 255: blue, green, red
};

// The figure's curve, in warm colours for style 1 and cool ones for style 2. Second vertices have
// no colour.
std::vector<PlainVertex> plainCurve(int vertexCount, int style);

// A figure as it goes from its vertices onto a canvas: transform, scaleColours if wanted, draw.
class PlainFigure {
public:
    explicit PlainFigure(std::vector<PlainVertex> vertices);

    // Turns by radians about x, y and z, then moves.
    void transform(const std::array<float, 3>& angles, const std::array<float, 3>& position);

    // Gives the first half of the transformed vertices their own colour times `factor`.
    void scaleColours(float factor);

    // Divides by depth and draws; x and y of -1 to 1 then span the canvas. transform must run again
    // before the next draw.
    void draw(const PlainCanvas& canvas, int thickness);

    [[nodiscard]] const std::vector<PlainVertex>& transformed() const { return transformed_; }

private:
    std::vector<PlainVertex> vertices_;
    std::vector<PlainVertex> transformed_;
};
