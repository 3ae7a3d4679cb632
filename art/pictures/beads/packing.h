// The beads, and how they are packed in the room that they lie in, whose borders meet.
#pragma once

#include "art/pictures/kit/lighting.h"

#include <array>
#include <cstddef>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <vector>

namespace beads {

inline constexpr int kPixels = 512; // the picture's width and height
inline constexpr int kSeed = 8;

// The room the beads lie in, whose units are all measures here. The tube draws the picture out
// along its length where the viewer sees most of it, so the room is taller than the picture, into
// whose height it is pressed.
inline constexpr int kRoomWidth = 256;
inline constexpr int kRoomHeight = 344;
inline const glm::vec2 kRoom{kRoomWidth, kRoomHeight};

// Radii: a few jewels lie apart from one another; any other bead is of one of three sizes, and
// grains fill what is left.
inline constexpr float kJewel = 25.0F;
inline constexpr std::size_t kJewels = 5;
inline constexpr std::array kRadii = {11.0F, 7.0F, 4.2F, 2.4F};

inline constexpr int kPeriod = 64; // of the engravings' noise, in cells

struct Lacquer {
    glm::vec3 shallow; // where the lamp strikes it
    glm::vec3 deep;    // in its own shade
    float share;       // of the beads; of a jewel, how much light it gathers
};
enum class Pattern { kRings, kGrain, kCracks, kPlain, kFibres };

struct Engraving {
    Pattern pattern;
    glm::vec3 axis;  // of rings, grain and fibres
    glm::vec2 patch; // of the noise, in cells: where it starts
};

struct Bead {
    glm::vec3 middle;
    float radius;
    Lacquer lacquer;
    bool isJewel;
    Engraving engraving;
};

// Packs beads until nothing fits between them, each but the jewels where it touches two others.
std::vector<Bead> packBeads();

// The beads as a place sees them: those within reach, brought to its side of the borders.
std::vector<Bead> around(const std::vector<Bead>& beads, glm::vec2 place);

} // namespace beads
