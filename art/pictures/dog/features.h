// What is drawn into the dog's face line by line: nostrils and whiskers. Its eyes are in eye.h; its
// mouth is nothing but fur.
#pragma once

#include "art/pictures/dog/drawing.h"
#include "art/pictures/dog/view.h"

namespace dog {

// Side -1 is on the viewer's left, 1 on the right.
void drawNostril(const View& view, Drawing& drawing, float side);

// A few long hairs that stand off the upper lip, and the rows of dark roots of others.
void drawWhiskers(const View& view, Drawing& drawing);

} // namespace dog
