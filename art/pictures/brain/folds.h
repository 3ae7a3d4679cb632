// The brain's folds as heights, at the fine size in which the brain is lit.
#pragma once

#include "art/pictures/brain/anatomy.h"
#include "art/pictures/kit/picture.h"

namespace brain {

inline constexpr int kSeed = 3;
inline constexpr int kFine = 2; // lit twice as large
inline constexpr int kFineSize = kFine * kSize;

// A picture of any size at the fine one, and bent, since nothing in a body is straight.
GreyPicture enlarged(const GreyPicture& picture);

// The heights of all folds, from 0 to about 1: the cortex's, and the cerebellum and the stem that
// stand behind it.
GreyPicture foldsOf(const Anatomy& anatomy);

} // namespace brain
