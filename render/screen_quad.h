#pragma once

#include <array>

// A picture placed on the screen in pixels: a textured quad that covers a given rectangle of the
// viewport exactly, at a depth in front of the eye, and that can then be offset, rotated and faded.
//
// Rectangles are in pixels from the viewport's top-left corner, x to the right and y down; they may
// reach beyond the viewport. Offsets are in world units, angles in degrees. The depth does not
// change what an unmoved quad covers; it matters once the quad is offset, rotated or overlaps other
// things. The texture is borrowed by name; the quad owns nothing.
//
// init() and place() read displayMetrics, so initGL must have run before.
class ScreenQuad {
public:
    // Fills the viewport at `depth` with the whole texture, its first row on top; opaque, neither
    // offset nor rotated. Keeps the texture.
    void init(float depth);

    // Covers a rectangle of the viewport.
    void place(int x, int y, int width, int height);

    // Moves to another depth; the rectangle on the screen stays.
    void setDepth(float depth);

    void setAlpha(float alpha) { alpha_ = alpha; }
    void setRotationX(float degrees) { rotX_ = degrees; }
    void setRotationY(float degrees) { rotY_ = degrees; }
    void setRotationZ(float degrees) { rotZ_ = degrees; }
    void setPositionX(float x) { posX_ = x; }
    void setPositionY(float y) { posY_ = y; }

    // An OpenGL texture's name; 0 draws the quad plain white.
    void setTexture(unsigned name) { texture_ = name; }

    // The part of the texture that is shown. A repeat of s shows the texture s times over.
    void setTexCoords(float uLeft, float vTop, float uRight, float vBottom);
    void setTexRepeat(float repeat) { setTexCoords(0.0F, 0.0F, repeat, repeat); }
    void setTexRepeatU(float repeat);
    void setTexRepeatV(float repeat);

    [[nodiscard]] unsigned texture() const { return texture_; }
    [[nodiscard]] float rotationX() const { return rotX_; }
    [[nodiscard]] float rotationY() const { return rotY_; }
    [[nodiscard]] float rotationZ() const { return rotZ_; }
    [[nodiscard]] float alpha() const { return alpha_; }
    [[nodiscard]] float positionX() const { return posX_; }
    [[nodiscard]] float positionY() const { return posY_; }
    [[nodiscard]] float positionZ() const { return posZ_; } // the negated depth

    // Draws with the current blend and depth state. Leaves the model-view matrix as it was, the
    // current colour at (1, 1, 1, alpha) and, if textured, texturing disabled and the texture
    // environment at GL_MODULATE.
    void draw() const;

private:
    struct Corner {
        float x, y, z;
    };
    struct TexCoord {
        float u, v;
    };

    // Corners in the order of a triangle strip.
    enum { kRightTop, kLeftTop, kRightBottom, kLeftBottom, kCornerCount };

    float rotX_ = 0.0F;
    float rotY_ = 0.0F;
    float rotZ_ = 0.0F;
    float alpha_ = 1.0F;
    float posX_ = 0.0F;
    float posY_ = 0.0F;
    float posZ_ = 0.0F;
    std::array<Corner, kCornerCount> corners_{}; // relative to the position
    std::array<TexCoord, kCornerCount> texCoords_{};
    unsigned texture_ = 0;
    int rectWidth_ = 0;
    int rectHeight_ = 0;
    int rectX_ = 0;
    int rectY_ = 0;
};
