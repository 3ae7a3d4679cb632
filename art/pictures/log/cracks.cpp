#include "art/pictures/log/cracks.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>

namespace wood {

namespace {

// `share` of the circle around its heart: where it lies among the heart's cracks.
Crack makeCrack(std::size_t heart, float share, bool fromMiddle, Random& random)
{
    const bool isKnot = heart >= kFirstKnot;
    const float reach = isKnot ? 0.9F * kHearts[heart].radius : 95.0F;
    const float from = fromMiddle ? -4.0F : random.between(0.25F, 0.5F) * reach;
    return {heart, share * kFullTurn, from, from + random.between(0.35F, 1.0F) * reach,
            random.between(0.6F, isKnot ? 1.4F : 1.9F)};
}

// How deep a place is in one crack. `wander` bends it, -1 to 1.
float depthIn(const Crack& crack, const Growth& growth, float radius, float wander)
{
    const float along = (radius - crack.from) / (crack.to - crack.from);
    const glm::vec2 direction(cosine(crack.angle), sine(crack.angle));
    if (crack.heart != growth.heart || along <= 0.0F || along >= 1.0F ||
        glm::dot(direction, growth.fromHeart) <= 0.0F) {
        return 0.0F;
    }
    const float aside = direction.x * growth.fromHeart.y - direction.y * growth.fromHeart.x;
    const float width = crack.width * softStep(0.0F, 0.15F, along) * (1.0F - along) + 0.8F;
    const float offset = std::fabs(aside + 11.0F * wander * softStep(0.0F, 30.0F, radius)) / width;
    return softStep(1.5F, 0.2F, offset) * softStep(1.0F, 0.7F, along);
}

} // namespace

std::vector<Crack> makeCracks()
{
    Random random(9);
    std::vector<Crack> cracks;
    for (std::size_t heart = 0; heart < kHearts.size(); ++heart) {
        const bool isKnot = heart >= kFirstKnot;
        const int count = isKnot ? 3 : 4;
        for (int i = 0; i < count; ++i) {
            const float share =
                (static_cast<float>(i) + random.between(-0.3F, 0.3F)) / static_cast<float>(count);
            cracks.push_back(makeCrack(heart, share, isKnot || i % 2 == 0, random));
        }
    }
    return cracks;
}

float crackDepth(const std::vector<Crack>& cracks, const Growth& growth, glm::vec2 place)
{
    const float radius = glm::length(growth.fromHeart);
    const glm::ivec2 period(26, 11);
    const float wander = fractalNoise(noisePlace(place, period), period, 2, 51);
    float depth = 0.0F;
    for (const Crack& crack : cracks) {
        depth = std::max(depth, depthIn(crack, growth, radius, wander));
    }
    return depth;
}

float pocketDepth(const Growth& growth, const Year& year, glm::vec2 place)
{
    const glm::ivec2 period(9, 4);
    const float chance = noise(noisePlace(place, period), period, 65);
    const float late = (growth.age - year.start) / year.width;
    const float off = std::fabs(late - 0.86F) * year.width / 1.7F;
    return softStep(0.5F, 0.7F, chance) * softStep(1.0F, 0.2F, off);
}

} // namespace wood
