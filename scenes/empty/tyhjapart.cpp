#include "scenes/empty/tyhjapart.h"

#include <GL/gl.h>
#include <SDL.h>

void Tyhjapart::syncEvent(int /*value*/)
{
}

void Tyhjapart::drawFrame(float /*seconds*/)
{
    glClear(GL_COLOR_BUFFER_BIT);
    SDL_GL_SwapBuffers();
}
