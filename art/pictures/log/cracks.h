// Where the log is torn: radial cracks, and pockets of resin between two years.
#pragma once

#include "art/pictures/log/growth.h"

#include <cstddef>
#include <vector>

namespace wood {

// Along a ray from a heart, in pixels from it.
struct Crack {
    std::size_t heart;
    float angle;
    float from;
    float to;
    float width;
};

std::vector<Crack> makeCracks();

// How deep a place lies in a crack: 0 on the surface, 1 in the middle.
float crackDepth(const std::vector<Crack>& cracks, const Growth& growth, glm::vec2 place);

// The same in a pocket: where a year's wood has come off the next one's, resin has gathered in
// lines along the rings.
float pocketDepth(const Growth& growth, const Year& year, glm::vec2 place);

} // namespace wood
