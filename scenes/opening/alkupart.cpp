#include "scenes/opening/alkupart.h"

#include "base/window_and_view.h"
#include "cues/scenes_and_events.h"
#include "scenes/shared_canvas_and_grid.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cmath>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr int kVertexCount = 600;
constexpr int kCoolFigure = 2;

constexpr float kNearDepth = -7.5F;
constexpr float kNearestDepth = -4.0F;
constexpr double kZoomDistance = 4.0; // world units toward the viewer

// What is left of a kick after each drawn frame.
constexpr double kSpinDecay = 0.85;
constexpr double kZoomDecay = 0.88;
constexpr double kPulseDecay = 0.95;

// A slow turning that never quite stops, in radians per second; each axis has its own `phase`.
double wobble(float seconds, double phase)
{
    return 0.05 * std::sin(7.0 * seconds + phase);
}

// A tremble of the whole figure, in world units. The sine is so fast that its value in a frame
// depends on the last bit of its argument.
float jitter(float seconds, double speed)
{
    return static_cast<float>(0.05 * std::sin(speed * seconds));
}

} // namespace

Alkupart::Alkupart()
{
    quad_.init(kQuadDepth);
    quad_.setTexture(lineCanvas.getTextureName());
    quad_.place(0, 0, kViewWidth, kViewHeight);
    quad_.setAlpha(1.0F);

    lines_.create(kVertexCount);
    lines_.generate(kCoolFigure);
    lines_.setTarget(lineCanvas.getPixels(), kLineCanvasWidth, kLineCanvasHeight);
}

void Alkupart::syncEvent(int value)
{
    using namespace cues::opening;
    switch (value) {
    case kSpin:
        zoomActive_ = 0;
        pulse_ = 1.0F;
        spin_ = 1.0F;
        break;
    case kGlide:
        zoomActive_ = 1;
        zoomKick_ = 1.0F;
        pulse_ = 0.0F;
        break;
    case kSwellAndGlide:
        zoomActive_ = 1;
        pulse_ = 1.0F;
        zoomKick_ = 1.0F;
        break;
    case kNear:
        baseDepth_ = kNearDepth;
        pulse_ = 1.0F;
        spin_ = 1.0F;
        break;
    case kNearest:
        baseDepth_ = kNearestDepth;
        spin_ = 1.0F;
        pulse_ = 1.0F;
        break;
    default:
        break;
    }
}

void Alkupart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);
    drawFigure(seconds);
    advance(seconds);
    presentCanvas();
    SDL_GL_SwapBuffers();
}

// The figure tumbles and trembles; a pulse thickens its lines, a spin turns it, a zoom glides it
// toward the viewer.
void Alkupart::drawFigure(float seconds)
{
    const double kick = std::sin(static_cast<double>(spin_));
    const double turnX = kick + wobble(seconds, 34.32);
    const double turnY = wobble(seconds, 73.23);
    const double turnZ = kick + wobble(seconds, 3.12);
    lines_.setAngleX(static_cast<float>(seconds * turnX));
    lines_.setAngleY(static_cast<float>(seconds * turnY));
    lines_.setAngleZ(static_cast<float>(seconds * turnZ));

    float depth = baseDepth_;
    if (zoomActive_) {
        depth = static_cast<float>(baseDepth_ + kZoomDistance * (1.0F - zoomKick_));
    }
    lines_.setPosition(jitter(seconds, 13213.13), jitter(seconds, 23332.23), depth);
    lines_.setThickness(static_cast<int>(4.0 * pulse_ + 3.0));

    lineCanvas.clear();
    lines_.transform();
    lines_.scaleColours(colourScale_);
    lines_.draw();
}

// All kicks die away, but not in the very first frame.
void Alkupart::advance(float seconds)
{
    if (prevTime_ > 0.0F) {
        spin_ = static_cast<float>(spin_ * kSpinDecay);
        zoomKick_ = static_cast<float>(zoomKick_ * kZoomDecay);
        pulse_ = static_cast<float>(pulse_ * kPulseDecay);
    }
    prevTime_ = seconds;
}

void Alkupart::presentCanvas()
{
    // Drawing lines clears alpha; the canvas is shown opaque.
    lineCanvas.setAlpha(1.0F);
    lineCanvas.updateTexture();
    quad_.draw();
}
