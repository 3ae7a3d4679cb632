#include "scenes/closing/loppupart.h"

#include "base/window_and_view.h"

#include <GL/gl.h>
#include <SDL.h>
#include <cmath>
#include <cstdint>

namespace {

constexpr float kQuadDepth = 20.0F;
constexpr int kVertexCount = 600;
constexpr int kWarmFigure = 1;
constexpr int kThickness = 10;
constexpr int kCanvasWidth = 256;
constexpr int kCanvasHeight = 128;
constexpr int kBlurLevels = 10;

constexpr double kPhaseStep = 0.11; // per drawn frame
constexpr float kDimming = 0.02F;   // so that the many lines do not burn out

void makeCanvas(Bitmap& bitmap)
{
    bitmap.create(kCanvasWidth, kCanvasHeight, 32);
    bitmap.setAlpha(1.0F);
    bitmap.makeTexture();
}

} // namespace

Loppupart::Loppupart()
{
    makeCanvas(lineBitmap_);
    makeCanvas(blurBitmap_);

    lines_.create(kVertexCount);
    lines_.generate(kWarmFigure);
    lines_.setTarget(lineBitmap_.getPixels(), kCanvasWidth, kCanvasHeight);
    lines_.setThickness(kThickness);

    blur_.build(kCanvasWidth, kCanvasHeight);
    blur_.setSource(lineBitmap_.getPixels());
    blur_.setTarget(reinterpret_cast<std::uint32_t*>(blurBitmap_.getPixels()));

    quad_.init(kQuadDepth);
    quad_.setAlpha(1.0F);

    titleImage_.load("data/kso.tga", 32);
    titleImage_.setAlpha(1.0F);
    titleImage_.setColourKeyAlpha(0, 0, 0, 0);
    titleImage_.makeTexture();
}

void Loppupart::syncEvent(int /*value*/)
{
}

void Loppupart::drawFrame(float /*seconds*/)
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glDepthFunc(GL_ALWAYS);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    drawFigure();
    advance();
    presentFire();

    glEnable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_ONE_MINUS_SRC_COLOR);
    burnTitle();
    SDL_GL_SwapBuffers();
}

// The figure turns about two axes and swings between near and far.
void Loppupart::drawFigure()
{
    const auto depth = static_cast<float>(-2.5 * (0.5 * std::sin(0.5 * phase_) + 0.5) - 2.0);
    lineBitmap_.clear();
    lines_.setAngleY(static_cast<float>(0.7 * phase_));
    lines_.setAngleZ(phase_);
    lines_.setPosition(0.0F, 0.0F, depth);
    lines_.transform();
    lines_.scaleColours(kDimming);
    lines_.draw();
}

void Loppupart::advance()
{
    phase_ = static_cast<float>(phase_ + kPhaseStep);
}

// The figure, smeared, over the whole view.
void Loppupart::presentFire()
{
    blur_.render(kBlurLevels);
    blurBitmap_.setAlpha(1.0F);
    blurBitmap_.updateTexture();
    quad_.setTexture(blurBitmap_.getTextureName());
    quad_.place(0, 0, kViewWidth, kViewHeight);
    quad_.draw();
}

// The title takes away its own colour: white burns black, black leaves the fire.
void Loppupart::burnTitle()
{
    quad_.setTexture(titleImage_.getTextureName());
    quad_.place(192, 60, 256, 128);
    quad_.draw();
}
