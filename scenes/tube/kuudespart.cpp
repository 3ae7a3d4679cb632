#include "scenes/tube/kuudespart.h"

#include "base/window_and_view.h"
#include "scenes/pictures.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace {

constexpr const char* kHeightMapPath = "data/muljumap.tga";
constexpr unsigned kHeightMapSize = 1024;

constexpr float kGreetDepth = 10.0F;
constexpr int kLineWidth = 256; // pixels
constexpr int kLineHeight = 51;
constexpr double kBandHeight = 0.099609375; // of the greetings picture: 51 of its 512 rows

constexpr double kFade = 0.98; // per drawn frame
constexpr double kInvisible = 0.001;

} // namespace

Kuudespart::Kuudespart()
{
    heightMap_.load(kHeightMapPath, 8);
    requireSize(heightMap_, kHeightMapSize, kHeightMapSize, kHeightMapPath);
    tube_.build(64, 64, 1.0F, 40.0F);
    tube_.setHeightMaps(heightMap_.getPixels(), heightMap_.getPixels());

    loadOpaque(lightImage_, "data/valo.tga");
    loadOpaque(ballImage_, "data/oranssipallotexture2.tga");
    tube_.setLightTexture(lightImage_.getTextureName());
    tube_.setBaseTexture(ballImage_.getTextureName());

    greetImage_.load("data/greet.tga", 32);
    greetImage_.makeTexture();
    greetQuad_.init(kGreetDepth);
    greetQuad_.setTexture(greetImage_.getTextureName());
    for (Position& position : linePos_) {
        position.x = std::rand() % (kViewWidth - kLineWidth);
        position.y = std::rand() % (kViewHeight - kLineHeight - 1);
    }
}

void Kuudespart::syncEvent(int value)
{
    const int line = value - cues::tube::kFirstGreeting;
    if (line >= 0 && line < static_cast<int>(kLines)) {
        lineAlpha_[static_cast<std::size_t>(line)] = 1.0F;
    }
}

void Kuudespart::drawFrame(float seconds)
{
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawTube(seconds);

    glDepthFunc(GL_ALWAYS);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    drawLines();
    fadeLines();
    SDL_GL_SwapBuffers();
}

// The flight rolls steadily and sways up and down.
void Kuudespart::drawTube(float seconds)
{
    tilt_ = static_cast<float>(25.0 * std::sin(static_cast<double>(seconds)));
    tube_.setRotation(tilt_, 0.0F, static_cast<float>(80.0 * seconds));
    tube_.draw(seconds);
}

void Kuudespart::drawLines()
{
    for (std::size_t k = 0; k < kLines; ++k) {
        if (lineAlpha_[k] > 0.0F) {
            drawLine(k);
        }
    }
}

void Kuudespart::drawLine(std::size_t k)
{
    const auto band = static_cast<double>(k);
    greetQuad_.setTexCoords(0.0F, static_cast<float>(band * kBandHeight), 1.0F,
                            static_cast<float>((band + 1.0) * kBandHeight));
    greetQuad_.setAlpha(lineAlpha_[k]);
    greetQuad_.place(linePos_[k].x, linePos_[k].y, kLineWidth, kLineHeight);
    greetQuad_.draw();
}

void Kuudespart::fadeLines()
{
    for (float& alpha : lineAlpha_) {
        alpha = static_cast<float>(alpha * kFade);
        if (alpha < kInvisible) {
            alpha = 0.0F;
        }
    }
}
