// What a brain is made of, seen from its left side: it faces left.
#pragma once

#include "art/pictures/kit/picture.h"

namespace brain {

inline constexpr int kSize = 256; // pixels of the finished picture, which is as high as it is wide

// How much of each pixel the brain's parts cover, 0 to 1, and the form of the whole.
struct Anatomy {
    GreyPicture cortex; // without the fissures
    GreyPicture cerebellum;
    GreyPicture stem;
    GreyPicture swelling; // how far it stands toward the viewer; 1 is more than the highest
};

Anatomy drawAnatomy();

} // namespace brain
