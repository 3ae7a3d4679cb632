#include "art/pictures/beads/skin.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"

#include <cmath>
#include <glm/common.hpp>

namespace beads {

namespace {

constexpr float kVein = 8.0F; // how far the lacquer's veins lie apart

// Engravings: how far their rings and cracks lie apart. As fine as the tube's far end
// can show without sparkling.
constexpr float kRing = 2.5F;
constexpr float kCrack = 6.0F;

// Light that is thrown back from below.
const glm::vec3 kBounce = glm::normalize(glm::vec3(0.35F, 0.85F, 0.10F));
const glm::vec3 kEmber = colour(0xff5a14);

const glm::vec3 kSlit = colour(0xffd27a);
const glm::vec3 kAcross = glm::normalize(glm::vec3(-kLamp.x, -kLamp.y, 0.55F)); // from the lamp

// A jewel is clear: light gathers in it across from the lamp, its middle is deep, and its fibres
// throw a slit of light back, like a cat's eye.
glm::vec3 jewelAt(const Bead& bead, glm::vec3 normal, float lit)
{
    const auto& [shallow, deep, clearness] = bead.lacquer;
    const glm::vec3 axis = bead.engraving.axis;
    const glm::vec3 along(-axis.y, axis.x, 0.0F);
    const float gathered = power(glm::max(0.0F, glm::dot(normal, kAcross)), 3.0F);
    const float off = glm::dot(normal, axis) - 0.1F * glm::dot(kLamp, axis);
    const float slit = exponential(-off * off / 0.008F) + 0.35F * exponential(-off * off / 0.06F);
    const glm::vec2 place(40.0F * off, 3.0F * glm::dot(normal, along));
    const float fibres =
        0.8F + 0.2F * noise(bead.engraving.patch + place, glm::ivec2(kPeriod), kSeed + 6);
    const float facing = glm::max(0.0F, normal.z);
    const glm::vec3 depth = deep * (0.35F + 0.65F * (1.0F - facing) * (1.0F - facing));
    return fibres * (depth + shallow * (1.15F * clearness * gathered * (0.4F + 0.6F * lit)) +
                     kSlit * slit * facing * (0.35F + 0.65F * lit));
}

} // namespace

glm::vec3 bodyAt(const Bead& bead, glm::vec3 normal, float lit, float open)
{
    const float key = glm::max(0.0F, glm::dot(normal, kLamp)) * (0.2F + 0.8F * lit);
    const float glow = power(glm::max(0.0F, glm::dot(normal, kBounce)), 2.0F);
    const float veins = ridgedNoise(glm::vec2(bead.middle + normal * bead.radius) / kVein,
                                    glm::ivec2(kRoom / kVein), 2, kSeed);
    const float depth = softStep(-0.02F, 0.76F, key) - 0.22F * (1.0F - veins);
    glm::vec3 body =
        glm::mix(bead.lacquer.deep * 0.36F, bead.lacquer.shallow, glm::clamp(depth, 0.0F, 1.0F));
    if (bead.isJewel) {
        body = jewelAt(bead, normal, lit);
    }
    return body * (0.45F + 0.80F * open) + bead.lacquer.shallow * kEmber * 0.75F * glow * open +
           kDusk * (0.05F + 0.11F * (1.0F - key)) * open;
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
    case Pattern::kPlain:
    case Pattern::kFibres:
        break;
    }
    return 0.0F;
}

} // namespace beads
