#include "stage/enlarged_view.h"

#include <GL/gl.h>
#include <algorithm>
#include <cmath>
#include <dlfcn.h>
#include <optional>

namespace {

struct Viewport {
    int x = 0; // of the program's window, from its lower left corner
    int y = 0;
    int width = 0;
    int height = 0;
};

PictureSize window;
PictureSize buffer;
Fit fit = Fit::view;

// What the program has set, none until it does.
std::optional<PictureSize> firstView;
std::optional<Viewport> latestViewport;
std::optional<GLfloat> latestLineWidth;

// The function of this name that the program would have called without this library.
template <typename Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

// Buffer pixels for one of the program's.
double scale()
{
    if (fit == Fit::view && !firstView) {
        return 1.0;
    }
    const PictureSize fitted = fit == Fit::view ? *firstView : window;
    return std::min(static_cast<double>(buffer.width) / fitted.width,
                    static_cast<double>(buffer.height) / fitted.height);
}

// A place along one axis, from the program's pixels to the buffer's.
int scaled(int place, int windowLength, int bufferLength)
{
    return static_cast<int>(
        std::lround((place - windowLength / 2.0) * scale() + bufferLength / 2.0));
}

void setViewport(const Viewport& asked)
{
    static const auto kReal = original<decltype(&glViewport)>("glViewport");
    const int left = scaled(asked.x, window.width, buffer.width);
    const int bottom = scaled(asked.y, window.height, buffer.height);
    kReal(left, bottom, scaled(asked.x + asked.width, window.width, buffer.width) - left,
          scaled(asked.y + asked.height, window.height, buffer.height) - bottom);
}

void setLineWidth(GLfloat asked)
{
    static const auto kReal = original<decltype(&glLineWidth)>("glLineWidth");
    kReal(asked * static_cast<GLfloat>(scale()));
}

} // namespace

void enlarge(PictureSize windowSize, PictureSize bufferSize, Fit wantedFit)
{
    window = windowSize;
    buffer = bufferSize;
    fit = wantedFit;
    if (latestViewport) {
        setViewport(*latestViewport);
    }
    if (latestLineWidth) {
        setLineWidth(*latestLineWidth);
    }
}

// What follows stands before OpenGL's own functions of these names.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height)
{
    latestViewport = Viewport{x, y, width, height};
    if (!firstView) {
        firstView = PictureSize{width, height};
    }
    setViewport(*latestViewport);
}

void glLineWidth(GLfloat width)
{
    latestLineWidth = width;
    setLineWidth(width);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
