// The beads, and how they are packed in the room that they lie in, whose borders meet.
#pragma once

#include "art/pictures/kit/lighting.h"

#include <array>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <vector>

namespace beads {

inline constexpr int kSize = 256; // of the picture
inline constexpr int kSeed = 8;

// The room the beads lie in; one unit is a pixel's width. The tube draws the picture out along its
// length where the viewer sees most of it, so the room is taller than the picture, into whose
// height it is pressed.
inline constexpr int kRoomHeight = 344;
inline const glm::vec2 kRoom{kSize, kRoomHeight};

// Radii: a bead is of one of three sizes, and grains fill what is left.
inline constexpr std::array kRadii = {11.0F, 7.0F, 4.2F, 2.4F};

inline constexpr int kPeriod = 64; // of the engravings' noise, in cells

struct Lacquer {
    glm::vec3 shallow; // where the lamp strikes it
    glm::vec3 deep;    // in its own shade
    float share;
};
enum class Pattern { kRings, kGrain, kCracks, kPores };

struct Engraving {
    Pattern pattern;
    glm::vec3 axis;  // of rings and grain
    glm::vec2 patch; // of the noise, in cells: where it starts
};

struct Bead {
    glm::vec3 middle;
    float radius;
    Lacquer lacquer;
    Engraving engraving;
};

// Packs beads until nothing fits between them, each where it touches two others.
std::vector<Bead> packBeads();

// The beads as a place sees them: those within reach, brought to its side of the borders.
std::vector<Bead> around(const std::vector<Bead>& beads, glm::vec2 place);

} // namespace beads
