// What the model's scenes draw with, told call by call.
//
// The model takes nothing from the show's own sources but the pictures and the plain forms in
// reference/. The view, the textures, the events and all other numbers stand in it a second time,
// so that a wrong one in the show cannot be wrong here too.
#pragma once

#include <GL/gl.h>
#include <cstdint>
#include <vector>

namespace model {

constexpr int kViewWidth = 640; // pixels
constexpr int kViewHeight = 272;

// The textures' names, in the order in which the show's start makes them.
enum Texture : GLuint {
    // clang-format off
    kNone, kLineCanvas, kTitleKso, kTitleBy, kTitleVelmorant, kTitleThe, kTitleEnd, kLandscape,
    kTwisterCanvas, kColumn, kBrain, kLogo, kDog, kLight, kBalls, kGreetings, kBurstLines, kBurst,
    kLastTitle, kGround
    // clang-format on
};

// What a float field keeps of a formula.
inline float single(double value)
{
    return static_cast<float>(value);
}

inline int truncated(double value)
{
    return static_cast<int>(value);
}

// A canvas of the processor: red in the lowest byte of a pixel, alpha in the highest.
struct Canvas {
    Canvas(int columns, int rows) : width(columns), height(rows) {}

    int width;
    int height;
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height));

    std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(pixels.data()); }
    void makeOpaque();
};

void blend(GLenum source, GLenum target);
void use(GLuint texture);
void upload(GLuint texture, int width, int height, const void* pixels);
void upload(GLuint texture, const Canvas& canvas);

// Turns what is drawn next, by degrees.
void turn(double x, double y, double z);

struct Quad {
    GLuint texture;
    int x, y, width, height; // pixels of the view
    float alpha = 1.0F;
    float depth = 20.0F;
    float turnX = 0.0F;              // degrees
    float top = 0.0F, bottom = 1.0F; // of the texture
};

void draw(const Quad& quad);
void drawOverView(GLuint texture);

// The one grid that three scenes share: its alpha stays from one to the next, and so do the
// coordinates behind each strip, which are never written.
void resetGrid();
void setGridAlpha(float alpha);
void drawGrid(float warpTime);

} // namespace model
