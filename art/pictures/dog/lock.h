// Locks of hair: hairs stand closer together than locks do, and lean together where they end. Locks
// are the cells around points that are scattered through space, and so are the tufts they stand in.
#pragma once

#include <cstdint>
#include <glm/vec3.hpp>

namespace dog {

struct Lock {
    glm::vec3 middle;
    std::uint32_t number; // random bits of its own
};

// The lock that a place belongs to, of those that are about `size` wide.
Lock lockAt(glm::vec3 place, float size, int seed);

} // namespace dog
