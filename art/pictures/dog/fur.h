// The dog's fur: tens of thousands of hairs over a dark undercoat.
#pragma once

#include "art/pictures/dog/drawing.h"
#include "art/pictures/dog/view.h"
#include "art/pictures/kit/program.h"

namespace dog {

// What lies under the hairs: the fur's depth, and the nose.
void drawSkin(const View& view, Drawing& drawing);

// The hairs, from the back of the head to the nose, so that each lies on those behind it. Half of
// them are kept as "dog-4-behind.tga".
void drawFur(const View& view, Drawing& drawing, const OutputFolder& folder);

// Lines along the way that the hairs lie.
Picture flowOfFur(const View& view);

} // namespace dog
