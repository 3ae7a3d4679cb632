#include "scenes/twister/tokapart.h"

#include "base/window_and_view.h"
#include "cues/scenes_and_events.h"
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
constexpr double kJolt = 2.24;       // radians, for a flash of 1

namespace events = cues::twister;

// A title, its place in the view, and the events that show and hide it. Titles are drawn in this
// order.
struct Title {
    const char* path;
    int x, y, width, height; // pixels
    int shownBy, hiddenBy;
};
constexpr auto kTitleTable = std::to_array<Title>({
    {"data/the.tga",       0,  176, 128, 32,  events::kTheAppears,       events::kTheGoes      },
    {"data/end.tga",       0,  208, 256, 64,  events::kEndAppears,       events::kEndGoes      },
    {"data/kso.tga",       0,  0,   256, 128, events::kKsoAppears,       events::kKsoGoes      },
    {"data/by.tga",        60, 70,  64,  32,  events::kByAppears,        events::kByGoes       },
    {"data/velmorant.tga", 80, 80,  512, 64,  events::kVelmorantAppears, events::kVelmorantGoes},
});

constexpr std::array<std::size_t, kTitleTable.size()> kLoadingOrder = {2, 3, 4, 0, 1};

// The column is squeezed onto the right half of the view.
constexpr int kColumnX = kViewWidth / 2;

// A bitmap's pixels as words.
std::uint32_t* words(Bitmap& bitmap)
{
    return reinterpret_cast<std::uint32_t*>(bitmap.getPixels());
}

// The column's shape in one row of the canvas.
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
    static_assert(kTitleTable.size() == kTitles);
    for (const std::size_t slot : kLoadingOrder) {
        loadKeyed(titles_[slot], kTitleTable[slot].path);
    }
    titleQuad_.init(kQuadDepth);
    titleQuad_.setAlpha(1.0F);

    background_.load("data/tokapart_tausta.tga", 32);
    background_.makeTexture();
    backgroundQuad_.init(kQuadDepth);
    backgroundQuad_.setTexture(background_.getTextureName());
    backgroundQuad_.place(0, 0, kViewWidth, kViewHeight);

    canvas_.create(kCanvasWidth, kCanvasHeight, 32);
    canvas_.makeTexture();

    loadOpaque(columnTexture_, kColumnPath);
    requireSize(columnTexture_, kColumnTextureSize, kColumnTextureSize, kColumnPath);

    twister_.setWidth(kCanvasWidth);
    twister_.setHeight(kCanvasHeight);
    twister_.setTarget(words(canvas_));
    twister_.setSource(words(columnTexture_));
    twisterQuad_.init(kQuadDepth);
    twisterQuad_.setAlpha(1.0F);
    twisterQuad_.setTexture(canvas_.getTextureName());
    twisterQuad_.place(kColumnX, 0, kViewWidth - kColumnX, kViewHeight);
}

void Tokapart::syncEvent(int value)
{
    for (std::size_t slot = 0; slot < kTitles; ++slot) {
        const Title& title = kTitleTable[slot];
        if (value == title.shownBy || value == title.hiddenBy) {
            titleOn_[slot] = value == title.shownBy ? 1 : 0;
            flash_ = 1.0F;
        }
    }
}

// The column covers all titles but the last one, which is drawn again over it.
void Tokapart::drawFrame(float seconds)
{
    glClear(GL_COLOR_BUFFER_BIT);
    backgroundQuad_.draw();
    const Rectangle lastTitle = drawTitles();
    advance(seconds);
    drawColumn(seconds);
    drawTitleQuad(lastTitle);
    SDL_GL_SwapBuffers();
}

// Returns the rectangle of the last title, which is empty if no title is shown.
Tokapart::Rectangle Tokapart::drawTitles()
{
    Rectangle last = {0, 0, 0, 0};
    for (std::size_t slot = 0; slot < kTitles; ++slot) {
        if (titleOn_[slot] != 0) {
            const Title& title = kTitleTable[slot];
            last = {title.x, title.y, title.width, title.height};
            titleQuad_.setTexture(titles_[slot].getTextureName());
            drawTitleQuad(last);
        }
    }
    return last;
}

// The jolt dies away, but not in the very first frame.
void Tokapart::advance(float seconds)
{
    if (prevTime_ > 0.0F) {
        flash_ = static_cast<float>(flash_ * kFlashDecay);
    }
    prevTime_ = seconds;
}

void Tokapart::drawColumn(float seconds)
{
    canvas_.clear();
    for (int row = 0; row < kCanvasHeight; ++row) {
        twister_.setRadius(columnRadius(seconds, row));
        twister_.drawRow(columnCentre(seconds, row), row, columnAngle(seconds, flash_, row));
    }
    canvas_.updateTexture();
    twisterQuad_.draw();
}

void Tokapart::drawTitleQuad(const Rectangle& r)
{
    titleQuad_.place(r.x, r.y, r.width, r.height);
    titleQuad_.draw();
}
