// A brain as a solid, without its folds: two hemispheres, a fissure that
// strays between them, and temples under them.
//
// x goes from one hemisphere to the other, y to the forehead, z up; half the brain's length is 1.
#pragma once

#include <glm/vec3.hpp>

namespace brain {

// How far a place is from the surface, about; less than 0 inside.
float cortexDistance(glm::vec3 place);

// Where a place lies on a sphere, seen from the middle of its hemisphere or its temple; the sphere
// is as large as that lobe. The hemispheres differ, so that they can be folded differently.
struct Bearing {
    glm::vec3 on;
    bool isLeft;
};
Bearing bearingOf(glm::vec3 place);

} // namespace brain
