// Where the stone has broken and healed: faults, along which the rings do not meet, filled with
// quartz.
#pragma once

#include <glm/vec2.hpp>

namespace wood {

struct Fault {
    glm::vec2 shift; // of the wood on this side, pixels
    float quartz;    // 1 in the middle of a vein, 0 beside it
};
Fault faultAt(glm::vec2 place);

} // namespace wood
