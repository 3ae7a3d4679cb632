#include "scenes/tokapart.h"

#include "scenes/pictures.h"

#include <GL/gl.h>
#include <SDL.h>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr int kCanvasWidth = 512;
constexpr int kCanvasHeight = 256;

constexpr const char* kColumnPath = "data/texture2.tga";
constexpr unsigned kColumnTextureSize = 256;

constexpr double kFlashDecay = 0.55; // per drawn frame
constexpr double kJolt = 2.24;       // radians, of a whole flash

constexpr std::array<std::size_t, 5> kLoadingOrder = {2, 3, 4, 0, 1};

// A canvas's pixels as words.
std::uint32_t* words(Bitmap& bitmap)
{
    return reinterpret_cast<std::uint32_t*>(bitmap.getPixels());
}

// The column in one row of the canvas.
int columnRadius(float seconds, int row)
{
    return static_cast<int>(125.0 + 45.0 * std::sin(4.5 * seconds + 0.05 * row));
}

int columnCentre(float seconds, int row)
{
    return static_cast<int>(256.0 + 90.0 * std::sin(seconds + 0.02 * row));
}

float columnAngle(float seconds, float flash, int row)
{
    return static_cast<float>(3.0 * seconds + kJolt * flash + 0.02 * row);
}

} // namespace

Tokapart::Tokapart()
{
    for (const std::size_t slot : kLoadingOrder) {
        loadKeyed(titles_[slot], kTitles[slot].path);
    }
    titleQuad_.init(kQuadDepth);
    titleQuad_.setAlpha(1.0F);

    background_.load("data/tokapart_tausta.tga", 32);
    background_.makeTexture();
    backgroundQuad_.init(kQuadDepth);
    backgroundQuad_.setTexture(background_.getTextureName());
    backgroundQuad_.place(0, 0, 640, 272);

    canvas_.create(kCanvasWidth, kCanvasHeight, 32);
    canvas_.makeTexture();

    loadOpaque(columnTexture_, kColumnPath);
    requireSize(columnTexture_, kColumnTextureSize, kColumnTextureSize, kColumnPath);

    twisterQuad_.init(kQuadDepth);
    twisterQuad_.setAlpha(1.0F);
}

void Tokapart::syncEvent(int value)
{
    constexpr int kFirstEvent = 128;
    const int event = value - kFirstEvent;
    if (event < 0 || event >= 2 * static_cast<int>(kTitles.size())) {
        return;
    }
    flash_ = 1.0F;
    titleOn_[static_cast<std::size_t>(event / 2)] = event % 2 == 0 ? 1 : 0;
}

// The column covers the titles, but for the last one, which is drawn again over it.
void Tokapart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);
    backgroundQuad_.draw();

    twister_.setWidth(kCanvasWidth);
    twister_.setHeight(kCanvasHeight);
    twister_.setTarget(words(canvas_));
    twister_.setSource(words(columnTexture_));
    canvas_.clear();

    Rectangle lastTitle = {0, 0, 0, 0};
    for (std::size_t slot = 0; slot < kTitles.size(); ++slot) {
        if (titleOn_[slot] != 0) {
            lastTitle = kTitles[slot].rectangle;
            titleQuad_.setTexture(titles_[slot].getTextureName());
            drawTitleQuad(lastTitle);
        }
    }

    // The very first frame shows the jolt whole.
    if (prevTime_ > 0.0F) {
        flash_ = static_cast<float>(flash_ * kFlashDecay);
    }

    for (int row = 0; row < kCanvasHeight; ++row) {
        twister_.setRadius(columnRadius(seconds, row));
        twister_.drawRow(columnCentre(seconds, row), row, columnAngle(seconds, flash_, row));
    }
    canvas_.updateTexture();
    twisterQuad_.setTexture(canvas_.getTextureName());
    twisterQuad_.setAlpha(1.0F);
    twisterQuad_.place(320, 0, 320, 272);
    twisterQuad_.draw();

    drawTitleQuad(lastTitle);

    SDL_GL_SwapBuffers();
    prevTime_ = seconds;
}

void Tokapart::drawTitleQuad(const Rectangle& r)
{
    titleQuad_.place(r.x, r.y, r.width, r.height);
    titleQuad_.draw();
}
