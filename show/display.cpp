#include "show/display.h"

#include "base/fatal.h"
#include "base/window_and_view.h"
#include "render/projection.h"
#include "show/options.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// A library that takes SDL's place may lack this call.
#pragma weak SDL_VideoDriverName

namespace {

constexpr int kBitsPerPixel = 16;
constexpr double kNearPlane = 0.1;
constexpr double kFarPlane = 400.0;

constexpr const char* kNoMode = "\nError swithing to %dx%d! Please make sure you"
                                "\nHave %dx%d mode defined in your XF86Config!\n\n";

// The mode that is being set right now; at other times its width is 0.
struct {
    int width = 0;
    int height = 0;
} modeAtWork;

// Where no display answers, SDL may take a driver that draws into memory: the show would play to
// its end unseen, and no key could reach it. Who names a driver gets that one.
bool drawsUnseen()
{
    const char* const wanted = std::getenv("SDL_VIDEODRIVER");
    if (SDL_VideoDriverName == nullptr || (wanted != nullptr && *wanted != '\0')) {
        return false;
    }
    std::array<char, 16> name{};
    return SDL_VideoDriverName(name.data(), static_cast<int>(name.size())) != nullptr &&
           std::string_view(name.data()) == "offscreen";
}

// A server without OpenGL makes Xlib end the process while SDL sets the mode, with the status of a
// show that ended well. It is too late for exit() to take another status.
void reportModeAtExit()
{
    if (modeAtWork.width != 0) {
        std::fprintf(stderr, kNoMode, modeAtWork.width, modeAtWork.height, modeAtWork.width,
                     modeAtWork.height);
        std::fflush(nullptr);
        std::_Exit(0);
    }
}

SDL_Surface* setMode(int width, int height, Uint32 flags)
{
    std::atexit(reportModeAtExit);
    modeAtWork = {width, height};
    SDL_Surface* const surface = SDL_SetVideoMode(width, height, kBitsPerPixel, flags);
    modeAtWork = {};
    return surface;
}

} // namespace

void initVideo(int width, int height)
{
    if (SDL_Init(SDL_INIT_VIDEO) < 0 || drawsUnseen()) {
        fatal(stderr, 0, "\nError initializing SDL!\n\n");
    }

    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);

    const Uint32 flags = SDL_OPENGL | (options.fullscreen ? SDL_FULLSCREEN : 0U);
    if (setMode(width, height, flags) == nullptr) {
        fatal(stderr, 0, kNoMode, width, height, width, height);
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
