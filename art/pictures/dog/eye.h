// The dog's eyes. They have to be read at once when three copies of them are a few pixels apart, so
// they are large, amber between dark rims, and the lids around them are bright.
#pragma once

#include "art/pictures/dog/drawing.h"

#include <glm/vec2.hpp>

namespace dog {

// `side` is -1 for the eye on the viewer's left, 1 for the other one.
void drawEye(Drawing& drawing, glm::dvec2 middle, float side);

// The iris and its pupil, about 22 of the pen's units wide.
void drawIris(Drawing& drawing, glm::dvec2 middle);

} // namespace dog
