// What a bead's skin looks like at a place: its lacquer, and how it is engraved.
#pragma once

#include "art/pictures/beads/packing.h"

#include <glm/geometric.hpp>
#include <glm/vec3.hpp>

namespace beads {

// Up in the picture is toward the viewer, who carries the lamp.
inline const glm::vec3 kLamp = glm::normalize(glm::vec3(-0.30F, -0.58F, 0.76F));
inline const glm::vec3 kDusk = colour(0x5c4644); // the room's own faint light

// The lacquer without what it mirrors. `lit` is how much of the lamp reaches it, `open` how much of
// the sky, 0 to 1.
glm::vec3 bodyAt(const Bead& bead, glm::vec3 normal, float lit, float open);

// How deep a bead is engraved: 0 to 1.
float engravedAt(const Bead& bead, glm::vec3 normal);

} // namespace beads
