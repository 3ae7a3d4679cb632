#pragma once

#include <array>
#include <cstdint>

// A cube of twelve triangles, drawn through OpenGL's matrix stack in one of three modes: triangles
// of flat colours (1), wire lines (2) or textured triangles (3). Any other mode draws nothing.
//
// The cube is turned about its own centre (in degrees, about z, then y, then x), then scaled, then
// moved (world units). It owns nothing; a texture is borrowed by name. Before the first draw, the
// mode, position, rotation and scale must be set, and for wire lines alpha, width and colour too.
class CubeMesh {
public:
    // The modes that draw something.
    enum DrawMode : int { kColoured = 1, kWire, kTextured };

    // Fills corners, triangles and colours; an edge is 2 * halfSize long.
    void build(float halfSize);

    void setDrawMode(int mode) { drawMode_ = mode; }
    void setTexture(unsigned name) { texture_ = name; } // 0 draws modes 1 and 3 untextured
    void setAlpha(float alpha) { alpha_ = alpha; }      // of the wire lines
    void setPosition(float x, float y, float z) { position_ = {x, y, z}; }
    void setRotation(float x, float y, float z) { rotation_ = {x, y, z}; }
    void setScale(float x, float y, float z) { scale_ = {x, y, z}; }
    void setLineWidth(float pixels) { lineWidth_ = pixels; }
    void setLineColour(float r, float g, float b) { lineColour_ = {r, g, b}; }

    // Draws with the current blend and depth state and leaves the model-view matrix as it was.
    // Modes 1 and 3 leave texturing enabled if the cube has a texture; mode 2 leaves its line width
    // set. Wire lines include a diagonal of every face, and each line is drawn twice.
    void draw() const;

private:
    using Vector = std::array<float, 3>;

    struct Corner {
        Vector position;
        std::array<float, 2> texCoord;
    };

    void bindTexture() const;
    void drawColoured() const;
    void drawWire() const;
    void drawTextured() const;

    std::array<Corner, 8> corners_{};
    std::array<std::array<std::uint32_t, 3>, 12> triangles_{}; // indices of corners
    std::array<Vector, 12> triangleColours_{};                 // red, green, blue
    std::uint32_t texture_ = 0;
    float alpha_ = 0.0F;
    std::int32_t drawMode_ = 0;
    Vector position_{};
    Vector rotation_{};
    Vector scale_{};
    float lineWidth_ = 0.0F;
    Vector lineColour_{};
};
