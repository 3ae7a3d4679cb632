#include "art/pictures/brain/folds.h"

#include "art/pictures/brain/reaction.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/common.hpp>

namespace brain {

namespace {

constexpr int kCells = 128; // of the reaction, across the picture

// Folds are broadest where the brain faces the viewer.
Raster<Tissue> tissueOf(const Anatomy& anatomy)
{
    constexpr float kStep = static_cast<float>(kSize) / kCells;
    Raster<Tissue> tissue(kCells, kCells, Tissue());
    tissue.fill([&](int x, int y) {
        const glm::vec2 place = kStep * glm::vec2(x, y) + 0.5F;
        const float swelling = anatomy.swelling.sample(place.x, place.y);
        return Tissue{0.42F + 0.58F * softStep(0.3F, 0.85F, swelling),
                      anatomy.cortex.sample(place.x, place.y)};
    });
    return tissue;
}

// The picture between its pixels, smoothed by cubic B-splines.
float splined(const GreyPicture& picture, float x, float y)
{
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const auto weights = [](float t) {
        const float s = 1.0F - t;
        return std::array{s * s * s / 6.0F, (4.0F - 6.0F * t * t + 3.0F * t * t * t) / 6.0F,
                          (4.0F - 6.0F * s * s + 3.0F * s * s * s) / 6.0F, t * t * t / 6.0F};
    };
    const auto across = weights(x - static_cast<float>(left));
    const auto down = weights(y - static_cast<float>(top));
    float sum = 0.0F;
    for (int i = 0; i < 16; ++i) {
        sum += across[static_cast<std::size_t>(i % 4)] * down[static_cast<std::size_t>(i / 4)] *
               picture.wrapped(left - 1 + i % 4, top - 1 + i / 4);
    }
    return sum;
}

// The folds of the cerebellum: leaves that spread from the stem. From 0 to 1, as the others.
float leafAt(glm::vec2 place)
{
    constexpr float kLeaves = 72.0F; // in a full turn
    const glm::ivec2 period(12);
    const glm::vec2 where = place * (12.0F / kSize);
    const glm::vec2 off = place - glm::vec2(112, 166);
    const float turn =
        angleOf(off.x, off.y) / kFullTurn + 0.012F * fractalNoise(where, period, 2, kSeed + 12);
    return 0.5F + 0.5F * sine(kFullTurn * kLeaves * turn);
}

} // namespace

GreyPicture enlarged(const GreyPicture& picture)
{
    constexpr int kBends = 13;    // across the picture
    constexpr float kBend = 4.5F; // pixels
    const float step = static_cast<float>(picture.width()) / kSize;
    GreyPicture result(kFineSize, kFineSize);
    result.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFine);
        const glm::ivec2 period(kBends);
        const glm::vec2 where = place * (static_cast<float>(kBends) / kSize);
        const glm::vec2 bend(fractalNoise(where, period, 2, kSeed + 2),
                             fractalNoise(where, period, 2, kSeed + 5));
        const glm::vec2 from = (place + kBend * bend) * step - 0.5F;
        return splined(picture, from.x, from.y);
    });
    return result;
}

GreyPicture foldsOf(const Anatomy& anatomy)
{
    const GreyPicture grown = enlarged(growFolds(tissueOf(anatomy), kSeed));
    const GreyPicture near = enlarged(blurred(anatomy.cortex, 1));
    const GreyPicture cerebellum = enlarged(anatomy.cerebellum);
    const GreyPicture stem = enlarged(anatomy.stem);
    GreyPicture folds(kFineSize, kFineSize);
    folds.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFine);
        const float behind = softStep(0.2F, 0.0F, near.at(x, y));
        const float leaves = cerebellum.at(x, y) * (0.25F + 0.75F * leafAt(place));
        const float pons = stem.at(x, y) * (0.62F + 0.1F * sine(0.9F * place.y - 0.3F * place.x));
        return std::max(grown.at(x, y), behind * std::max(leaves, pons));
    });
    return folds;
}

} // namespace brain
