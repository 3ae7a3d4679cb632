#include "art/pictures/brain/anatomy.h"

#include "art/pictures/kit/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

struct Lobe {
    glm::vec3 middle;
    glm::vec3 radii;
    float melt; // how far it runs into the lobes before it
};

// Of the hemisphere whose x is positive: the whole, forehead, crown, back of the head.
constexpr auto kLobes = std::to_array<Lobe>({
    {{0.20F, 0.00F, 0.10F},   {0.50F, 0.92F, 0.52F}, 0.0F },
    {{0.20F, 0.48F, -0.02F},  {0.42F, 0.52F, 0.46F}, 0.12F},
    {{0.32F, -0.30F, 0.04F},  {0.42F, 0.50F, 0.48F}, 0.10F},
    {{0.20F, -0.62F, -0.02F}, {0.38F, 0.42F, 0.42F}, 0.12F},
});
constexpr Lobe kTemple{
    {0.48F, 0.02F, -0.36F},
    {0.26F, 0.62F, 0.22F },
    0.02F
};

float toEllipsoid(glm::vec3 place, glm::vec3 radii)
{
    const float near = glm::length(place / radii);
    const float slope = glm::length(place / (radii * radii));
    return slope == 0.0F ? -radii.x : near * (near - 1.0F) / slope;
}

// The smaller of two distances, rounded over where they are about the same.
float melted(float a, float b, float reach)
{
    const float shared = std::max(reach - std::abs(a - b), 0.0F) / std::max(reach, 0.0001F);
    return std::min(a, b) - 0.25F * reach * shared * shared;
}

// The fissure between the hemispheres strays from the middle.
glm::vec3 straightened(glm::vec3 place)
{
    return {place.x + 0.05F * sine(2.3F * place.y + 0.6F) + 0.02F * sine(6.1F * place.y), place.y,
            place.z};
}

glm::vec3 mirrored(glm::vec3 place)
{
    return {std::abs(place.x), place.y, place.z};
}

float lobesDistance(glm::vec3 half)
{
    float distance = 10.0F;
    for (const auto& [middle, radii, melt] : kLobes) {
        distance = melted(distance, toEllipsoid(half - middle, radii), melt);
    }
    return distance;
}

float templeDistance(glm::vec3 half)
{
    return toEllipsoid(half - kTemple.middle, kTemple.radii);
}

} // namespace

float cortexDistance(glm::vec3 place)
{
    constexpr float kFissure = 0.034F; // half its width
    constexpr float kRoundness = 0.20F;
    const glm::vec3 half = mirrored(straightened(place));
    const float distance = melted(lobesDistance(half), templeDistance(half), kTemple.melt);
    return -melted(-distance, half.x - kFissure, kRoundness);
}

Bearing bearingOf(glm::vec3 place)
{
    constexpr Lobe kWhole{
        {0.28F, 0.0F,  -0.03F},
        {0.50F, 0.95F, 0.66F },
        0.0F
    };
    constexpr float kTempleSize = 0.55F; // of the whole's
    const glm::vec3 inside = straightened(place);
    const glm::vec3 half = mirrored(inside);
    const bool isTemple = templeDistance(half) < lobesDistance(half);
    const Lobe& lobe = isTemple ? kTemple : kWhole;
    const glm::vec3 reach = (half - lobe.middle) / lobe.radii;
    const float size = isTemple ? kTempleSize : 1.0F;
    return {size * reach / std::max(glm::length(reach), 0.001F), inside.x < 0.0F};
}

} // namespace brain
