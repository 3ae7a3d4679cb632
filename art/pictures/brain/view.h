// The brain as it is seen: three quarters from the front and from above, by an eye so near that
// what is close is large.
#pragma once

#include "art/pictures/brain/folds.h"
#include "art/pictures/kit/picture.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace brain {

// All places and sizes are in pixels of the scene, which shows the picture this wide and high.
inline constexpr int kSize = 256;

// What a pixel sees. Directions are right, up, toward the viewer.
struct Sight {
    float covered = 0.0F; // 1 where it sees the brain, 0 past it
    glm::vec3 normal{0.0F};
    glm::vec3 form{0.0F}; // the normal, if there were no folds
    float crest = 0.0F;   // 0 in a furrow, 1 on a crest
    float open = 0.0F;    // how much of its surroundings is free
    float near = 0.0F;    // 1 is nearest, 0 farthest
};

Raster<Sight> see(const Folds& folds, int fine); // fine: this many pixels for one of the scene's

} // namespace brain
