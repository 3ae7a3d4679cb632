#pragma once

#include "render/arrays.h"

#include <cstddef>
#include <cstdint>

// A flat, textured grid that covers a pixel rectangle of the viewport exactly: the canvas of the
// scenes that ripple a picture. Its vertices never move; deformers rewrite its texture coordinates.
//
// Grid point (r, c) is the corner in row r = 0 (top) to rows() and column c = 0 (left) to
// columns(). The arrays hold one triangle strip for each row of cells, in slots:
//
//      slot   0   2   4  ...  2 columns      points (r, 0), (r, 1) ...          of strip r
//             | / | / |         |
//             1   3   5  ...  2 columns + 1  points (r + 1, 0), (r + 1, 1) ...
//
// After each strip there are two more slots, which are not used. Every inner row of points is there
// twice, and a deformer must write both copies.
class GridMesh {
public:
    // The viewport in pixels and its vertical field of view in degrees; must be called before
    // build.
    void setProjection(int viewportWidth, int viewportHeight, float fovDegrees);

    // Makes the grid over a rectangle, in pixels from the viewport's top left corner, x to the
    // right and y down, `depth` world units before the eye. Texture coordinates go from (0, 0) at
    // the top left to (1, 1). If there is no memory for it, the process ends with a message on
    // standard output and status 1.
    void build(int x, int y, int width, int height, int columns, int rows, float depth);

    // Frees both arrays; the mesh must be built again before it is drawn.
    void release();

    void setTexture(unsigned texture) { texture_ = texture; } // a borrowed name; 0 draws white
    void setAlpha(float alpha) { alpha_ = alpha; }            // 0 until it is set
    void setOffsetX(float x) { offsetX_ = x; }
    void setOffsetY(float y) { offsetY_ = y; }
    void setOffsetZ(float z) { offsetZ_ = z; }

    [[nodiscard]] int columns() const { return columns_; }
    [[nodiscard]] int rows() const { return rows_; }

    // Pairs s, t by slot, for rewriting in place.
    [[nodiscard]] float* texCoords() { return texCoords_.get(); }

    // Floats from one strip's texture coordinates to the next one's. The top copy of (r, c) is at
    // r * stripStride() + 4c, the bottom copy of (r + 1, c) two floats after it.
    [[nodiscard]] std::ptrdiff_t stripStride() const { return 4 * (std::ptrdiff_t{columns_} + 2); }

    // Draws with the current blend and depth state. Leaves the model-view matrix as it was, the
    // client arrays disabled and, if textured, texturing disabled.
    void draw() const;

private:
    Array<float> vertices_;  // x, y, z by slot
    Array<float> texCoords_; // s, t by slot
    std::int32_t columns_ = 0;
    std::int32_t rows_ = 0;
    std::uint32_t texture_ = 0;
    float offsetX_ = 0.0F;
    float offsetY_ = 0.0F;
    float offsetZ_ = 0.0F;
    float alpha_ = 0.0F;
    float fovDegrees_ = 0.0F;
    float aspect_ = 0.0F;
    std::int32_t viewportWidth_ = 0;
    std::int32_t viewportHeight_ = 0;
};
