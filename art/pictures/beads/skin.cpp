#include "art/pictures/beads/skin.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"

#include <cmath>
#include <glm/common.hpp>

namespace beads {

namespace {

constexpr float kVein = 8.0F; // how far the lacquer's veins lie apart

// Engravings: how far their rings, cracks and pores lie apart. The rings are two or three of the
// picture's pixels wide, as fine as it can hold.
constexpr float kRing = 3.2F;
constexpr float kCrack = 6.0F;
constexpr float kPore = 3.0F;

// Light that is thrown back from below.
const glm::vec3 kBounce = glm::normalize(glm::vec3(0.35F, 0.85F, 0.10F));
const glm::vec3 kEmber = colour(0xff5a14);

} // namespace

glm::vec3 bodyAt(const Bead& bead, glm::vec3 normal, float lit, float open)
{
    const float key = glm::max(0.0F, glm::dot(normal, kLamp)) * (0.2F + 0.8F * lit);
    const float glow = power(glm::max(0.0F, glm::dot(normal, kBounce)), 2.0F);
    const float veins = ridgedNoise(glm::vec2(bead.middle + normal * bead.radius) / kVein,
                                    glm::ivec2(kRoom / kVein), 2, kSeed);
    const float depth = softStep(-0.02F, 0.76F, key) - 0.22F * (1.0F - veins);
    const glm::vec3 body =
        glm::mix(bead.lacquer.deep * 0.5F, bead.lacquer.shallow, glm::clamp(depth, 0.0F, 1.0F));
    return body * (0.45F + 0.80F * open) + bead.lacquer.shallow * kEmber * 0.75F * glow * open +
           kDusk * (0.12F + 0.20F * (1.0F - key)) * open;
}

float engravedAt(const Bead& bead, glm::vec3 normal)
{
    const auto& [pattern, axis, patch] = bead.engraving;
    const glm::vec2 place = bead.radius * glm::vec2(normal);
    const glm::ivec2 period(kPeriod);
    const float along = bead.radius * glm::dot(normal, axis);
    const float away = std::sqrt(glm::max(0.0F, bead.radius * bead.radius - along * along));
    const float bend = noise(place / (2.0F * kCrack) + patch, period, kSeed + 4);
    switch (pattern) {
    case Pattern::kRings:
        return 0.5F + 0.5F * cosine(kFullTurn * away / kRing);
    case Pattern::kGrain:
        return 0.5F + 0.5F * cosine(kFullTurn * (along / kRing + 0.8F * bend));
    case Pattern::kCracks:
        return softStep(0.55F, 0.95F, ridgedNoise(place / kCrack + patch, period, 1, kSeed + 4));
    case Pattern::kPores:
        break;
    }
    return softStep(0.45F, 0.15F,
                    cellDistance(place / kPore + patch, period, 0.7F, kSeed + 4).nearest);
}

} // namespace beads
