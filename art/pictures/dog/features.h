// What is drawn into the dog's face line by line: nostrils, mouth and whiskers. Its eyes are in
// eye.h.
#pragma once

#include "art/pictures/dog/drawing.h"
#include "art/pictures/dog/view.h"

namespace dog {

// The line from the nose to the lips, and where these meet. `width` is in pixels.
void drawMouth(const View& view, Drawing& drawing, double width);

// Side -1 is on the viewer's left, 1 on the right.
void drawNostril(const View& view, Drawing& drawing, float side);

// A few long hairs that stand off the upper lip, and the rows of dark roots of others.
void drawWhiskers(const View& view, Drawing& drawing);

} // namespace dog
