// Folds: two substances react and spread until they have settled into a labyrinth. The reaction is
// Gray and Scott's, as described by Pearson, "Complex Patterns in a Simple System" (1993).
#pragma once

#include "art/pictures/kit/picture.h"

namespace brain {

struct Tissue {
    float breadth = 0.0F; // of the folds: how far the substances spread, as a share of the most
    float alive = 0.0F;   // 0 outside, 1 inside: the second substance grows only there
};

// Lets the reaction settle; returns how much of the second substance there is in each cell of the
// tissue, from 0 to about 1.
GreyPicture growFolds(const Raster<Tissue>& tissue, int seed);

} // namespace brain
