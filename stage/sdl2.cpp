#include "stage/sdl2.h"

#include <cstdlib>
#include <dlfcn.h>
#include <string_view>

namespace {

constexpr const char* kLibrary = "libSDL2-2.0.so.0";

template <typename Function>
bool find(void* library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

bool findAll(void* library, Sdl2& sdl)
{
    return find(library, "SDL_GetError", sdl.getError) &&
           find(library, "SDL_InitSubSystem", sdl.initSubSystem) &&
           find(library, "SDL_QuitSubSystem", sdl.quitSubSystem) &&
           find(library, "SDL_GetCurrentVideoDriver", sdl.getCurrentVideoDriver) &&
           find(library, "SDL_GetNumVideoDisplays", sdl.getNumVideoDisplays) &&
           find(library, "SDL_GetDisplayBounds", sdl.getDisplayBounds) &&
           find(library, "SDL_GetDisplayUsableBounds", sdl.getDisplayUsableBounds) &&
           find(library, "SDL_GetCurrentDisplayMode", sdl.getCurrentDisplayMode) &&
           find(library, "SDL_GetWindowDisplayIndex", sdl.getWindowDisplayIndex) &&
           find(library, "SDL_DisableScreenSaver", sdl.disableScreenSaver) &&
           find(library, "SDL_CreateWindow", sdl.createWindow) &&
           find(library, "SDL_DestroyWindow", sdl.destroyWindow) &&
           find(library, "SDL_HideWindow", sdl.hideWindow) &&
           find(library, "SDL_ShowWindow", sdl.showWindow) &&
           find(library, "SDL_SetWindowSize", sdl.setWindowSize) &&
           find(library, "SDL_SetWindowPosition", sdl.setWindowPosition) &&
           find(library, "SDL_SetWindowIcon", sdl.setWindowIcon) &&
           find(library, "SDL_GetWindowWMInfo", sdl.getWindowWMInfo) &&
           find(library, "SDL_ShowCursor", sdl.showCursor) &&
           find(library, "SDL_ShowSimpleMessageBox", sdl.showSimpleMessageBox) &&
           find(library, "SDL_PollEvent", sdl.pollEvent) &&
           find(library, "SDL_LoadBMP_RW", sdl.loadBMP_RW) &&
           find(library, "SDL_RWFromFile", sdl.rwFromFile) &&
           find(library, "SDL_FreeSurface", sdl.freeSurface) &&
           find(library, "SDL_GL_SetAttribute", sdl.glSetAttribute) &&
           find(library, "SDL_GL_CreateContext", sdl.glCreateContext) &&
           find(library, "SDL_GL_DeleteContext", sdl.glDeleteContext) &&
           find(library, "SDL_GL_GetDrawableSize", sdl.glGetDrawableSize) &&
           find(library, "SDL_GL_GetProcAddress", sdl.glGetProcAddress) &&
           find(library, "SDL_GL_SetSwapInterval", sdl.glSetSwapInterval) &&
           find(library, "SDL_GL_SwapWindow", sdl.glSwapWindow);
}

} // namespace

bool isSet(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

const Sdl2* loadSdl2()
{
    static const Sdl2* const kLoaded = []() -> const Sdl2* {
        static Sdl2 sdl;
        void* const library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        return library != nullptr && findAll(library, sdl) ? &sdl : nullptr;
    }();
    return kLoaded;
}

std::string openVideo(const Sdl2& sdl)
{
    if (sdl.initSubSystem(SDL_INIT_VIDEO) < 0) {
        return sdl.getError();
    }
    // Where there is no display, SDL would draw into memory.
    const std::string_view driver = sdl.getCurrentVideoDriver();
    if (!isSet("SDL_VIDEODRIVER") && (driver == "offscreen" || driver == "dummy")) {
        sdl.quitSubSystem(SDL_INIT_VIDEO);
        return "there is no display";
    }
    return "";
}
