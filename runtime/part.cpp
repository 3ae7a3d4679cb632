#include "runtime/part.h"

#include <GL/gl.h>
#include <SDL.h>

SceneTable sceneTable{};

void Tyhjapart::syncEvent(int /*value*/)
{
}

void Tyhjapart::drawFrame(float /*seconds*/)
{
    glClear(GL_COLOR_BUFFER_BIT);
    SDL_GL_SwapBuffers();
}
