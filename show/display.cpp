#include "show/display.h"

#include "base/fatal.h"
#include "base/window_and_view.h"
#include "render/projection.h"
#include "show/options.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>
#include <cstdlib>

namespace {

constexpr int kBitsPerPixel = 16;
constexpr double kNearPlane = 0.1;
constexpr double kFarPlane = 400.0;

} // namespace

void initVideo(int width, int height)
{
    if (SDL_Init(SDL_INIT_VIDEO) < 0) {
        fatal(stderr, 0, "\nError initializing SDL!\n\n");
    }

    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);

    const Uint32 flags = SDL_OPENGL | (options.fullscreen ? SDL_FULLSCREEN : 0U);
    if (SDL_SetVideoMode(width, height, kBitsPerPixel, flags) == nullptr) {
        fatal(stderr, 0,
              "\nError swithing to %dx%d! Please make sure you"
              "\nHave %dx%d mode defined in your XF86Config!\n\n",
              width, height, width, height);
    }

    std::atexit(SDL_Quit);
    SDL_ShowCursor(0);
}

void initGL(int windowWidth, int windowHeight, int viewWidth, int viewHeight)
{
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glShadeModel(GL_SMOOTH);

    int x = 0;
    int y = 0;
    if (viewWidth != windowWidth || viewHeight != windowHeight) {
        x = (windowWidth - viewWidth) / 2;
        y = (windowHeight - viewHeight) / 2;
    }
    glViewport(x, y, viewWidth, viewHeight);

    displayMetrics.viewportX = x;
    displayMetrics.viewportY = y;
    displayMetrics.viewportWidth = viewWidth;
    displayMetrics.viewportHeight = viewHeight;
    displayMetrics.aspect = static_cast<float>(viewWidth) / static_cast<float>(viewHeight);

    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(kFieldOfView, displayMetrics.aspect, kNearPlane, kFarPlane);
    displayMetrics.fieldOfView = kFieldOfView;

    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glHint(GL_POINT_SMOOTH_HINT, GL_NICEST);
}
