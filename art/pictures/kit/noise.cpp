#include "art/pictures/kit/noise.h"

#include "art/pictures/kit/arithmetic.h"

#include <cassert>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/gtc/noise.hpp>
#include <glm/vec3.hpp>
#include <limits>

namespace {

constexpr float kPeriodOfSeeds = 256.0F;

// Sums layers of one octave each, weighted 1/2, 1/4, ... and brought back to the layers' range.
template <typename Layer>
float sumOctaves(glm::vec2 place, glm::ivec2 period, int octaves, int seed, const Layer& layer)
{
    float sum = 0.0F;
    float weights = 0.0F;
    float weight = 1.0F;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * layer(noise(place, period, seed + octave));
        weights += weight;
        weight *= 0.5F;
        place *= 2.0F;
        period *= 2;
    }
    return sum / weights;
}

} // namespace

float noise(glm::vec2 place, glm::ivec2 period, int seed)
{
    assert(period.x <= 256 && period.y <= 256);
    // A slice halfway between two layers of the lattice, a pair of layers for each seed.
    const float slice = 2.0F * static_cast<float>(seed) + 0.5F;
    const glm::vec2 repeat(period);
    return glm::perlin(glm::vec3(place, slice), glm::vec3(repeat, kPeriodOfSeeds));
}

float fractalNoise(glm::vec2 place, glm::ivec2 period, int octaves, int seed)
{
    return sumOctaves(place, period, octaves, seed, [](float height) { return height; });
}

float ridgedNoise(glm::vec2 place, glm::ivec2 period, int octaves, int seed)
{
    return sumOctaves(place, period, octaves, seed,
                      [](float height) { return 1.0F - glm::min(1.0F, std::fabs(height) * 2.0F); });
}

CellDistance cellDistance(glm::vec2 place, glm::ivec2 period, float jitter, int seed)
{
    CellDistance found{std::numeric_limits<float>::max(), 0};
    const glm::ivec2 home(glm::floor(place));
    for (int y = home.y - 2; y <= home.y + 2; ++y) {
        for (int x = home.x - 2; x <= home.x + 2; ++x) {
            const std::uint32_t bits = hash(wrap(x, period.x), wrap(y, period.y), seed);
            const glm::vec2 offset(unit(bits), unit(bits << 16U));
            const glm::vec2 point = glm::vec2(x, y) + 0.5F + (offset - 0.5F) * jitter;
            const float distance = glm::distance(place, point);
            if (distance < found.nearest) {
                found = {distance, bits};
            }
        }
    }
    return found;
}

// Mixes as MurmurHash3 finishes (Austin Appleby, public domain).
std::uint32_t hash(int x, int y, int seed)
{
    std::uint32_t bits = static_cast<std::uint32_t>(x) * 0x9e3779b1U;
    bits ^= static_cast<std::uint32_t>(y) * 0x85ebca77U + (bits << 13U);
    bits ^= static_cast<std::uint32_t>(seed) * 0xc2b2ae3dU + (bits >> 7U);
    bits = (bits ^ (bits >> 16U)) * 0x85ebca6bU;
    bits = (bits ^ (bits >> 13U)) * 0xc2b2ae35U;
    return bits ^ (bits >> 16U);
}

float unit(std::uint32_t bits)
{
    return static_cast<float>(bits >> 8U) / 16777216.0F;
}
