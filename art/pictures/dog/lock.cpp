#include "art/pictures/dog/lock.h"

#include "art/pictures/kit/noise.h"

#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace dog {

Lock lockAt(glm::vec3 place, float size, int seed)
{
    const glm::ivec3 home(glm::floor(place / size));
    Lock nearest{};
    float distance = 100.0F * size;
    for (int i = 0; i < 27; ++i) {
        const glm::ivec3 cell = home + glm::ivec3(i % 3, i / 3 % 3, i / 9) - 1;
        const std::uint32_t bits =
            hash(static_cast<int>(hash(cell.x, cell.y, seed) >> 8U), cell.z, seed);
        const glm::vec3 offset(unit(bits), unit(bits << 8U), unit(bits << 16U));
        const glm::vec3 middle = (glm::vec3(cell) + offset) * size;
        if (glm::distance(place, middle) < distance) {
            distance = glm::distance(place, middle);
            nearest = {middle, bits};
        }
    }
    return nearest;
}

} // namespace dog
