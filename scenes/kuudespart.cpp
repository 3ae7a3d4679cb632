#include "scenes/kuudespart.h"

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

    greetImage_.load("data/greet.tga", 32);
    greetImage_.makeTexture();
    greetQuad_.init(kGreetDepth);
    greetQuad_.setTexture(greetImage_.getTextureName());
    for (Position& position : linePos_) {
        position.x = std::rand() % 384;
        position.y = std::rand() % 220;
    }
}

void Kuudespart::syncEvent(int value)
{
    constexpr int kFirstEvent = 128;
    const int line = value - kFirstEvent;
    if (line >= 0 && line < static_cast<int>(kLines)) {
        lineAlpha_[static_cast<std::size_t>(line)] = 1.0F;
    }
}

void Kuudespart::drawFrame(float seconds)
{
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    tilt_ = static_cast<float>(25.0 * std::sin(static_cast<double>(seconds)));
    tube_.setLightTexture(lightImage_.getTextureName());
    tube_.setBaseTexture(ballImage_.getTextureName());
    tube_.setRotation(tilt_, 0.0F, static_cast<float>(80.0 * seconds));
    tube_.draw(seconds);

    glDepthFunc(GL_ALWAYS);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (std::size_t k = 0; k < kLines; ++k) {
        if (lineAlpha_[k] > 0.0F) {
            drawLine(k);
        }
    }

    SDL_GL_SwapBuffers();
}

void Kuudespart::drawLine(std::size_t k)
{
    const auto band = static_cast<double>(k);
    greetQuad_.setTexCoords(0.0F, static_cast<float>(band * kBandHeight), 1.0F,
                            static_cast<float>((band + 1.0) * kBandHeight));
    greetQuad_.setAlpha(lineAlpha_[k]);
    greetQuad_.place(linePos_[k].x, linePos_[k].y, kLineWidth, kLineHeight);
    greetQuad_.draw();

    lineAlpha_[k] = static_cast<float>(lineAlpha_[k] * kFade);
    if (lineAlpha_[k] < kInvisible) {
        lineAlpha_[k] = 0.0F;
    }
}
