#include "scenes/image_trail/kolmaspart.h"

#include "base/window_and_view.h"
#include "cues/scenes_and_events.h"
#include "scenes/pictures.h"
#include "scenes/shared_canvas_and_grid.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cmath>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr float kTilt = 0.7F;     // degrees about the x axis
constexpr float kWarpPush = 2.0F; // seconds
constexpr int kCopies = 25;
constexpr int kCopySize = 255; // pixels
constexpr int kStartX = (kViewWidth - kCopySize) / 2;
constexpr int kStartY = 0;

// How far a step may go, in addition to two pixels that are always possible.
constexpr float kSmallStep = 2.5F; // pixels
constexpr float kWideStep = 10.0F;
constexpr float kWidestStep = 20.0F;

float flicker(float seconds)
{
    const double slow = 0.5 * (std::sin(15.0 * seconds) + 1.0);
    const double fast = 0.5 * (std::sin(30.0 * seconds + 23423.23) + 1.0);
    return static_cast<float>(0.3 * (slow + fast) + 0.05);
}

// One step of the walk. The sines are so fast that a step depends on the last bits of their
// arguments, so the walk looks random.
int stepX(float seconds, int i, float scale)
{
    const double phase = 7.25 * seconds * i;
    return static_cast<int>(std::sin(50.203 * seconds * i) * std::sin(phase) * (2.0 + scale));
}

int stepY(float seconds, int i, float scale)
{
    const double phase = 7.25 * seconds * i;
    return static_cast<int>(std::sin(2340.33 * seconds * i) * std::sin(phase + 21234.32) *
                            (2.0 + scale));
}

} // namespace

Kolmaspart::Kolmaspart()
{
    loadKeyed(image_, "data/additiivinen_aivo.tga");
    quad_.init(kQuadDepth);
    quad_.setTexture(image_.getTextureName());
    quad_.setRotationX(kTilt);
}

void Kolmaspart::syncEvent(int value)
{
    using namespace cues::image_trail;
    switch (value) {
    case kSmallSteps:
        stepScale_ = kSmallStep;
        break;
    case kWideSteps:
        stepScale_ = kWideStep;
        break;
    case kWidestSteps:
        stepScale_ = kWidestStep;
        break;
    case kPush:
        timeOffset_ += kWarpPush;
        break;
    default:
        break;
    }
}

void Kolmaspart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);
    drawWarpedGrid(seconds + timeOffset_);
    drawTrail(seconds);
    SDL_GL_SwapBuffers();
}

// All copies add up, the last one twice.
void Kolmaspart::drawTrail(float seconds)
{
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    image_.updateTexture();
    quad_.setAlpha(flicker(seconds));

    int x = kStartX;
    int y = kStartY;
    for (int i = 0; i < kCopies; ++i) {
        x += stepX(seconds, i, stepScale_);
        y += stepY(seconds, i, stepScale_);
        drawCopy(x, y);
    }
    drawCopy(x, y);
}

void Kolmaspart::drawCopy(int x, int y)
{
    quad_.place(x, y, kCopySize, kCopySize);
    quad_.draw();
}
