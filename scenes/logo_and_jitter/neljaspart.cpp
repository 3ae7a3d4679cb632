#include "scenes/logo_and_jitter/neljaspart.h"

#include "cues/scenes_and_events.h"
#include "scenes/pictures.h"
#include "scenes/shared_canvas_and_grid.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cstdlib>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr float kWarpPush = 2.0F; // seconds

// How far the copies may be shaken, in pixels: masks of a random number.
constexpr int kSmallShake = 7;
constexpr int kLargeShake = 15;

} // namespace

Neljaspart::Neljaspart()
{
    loadKeyed(logo_, "data/quentalogo.tga");
    quad_.init(kQuadDepth);
    loadKeyed(picture_, "data/koira.tga");
}

void Neljaspart::syncEvent(int value)
{
    if (value == cues::logo_and_jitter::kPush) {
        timeOffset_ += kWarpPush;
    }
}

void Neljaspart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    drawWarpedGrid(seconds + timeOffset_);
    drawLogo();
    drawShakenPicture();

    // The blending that the show begins with, and then the one that the next scene finds.
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    SDL_GL_SwapBuffers();
}

void Neljaspart::drawLogo()
{
    quad_.setTexture(logo_.getTextureName());
    quad_.place(0, 176, 256, 128); // the lower quarter is below the view
    quad_.draw();
}

// Three copies, each amplifying the light below it.
void Neljaspart::drawShakenPicture()
{
    glEnable(GL_BLEND);
    glBlendFunc(GL_DST_COLOR, GL_ONE);
    quad_.setTexture(picture_.getTextureName());
    drawPicture(128, 30);
    // Always x before y: another order of the random numbers would be another picture.
    const int smallX = std::rand() & kSmallShake;
    const int smallY = std::rand() & kSmallShake;
    drawPicture(125 + smallX, 27 + smallY);
    const int largeX = std::rand() & kLargeShake;
    const int largeY = std::rand() & kLargeShake;
    drawPicture(121 + largeX, 23 + largeY);
}

void Neljaspart::drawPicture(int x, int y)
{
    quad_.place(x, y, 512, 256);
    quad_.draw();
}
