// How light falls on the dog: a warm key light from the upper left, rim lights from behind, the
// strongest on the right, and little between.
#pragma once

#include "art/pictures/dog/view.h"
#include "art/pictures/kit/lighting.h"

#include <glm/vec3.hpp>

namespace dog {

inline const glm::vec3 kKeyColour = colour(0xffe8c4);

// The light that fur sends to the viewer, with its own normal, the direction of its hairs and its
// colour; hairs shine across their direction, like thin cylinders.
glm::vec3 lightOnFur(const Surface& surface, glm::vec3 normal, glm::vec3 hair, glm::vec3 coat);

// The solid in grey.
glm::vec3 lightOnForm(const Surface& surface);

// The leather of the nose: grained and wet. `head` is the surface's place in the head's space.
glm::vec3 lightOnNose(const Surface& surface, glm::vec3 head);

} // namespace dog
