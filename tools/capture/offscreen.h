// OpenGL without a window or a display: a buffer in memory that the program draws into as if it
// were its window, enlarged.
// Its first viewport is enlarged until it touches two sides of the buffer (stage/enlarged_view.h).
#pragma once

#include "stage/picture_size.h"

#include <cstdint>
#include <string>
#include <vector>

// Makes the context current on this thread, with the buffer black. The GPU is used where there is
// one, unless LIBGL_ALWAYS_SOFTWARE asks for none. False, after a message, when nothing draws here.
bool openOffscreen(PictureSize window, PictureSize buffer);

// Who draws: the renderer's name.
std::string rendererName();

// What the buffer shows: red, green, blue, rows top first.
void readPicture(std::vector<std::uint8_t>& pixels);
