// SDL 2, as far as the stage uses it. It is loaded at run time, since many of its functions have
// the names of SDL 1.2's, in whose place the stage stands.
#pragma once

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <string>

struct Sdl2 {
    decltype(&SDL_GetError) getError = nullptr;
    decltype(&SDL_InitSubSystem) initSubSystem = nullptr;
    decltype(&SDL_QuitSubSystem) quitSubSystem = nullptr;
    decltype(&SDL_GetCurrentVideoDriver) getCurrentVideoDriver = nullptr;
    decltype(&SDL_GetNumVideoDisplays) getNumVideoDisplays = nullptr;
    decltype(&SDL_GetDisplayBounds) getDisplayBounds = nullptr;
    decltype(&SDL_GetDisplayUsableBounds) getDisplayUsableBounds = nullptr;
    decltype(&SDL_GetCurrentDisplayMode) getCurrentDisplayMode = nullptr;
    decltype(&SDL_GetWindowDisplayIndex) getWindowDisplayIndex = nullptr;
    decltype(&SDL_DisableScreenSaver) disableScreenSaver = nullptr;
    decltype(&SDL_CreateWindow) createWindow = nullptr;
    decltype(&SDL_DestroyWindow) destroyWindow = nullptr;
    decltype(&SDL_HideWindow) hideWindow = nullptr;
    decltype(&SDL_ShowWindow) showWindow = nullptr;
    decltype(&SDL_SetWindowSize) setWindowSize = nullptr;
    decltype(&SDL_SetWindowPosition) setWindowPosition = nullptr;
    decltype(&SDL_SetWindowIcon) setWindowIcon = nullptr;
    // From <SDL_syswm.h>, which brings all of X11's names with it.
    SDL_bool (*getWindowWMInfo)(SDL_Window*, struct SDL_SysWMinfo*) = nullptr;
    decltype(&SDL_ShowCursor) showCursor = nullptr;
    decltype(&SDL_ShowSimpleMessageBox) showSimpleMessageBox = nullptr;
    decltype(&SDL_PollEvent) pollEvent = nullptr;
    decltype(&SDL_LoadBMP_RW) loadBMP_RW = nullptr;
    decltype(&SDL_RWFromFile) rwFromFile = nullptr;
    decltype(&SDL_FreeSurface) freeSurface = nullptr;
    decltype(&SDL_GL_SetAttribute) glSetAttribute = nullptr;
    decltype(&SDL_GL_CreateContext) glCreateContext = nullptr;
    decltype(&SDL_GL_DeleteContext) glDeleteContext = nullptr;
    decltype(&SDL_GL_GetDrawableSize) glGetDrawableSize = nullptr;
    decltype(&SDL_GL_GetProcAddress) glGetProcAddress = nullptr;
    decltype(&SDL_GL_SetSwapInterval) glSetSwapInterval = nullptr;
    decltype(&SDL_GL_SwapWindow) glSwapWindow = nullptr;
};

// Null where SDL 2 is not installed. The library stays loaded.
const Sdl2* loadSdl2();

// Whether an environment variable has a value.
bool isSet(const char* variable);

// Opens SDL's video on a display that somebody sees. Returns why it cannot, or nothing; only then
// does SDL_INIT_VIDEO have to be closed again.
std::string openVideo(const Sdl2& sdl);
