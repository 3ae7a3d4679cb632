#include "web/gl/frame_list.h"
#include "web/page_world.h"

#include <SDL.h>

struct SDL_Surface {};

extern "C" {

int SDL_Init(Uint32 /*flags*/)
{
    return 0;
}

void SDL_Quit()
{
}

int SDL_GL_SetAttribute(SDL_GLattr /*attribute*/, int /*value*/)
{
    return 0;
}

SDL_Surface* SDL_SetVideoMode(int /*width*/, int /*height*/, int /*bitsPerPixel*/, Uint32 /*flags*/)
{
    static SDL_Surface surface;
    return &surface;
}

int SDL_ShowCursor(int toggle)
{
    return toggle;
}

char* SDL_VideoDriverName(char* /*name*/, int /*size*/)
{
    return nullptr;
}

void SDL_GL_SwapBuffers()
{
    endFrameList();
    pageWorld.isShown = true;
}

Uint32 SDL_GetTicks()
{
    return pageWorld.ticks;
}

} // extern "C"
