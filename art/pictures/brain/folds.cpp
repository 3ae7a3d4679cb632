#include "art/pictures/brain/folds.h"

#include "art/pictures/brain/anatomy.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

constexpr int kCells = 144;     // along an edge of the cube
constexpr float kReach = 1.15F; // half the edge
constexpr float kCellSize = 2.0F * kReach / kCells;
constexpr float kNear = 0.2F; // to the surface, where folds are known

constexpr float kWaveNumber = 24.5F;
constexpr int kWaves = 36;

struct Wave {
    glm::vec3 way;
    float phase;
};
using Waves = std::array<Wave, kWaves>;

Waves waves(Random& random)
{
    Waves result{};
    for (Wave& wave : result) {
        const float z = random.between(-1.0F, 1.0F);
        const float turn = random.between(0.0F, kFullTurn);
        const float flat = std::sqrt(1.0F - z * z);
        const float number = kWaveNumber * random.between(0.8F, 1.15F);
        wave.way = number * glm::vec3(flat * cosine(turn), flat * sine(turn), z);
        wave.phase = random.between(0.0F, kFullTurn);
    }
    return result;
}

// The sum of waves at a place on the sphere, as the phase of the one wave that it might be: how
// high and how steep it is tell how far off the next furrow is.
float swellAt(const Waves& waves, glm::vec3 on)
{
    float height = 0.0F;
    glm::vec3 slope(0.0F);
    for (const auto& [way, phase] : waves) {
        const float turn = glm::dot(way, on) + phase;
        height += sine(turn);
        slope += way * cosine(turn);
    }
    slope -= on * (glm::dot(on, slope) / glm::dot(on, on));
    const float across = glm::length(slope) / kWaveNumber;
    return angleOf(across, height) / (0.25F * kFullTurn);
}

std::size_t index(int x, int y, int z)
{
    return (static_cast<std::size_t>(z) * kCells + static_cast<std::size_t>(y)) * kCells +
           static_cast<std::size_t>(x);
}

} // namespace

Folds::Folds(int seed) : swell_(static_cast<std::size_t>(kCells) * kCells * kCells, 1.0F)
{
    Random random(static_cast<unsigned>(seed));
    const std::array halves{waves(random), waves(random)};
    for (int i = 0; i < kCells * kCells * kCells; ++i) {
        const glm::ivec3 at(i % kCells, i / kCells % kCells, i / kCells / kCells);
        const glm::vec3 place = (glm::vec3(at) + 0.5F) * kCellSize - kReach;
        if (std::abs(cortexDistance(place)) < kNear) {
            const Bearing bearing = bearingOf(place);
            swell_[index(at.x, at.y, at.z)] = swellAt(halves[bearing.isLeft ? 1 : 0], bearing.on);
        }
    }
}

float Folds::cell(int x, int y, int z) const
{
    const auto inside = [](int i) { return glm::clamp(i, 0, kCells - 1); };
    return swell_[index(inside(x), inside(y), inside(z))];
}

float Folds::crestAt(glm::vec3 place) const
{
    const glm::vec3 where = (place + kReach) / kCellSize - 0.5F;
    const glm::vec3 first = glm::floor(where);
    const glm::vec3 rest = where - first;
    const glm::ivec3 at(first);
    float swell = 0.0F;
    for (int i = 0; i < 8; ++i) {
        const glm::ivec3 corner(i % 2, i / 2 % 2, i / 4);
        const glm::vec3 share = glm::mix(1.0F - rest, rest, glm::vec3(corner));
        swell +=
            share.x * share.y * share.z * cell(at.x + corner.x, at.y + corner.y, at.z + corner.z);
    }
    return std::min(std::abs(swell), 1.0F);
}

} // namespace brain
