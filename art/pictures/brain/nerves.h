// Nerves: threads of light that rise in the stem, fan out into the lobes and end in sparks, and
// that fray where the stem has been cut.
#pragma once

#include "art/pictures/kit/picture.h"

namespace brain {

// How bright they are, on a picture that is `fine` times as large as the finished one.
GreyPicture drawNerves(int fine, int seed);

} // namespace brain
