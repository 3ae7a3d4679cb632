#include "art/pictures/log/veins.h"

#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/log/growth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace wood {

namespace {

// Veins run where a field of noise is zero, so they have no ends and tile.
struct Veins {
    glm::ivec2 period;
    int seed;
    float width; // pixels
    float paleness;
    glm::vec2 shift;
};
constexpr std::array kVeins = {
    Veins{{2, 1}, 213, 2.6F, 1.0F, {9.0F, -6.0F}},
    Veins{{4, 2}, 227, 1.8F, 0.5F, {-3.0F, 4.0F}},
};

float fieldAt(const Veins& veins, glm::vec2 place)
{
    const glm::ivec2 fine = veins.period * 4;
    return noise(noisePlace(place, veins.period), veins.period, veins.seed) +
           0.10F * fractalNoise(noisePlace(place, fine), fine, 3, veins.seed + 1);
}

// How far away the middle of a vein is, in pixels.
float distanceTo(const Veins& veins, glm::vec2 place)
{
    const float here = fieldAt(veins, place);
    const glm::vec2 change(fieldAt(veins, place + glm::vec2(1.0F, 0.0F)) - here,
                           fieldAt(veins, place + glm::vec2(0.0F, 1.0F)) - here);
    return here / glm::max(glm::length(change), 0.004F);
}

} // namespace

Fault faultAt(glm::vec2 place)
{
    Fault fault{glm::vec2(0.0F), 0.0F};
    for (const Veins& veins : kVeins) {
        const float distance = distanceTo(veins, place);
        const glm::ivec2 period(14, 6);
        const float swell =
            glm::clamp(0.75F + 1.3F * noise(noisePlace(place, period), period, 251), 0.0F, 1.5F);
        const float width = veins.width * swell;
        fault.quartz =
            std::max(fault.quartz, softStep(width + 0.9F, 0.25F * width, std::fabs(distance)) *
                                       glm::min(1.0F, 0.35F + swell) * veins.paleness);
        fault.shift += distance > 0.0F ? veins.shift : glm::vec2(0.0F);
    }
    return fault;
}

} // namespace wood
