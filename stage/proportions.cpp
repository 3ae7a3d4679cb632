#include "stage/proportions.h"

#include <SDL_syswm.h>

#ifdef SDL_VIDEO_DRIVER_X11

#include <X11/Xutil.h>
#include <algorithm>
#include <dlfcn.h>

void keepProportions(const Sdl2& sdl, SDL_Window* window, PictureSize proportions)
{
    SDL_SysWMinfo info{};
    SDL_VERSION(&info.version);
    if (sdl.getWindowWMInfo(window, &info) == SDL_FALSE || info.subsystem != SDL_SYSWM_X11) {
        return;
    }
    // SDL has loaded it, by itself.
    void* const xlib = ::dlopen("libX11.so.6", RTLD_NOW | RTLD_LOCAL);
    if (xlib == nullptr) {
        return;
    }
    const auto get =
        reinterpret_cast<decltype(&XGetWMNormalHints)>(::dlsym(xlib, "XGetWMNormalHints"));
    const auto set =
        reinterpret_cast<decltype(&XSetWMNormalHints)>(::dlsym(xlib, "XSetWMNormalHints"));
    XSizeHints hints{};
    long known = 0;
    if (get != nullptr && set != nullptr) {
        get(info.info.x11.display, info.info.x11.window, &hints, &known);
        hints.flags |= PAspect | PMinSize;
        hints.min_aspect = {proportions.width, proportions.height};
        hints.max_aspect = hints.min_aspect;
        hints.min_width = std::min(proportions.width, kWindowWidth) / 2;
        hints.min_height = std::min(proportions.height, kWindowHeight) / 2;
        set(info.info.x11.display, info.info.x11.window, &hints);
    }
    ::dlclose(xlib);
}

#else

void keepProportions(const Sdl2& /*sdl*/, SDL_Window* /*window*/, PictureSize /*proportions*/)
{
}

#endif
