// Enlarges what a program draws with OpenGL, without its knowledge, from its window to a buffer of
// another size. When this is loaded before OpenGL, it takes the place of glViewport and
// glLineWidth.
//
// Viewports and line widths are multiplied, and with them all that OpenGL draws; what the program
// draws by itself into textures keeps its size in texels. The picture keeps its shape and stays in
// the middle of the buffer.
#pragma once

#include "stage/picture_size.h"

enum class Fit {
    window, // the program's window touches two sides of the buffer
    view,   // its first viewport does
};

// From now on the program draws for a buffer of this size. The viewport and the line width that it
// has set so far are set anew, so the buffer may change while it draws. Needs a current context if
// it has set any.
void enlarge(PictureSize window, PictureSize buffer, Fit fit);
