#pragma once

#include "art/pictures/brain_anatomy.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

// Nerves: threads of light that rise in the stem, fan out into the lobes and end in sparks, and
// that fray where the stem has been cut.
namespace brain {

// A glowing dot, kept where nothing brighter is. Places and radii in pixels of the finished
// picture; the picture is `fine` times as large.
inline void addGlow(GreyPicture& picture, int fine, glm::vec2 place, float radius, float light)
{
    const glm::vec2 middle = place * static_cast<float>(fine) - 0.5F;
    const float wide = radius * static_cast<float>(fine);
    const glm::ivec2 first(glm::floor(middle - 2.5F * wide));
    const glm::ivec2 last(glm::ceil(middle + 2.5F * wide));
    for (int y = std::max(first.y, 0); y <= std::min(last.y, picture.height() - 1); ++y) {
        for (int x = std::max(first.x, 0); x <= std::min(last.x, picture.width() - 1); ++x) {
            const glm::vec2 off = (glm::vec2(x, y) - middle) / wide;
            float& here = picture.at(x, y);
            here = std::max(here, light * exponential(-glm::dot(off, off)));
        }
    }
}

// A cubic curve's place at t (0 to 1).
inline glm::vec2 along(const std::array<glm::vec2, 4>& curve, float t)
{
    const float s = 1.0F - t;
    return s * s * s * curve[0] + 3.0F * s * s * t * curve[1] + 3.0F * s * t * t * curve[2] +
           t * t * t * curve[3];
}

// One of a thread's ends.
struct End {
    float width;
    float light;
};

// A thread's place at t (0 to 1): it trembles a little about its curve.
inline glm::vec2 threadAt(const std::array<glm::vec2, 4>& curve, float t, int seed)
{
    const float wave = t * 12.0F;
    const glm::vec2 tremble(noise({wave, 0.5F}, {64, 8}, seed), noise({wave, 3.5F}, {64, 8}, seed));
    return along(curve, t) + 1.3F * tremble;
}

// Draws a thread, its width and its light going from one end's to the other's.
inline void addThread(GreyPicture& picture, int fine, int seed,
                      const std::array<glm::vec2, 4>& curve, End from, End to)
{
    constexpr int kDots = 600;
    for (int i = 0; i <= kDots; ++i) {
        const float t = static_cast<float>(i) / kDots;
        addGlow(picture, fine, threadAt(curve, t, seed), glm::mix(from.width, to.width, t),
                glm::mix(from.light, to.light, t));
    }
}

inline GreyPicture drawNerves(int fine, int seed)
{
    constexpr int kNerves = 13;
    GreyPicture nerves(fine * kSize, fine * kSize);
    Random random(static_cast<unsigned>(seed));
    for (int i = 0; i < kNerves; ++i) {
        const float side = 2.0F * static_cast<float>(i) / (kNerves - 1) - 1.0F; // -1 left, 1 right
        const float light = random.between(0.7F, 1.0F);
        const End dim{0.55F, 0.32F * light};

        // In the stem, from its waist up to where it enters the lobes.
        const glm::vec2 waist(159.0F + 4.5F * side, 212.0F);
        const glm::vec2 root(146.0F + 9.0F * side, 170.0F);
        const glm::vec2 lean(5.0F, 18.0F);
        addThread(nerves, fine, seed + i, {waist, waist - lean, root + lean, root}, dim, dim);

        // Down to where it has been cut.
        const glm::vec2 cut(170.0F + 19.0F * side + random.between(-5, 5),
                            250.0F - 14.0F * side * side - random.between(0, 12));
        const glm::vec2 droop(0.4F * side, 9.0F);
        addThread(nerves, fine, seed + i, {waist, waist + lean, cut - droop, cut}, dim,
                  {0.45F, 0.15F});
        addGlow(nerves, fine, cut, 0.8F, 0.45F * light);

        // Out into the lobes.
        const float angle = (0.22F - 0.31F * (side + random.between(-0.03F, 0.03F))) * kFullTurn;
        const glm::vec2 outward(cosine(angle), -sine(angle));
        const glm::vec2 spark =
            glm::vec2(132, 112) + outward * glm::vec2(100, 84) * random.between(0.55F, 0.95F);
        const glm::vec2 rise = root - glm::vec2(6.0F - 8.0F * side, 46.0F);
        const std::array curve{root, rise, spark - 38.0F * outward, spark};
        addThread(nerves, fine, seed + kNerves + i, curve, dim, {0.66F, light});
        addGlow(nerves, fine, spark, 2.1F, 1.0F);
        // A signal on its way.
        const float t = random.between(0.25F, 0.8F);
        addGlow(nerves, fine, threadAt(curve, t, seed + kNerves + i), 1.5F, 1.0F);
    }
    return nerves;
}

} // namespace brain
