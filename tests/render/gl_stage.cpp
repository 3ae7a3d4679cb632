#include "tests/render/gl_stage.h"

#include "runtime/display.h"
#include "runtime/options.h"

#include <GL/gl.h>
#include <algorithm>

namespace {

constexpr int kWindowWidth = 640;
constexpr int kWindowHeight = 480;
constexpr int kViewWidth = 640;
constexpr int kViewHeight = 272;

std::vector<Pixel> readPixels(int y, int height)
{
    std::vector<Pixel> pixels(static_cast<std::size_t>(kWindowWidth) *
                              static_cast<std::size_t>(height));
    glReadPixels(0, y, kWindowWidth, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

} // namespace

void raiseCurtain()
{
    if (displayMetrics.viewportWidth == 0) {
        options.fullscreen = 0;
        initVideo(kWindowWidth, kWindowHeight);
        initGL(kWindowWidth, kWindowHeight, kViewWidth, kViewHeight);
    }
    glClear(GL_COLOR_BUFFER_BIT);
}

Pixel Picture::at(int x, int y) const
{
    return pixels.at(static_cast<std::size_t>(y) * kViewWidth + static_cast<std::size_t>(x));
}

Picture lookAtViewport()
{
    Picture picture{readPixels(displayMetrics.viewportY, kViewHeight)};
    for (auto top = picture.pixels.begin(), bottom = picture.pixels.end() - kViewWidth;
         top < bottom; top += kViewWidth, bottom -= kViewWidth) {
        std::swap_ranges(top, top + kViewWidth, bottom);
    }
    return picture;
}

int pixelsOutsideViewport()
{
    const auto lit = [](const Pixel& pixel) { return pixel[0] + pixel[1] + pixel[2] > 0; };
    const int bandAbove = displayMetrics.viewportY + kViewHeight;
    const auto below = readPixels(0, displayMetrics.viewportY);
    const auto above = readPixels(bandAbove, kWindowHeight - bandAbove);
    return static_cast<int>(std::count_if(below.begin(), below.end(), lit) +
                            std::count_if(above.begin(), above.end(), lit));
}
