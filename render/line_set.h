// A three-dimensional figure of coloured line segments, drawn in software into 32-bit pixels.
//
// The figure is made once; every frame it is turned, moved, divided by depth and rasterised:
// setTarget, the angles, setPosition, transform, scaleColours (optional), setThickness, draw.
// The eye is at the origin; after the division, x and y from -1 to 1 cover the target, with y
// downward. Lines add their colour to the pixels, so that crossing lines brighten each other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

// Vertices 2i and 2i + 1 are the ends of segment i, which has the colour of its first vertex.
struct LineVertex {
    float x;
    float y;
    float z;
    std::array<float, 3> colour; // 0 to 255, added to the bytes blue, green, red
};

class LineSet {
public:
    // Allocates an even number of vertices, all at the origin, and resets angles and scale. An odd
    // number, or too little memory, ends the process with a message on standard error.
    void create(int vertexCount);

    // Fills the figure from its curve, in warm colours for style 1 and cool ones for style 2; other
    // styles keep the colours. Seeds the C library's random numbers with the current time.
    void generate(int style);

    // The pixels (red, green, blue, alpha; rows top first) are borrowed until the next setTarget.
    void setTarget(std::uint8_t* pixels, int width, int height);

    void setAngleX(float radians) { angles_[0] = radians; }
    void setAngleY(float radians) { angles_[1] = radians; }
    void setAngleZ(float radians) { angles_[2] = radians; }
    void setPosition(float x, float y, float z) { position_ = {x, y, z}; }
    void setThickness(int thickness) { thickness_ = thickness; }

    // Builds the matrix from angles, scale and position.
    void buildMatrix();

    // Builds the matrix and transforms the whole figure with it; colours are copied.
    void transform();

    // Gives the first half of the transformed vertices their source colour times `factor`.
    void scaleColours(float factor);

    // Divides x and y of every transformed vertex by its z.
    void perspectiveDivide();

    // Divides and draws every segment; transform must run again before the next draw.
    void draw();

    // Draws one segment, in pixels, into `pixels`, which have the target's size. c0, c1 and c2 are
    // added to the bytes blue, green and red; alpha becomes 0 where the line is. Never writes
    // outside the target.
    void drawLine(float x0, float y0, float x1, float y1, int c0, int c1, int c2,
                  std::uint8_t* pixels, int thickness) const;

    // Writes the transformed positions to standard output.
    void print() const;

    [[nodiscard]] std::span<const LineVertex> vertices() const { return {vertices_.get(), size()}; }
    [[nodiscard]] std::span<const LineVertex> transformed() const
    {
        return {transformed_.get(), size()};
    }
    [[nodiscard]] const std::array<float, 16>& matrix() const { return matrix_; }

private:
    using VertexArray = std::unique_ptr<LineVertex[]>; // NOLINT(modernize-avoid-c-arrays)

    static VertexArray allocate(std::size_t size);
    [[nodiscard]] std::size_t size() const; // of the arrays: 0 for a negative vertexCount_
    [[nodiscard]] std::size_t segments() const { return size() / 2; }

    std::array<float, 3> angles_{}; // about x, y and z
    std::array<float, 3> scale_{1.0F, 1.0F, 1.0F};
    std::array<float, 3> position_{};
    std::int32_t vertexCount_ = 0;
    VertexArray vertices_;
    VertexArray transformed_;
    std::array<float, 16> matrix_{};       // column by column
    std::uint8_t* targetPixels_ = nullptr; // borrowed
    std::int32_t targetWidth_ = 0;
    std::int32_t targetHeight_ = 0;
    std::int32_t thickness_ = 0;
};
