#include "scenes/alkupart.h"

#include "scenes/shared_objects.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cmath>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr int kVertexCount = 600;
constexpr int kCoolFigure = 2;
constexpr int kCanvasWidth = 512;
constexpr int kCanvasHeight = 256;

constexpr float kNearDepth = -7.5F;
constexpr float kNearestDepth = -4.0F;
constexpr double kZoomWay = 4.0; // world units toward the viewer

// What is left of a kick after each drawn frame.
constexpr double kSpinDecay = 0.85;
constexpr double kZoomDecay = 0.88;
constexpr double kPulseDecay = 0.95;

// A slow, never quite still turning, in radians per second; `phase` tells the axes apart.
double wobble(float seconds, double phase)
{
    return 0.05 * std::sin(7.0 * seconds + phase);
}

// A tremble of the whole figure, in world units, far too fast to be followed: what is seen is one
// frame's worth of it, and that depends on the last bit of this argument.
float jitter(float seconds, double speed)
{
    return static_cast<float>(0.05 * std::sin(speed * seconds));
}

} // namespace

Alkupart::Alkupart()
{
    quad_.init(kQuadDepth);
    quad_.setAlpha(1.0F);

    lines_.create(kVertexCount);
    lines_.generate(kCoolFigure);
    lines_.setTarget(lineCanvas.getPixels(), kCanvasWidth, kCanvasHeight);
    lines_.setThickness(1);
    lines_.setPosition(0.0F, 0.0F, -2.5F);
}

void Alkupart::syncEvent(int value)
{
    switch (value) {
    case 128:
        zoomActive_ = 0;
        pulse_ = 1.0F;
        spin_ = 1.0F;
        break;
    case 129:
        zoomActive_ = 1;
        zoomKick_ = 1.0F;
        pulse_ = 0.0F;
        break;
    case 130:
        zoomActive_ = 1;
        pulse_ = 1.0F;
        zoomKick_ = 1.0F;
        break;
    case 131:
        baseDepth_ = kNearDepth;
        pulse_ = 1.0F;
        spin_ = 1.0F;
        break;
    case 132:
        baseDepth_ = kNearestDepth;
        spin_ = 1.0F;
        pulse_ = 1.0F;
        break;
    default:
        break;
    }
}

// The figure tumbles and trembles; a pulse thickens its lines, a spin turns it, a zoom glides it
// toward the viewer, and all three die away.
void Alkupart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);

    const float jitterX = jitter(seconds, 13213.13);
    const float jitterY = jitter(seconds, 23332.23);

    const double kick = std::sin(static_cast<double>(spin_));
    const double turnX = kick + wobble(seconds, 34.32);
    const double turnY = wobble(seconds, 73.23);
    const double turnZ = kick + wobble(seconds, 3.12);

    const auto thickness = static_cast<int>(4.0 * pulse_ + 3.0);

    float depth = baseDepth_;
    if (zoomActive_) {
        depth = static_cast<float>(baseDepth_ + kZoomWay * (1.0F - zoomKick_));
    }

    // The very first frame shows the kicks whole.
    if (prevTime_ > 0.0F) {
        spin_ = static_cast<float>(spin_ * kSpinDecay);
        zoomKick_ = static_cast<float>(zoomKick_ * kZoomDecay);
        pulse_ = static_cast<float>(pulse_ * kPulseDecay);
    }

    lineCanvas.clear();
    lines_.setTarget(lineCanvas.getPixels(), kCanvasWidth, kCanvasHeight);
    lines_.setAngleX(static_cast<float>(seconds * turnX));
    lines_.setAngleY(static_cast<float>(seconds * turnY));
    lines_.setAngleZ(static_cast<float>(seconds * turnZ));
    lines_.setPosition(jitterX, jitterY, depth);
    lines_.transform();
    lines_.scaleColours(colourScale_);
    lines_.setThickness(thickness);
    lines_.draw();

    // Drawing lines clears alpha; the canvas is shown opaque.
    lineCanvas.setAlpha(1.0F);
    lineCanvas.updateTexture();

    quad_.setTexture(lineCanvas.getTextureName());
    quad_.place(0, 0, 640, 272);
    quad_.setAlpha(1.0F);
    quad_.setPositionX(0.0F);
    quad_.draw();

    SDL_GL_SwapBuffers();
    prevTime_ = seconds;
}
