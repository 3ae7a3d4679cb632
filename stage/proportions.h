#pragma once

#include "stage/picture_size.h"
#include "stage/sdl2.h"

// Asks the window manager, where there is one, to keep the window's proportions as it is resized.
// X11's managers know this wish (ICCCM, section 4.1.2.3); other displays do not, and there the
// picture keeps its own inside the window.
void keepProportions(const Sdl2& sdl, SDL_Window* window, PictureSize proportions);
