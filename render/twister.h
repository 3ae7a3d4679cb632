#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// A textured bar of square cross-section, standing upright and turning about its axis, drawn in
// software one row at a time. A centre, radius and angle that change from row to row make it sway
// and twist.
//
// Each visible face of a row shows the whole row of the texture, stretched over the face's width;
// no perspective, no shading. Target and source are borrowed: 32-bit pixels, rows top first; the
// source has 256 x 256 of them. Everything must be set before the first drawRow.
class Twister {
public:
    void setRadius(int pixels) { radius_ = pixels; } // of an edge from the axis
    void setWidth(int pixels) { width_ = pixels; }
    void setHeight(int rows) { height_ = rows; }
    void setTarget(std::uint32_t* pixels) { target_ = pixels; }
    void setSource(const std::uint32_t* pixels) { source_ = pixels; }

    // Draws the bar's one or two visible faces into row `row` of the target, with the axis at
    // column centreX, turned by `angle` radians. Leaves all other pixels; what lies outside the
    // target is not drawn.
    void drawRow(int centreX, int row, float angle);

private:
    void exchangeIfFarther(std::size_t first, std::size_t second);
    void fillSpan(std::int64_t begin, std::int64_t end, int row) const;

    std::array<float, 4> edgeX_{}; // pixels; of the latest row, the farthest edge first
    std::array<float, 4> edgeZ_{}; // larger is nearer
    std::int32_t radius_ = 0;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::uint32_t* target_ = nullptr;       // borrowed
    const std::uint32_t* source_ = nullptr; // borrowed
};
