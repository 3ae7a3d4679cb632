// Nerves: a trunk and threads that hang from under the brain or rise behind it, branch, and end in
// cells. They run out toward the picture's borders and fade to nothing there.
#pragma once

#include "art/pictures/kit/picture.h"

namespace brain {

struct Nerves {
    GreyPicture cold;
    GreyPicture warm; // the few cells that are at work
};

// How bright they are, on a picture that is `fine` times as large as the scene shows it.
Nerves drawNerves(int fine, int seed);

} // namespace brain
