#include "scenes/wire_cubes/viidespart.h"

#include "cues/scenes_and_events.h"
#include "scenes/shared_canvas_and_grid.h"

#include <GL/gl.h>
#include <SDL.h>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr float kNearZ = -0.5F;
constexpr int kCopies = 25;

// Per drawn frame.
constexpr double kRecession = 0.1;
constexpr double kGridFade = 0.03;
constexpr double kSpreadDecay = 0.05;

constexpr double kMinGridAlpha = 0.5;
constexpr double kRestingSpread = 1.0;
constexpr float kSmallBlowSpread = 1.25F;
constexpr float kLargeBlowSpread = 3.75F;

struct Colour {
    float r, g, b;
};
constexpr std::array kLineColours = {
    Colour{0.0875F, 0.1125F, 0.2375F},
    Colour{0.1875F, 0.0875F, 0.05F  },
    Colour{0.1375F, 0.0875F, 0.1875F},
};

// How far copy i of a cloud trembles away along one axis. The sines are so fast that this depends
// on the last bits of their arguments.
float tremble(float spread, double speed, float seconds, int i, double phase)
{
    return static_cast<float>(spread * std::sin(speed * seconds * i + phase));
}

} // namespace

Viidespart::Viidespart()
{
    for (std::size_t i = 0; i < kCubes; ++i) {
        CubeMesh& cube = cubes_[i];
        const auto& [r, g, b] = kLineColours[i];
        cube.build(1.0F);
        cube.setDrawMode(CubeMesh::kWire);
        cube.setAlpha(0.1F);
        cube.setScale(2.0F, 2.0F, 2.0F);
        cube.setLineWidth(5.0F);
        cube.setLineColour(r, g, b);
    }
    offsets_.fill({0.0F, 0.0F, kNearZ});
}

void Viidespart::syncEvent(int value)
{
    using namespace cues::wire_cubes;
    switch (value) {
    case kPull:
    case kPullToo:
        pulled_ = true;
        break;
    case kSmallBlow:
        smallBlow_ = true;
        break;
    case kLargeBlow:
        largeBlow_ = true;
        break;
    default:
        break;
    }
}

void Viidespart::drawFrame(float seconds)
{
    glDisable(GL_DEPTH_TEST);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    advance();

    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    drawWarpedGrid(seconds, gridAlpha_);

    glBlendFunc(GL_DST_COLOR, GL_ONE);
    placeCubes(seconds);
    drawClouds(seconds);
    SDL_GL_SwapBuffers();
}

// Moves everything that events move by one frame's step.
void Viidespart::advance()
{
    moveCubes();
    if (gridAlpha_ - kGridFade > kMinGridAlpha) {
        gridAlpha_ = static_cast<float>(gridAlpha_ - kGridFade);
    }
    spread();
    pulled_ = false;
    smallBlow_ = false;
    largeBlow_ = false;
}

// The cubes recede, unless they are pulled back, which flashes the grid.
void Viidespart::moveCubes()
{
    for (Offset& offset : offsets_) {
        offset.z = pulled_ ? kNearZ : static_cast<float>(offset.z - kRecession);
    }
    if (pulled_) {
        gridAlpha_ = 1.0F;
    }
}

// The clouds draw together, and blows drive them apart.
void Viidespart::spread()
{
    if (spread_ > kRestingSpread) {
        spread_ = static_cast<float>(spread_ - kSpreadDecay);
    }
    if (smallBlow_) {
        spread_ += kSmallBlowSpread;
    }
    if (largeBlow_) {
        spread_ += kLargeBlowSpread;
    }
}

// All spin alike; one swings against the other, and the third up and down.
void Viidespart::placeCubes(float seconds)
{
    for (CubeMesh& cube : cubes_) {
        cube.setRotation(static_cast<float>(375.5 * seconds), static_cast<float>(365.75 * seconds),
                         static_cast<float>(335.7 * seconds));
    }
    const double swing = std::sin(static_cast<double>(seconds));
    offsets_[0].x = static_cast<float>(4.5 * swing);
    offsets_[0].y = static_cast<float>(2.0 * swing);
    offsets_[1].x = static_cast<float>(-4.5 * swing);
    offsets_[1].y = static_cast<float>(2.0 * swing);
    offsets_[2].x = 0.0F;
    offsets_[2].y = static_cast<float>(-4.5 * swing);
}

void Viidespart::drawClouds(float seconds)
{
    for (int i = 0; i < kCopies; ++i) {
        const float x = tremble(spread_, 123.32, seconds, i, 0.0);
        const float y = tremble(spread_, 1133.23, seconds, i, 234.324);
        const float z = tremble(spread_, 1123.4, seconds, i, 234.324);
        for (std::size_t k = 0; k < kCubes; ++k) {
            const Offset& offset = offsets_[k];
            cubes_[k].setPosition(offset.x + x, offset.y + y, offset.z + z);
            cubes_[k].draw();
        }
    }
}
