#pragma once

#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/picture.h"

#include <algorithm>
#include <cmath>
#include <glm/common.hpp>
#include <utility>

// Folds: two substances react and spread until they have settled into a labyrinth. The reaction is
// Gray and Scott's, as described by Pearson, "Complex Patterns in a Simple System" (1993).
namespace brain {

struct Tissue {
    float breadth = 0.0F; // of the folds: how far the substances spread, as a share of the most
    float alive = 0.0F;
};

inline constexpr float kFeed = 0.034F;
inline constexpr float kKill = 0.0585F;
inline constexpr float kSpreadOfU = 0.125F; // cells squared a step
inline constexpr float kSpreadOfV = 0.0625F;
inline constexpr int kSteps = 5000;
inline constexpr float kHighestV = 0.36F;

// What flows into a cell from its eight neighbours; the diagonal ones keep the flow round.
inline float flowInto(const GreyPicture& substance, int x, int y)
{
    const float beside = substance.at(x - 1, y) + substance.at(x + 1, y) + substance.at(x, y - 1) +
                         substance.at(x, y + 1);
    const float corners = substance.at(x - 1, y - 1) + substance.at(x + 1, y + 1) +
                          substance.at(x - 1, y + 1) + substance.at(x + 1, y - 1);
    return (4.0F * beside + corners - 20.0F * substance.at(x, y)) / 6.0F;
}

// Lets the reaction settle; returns how much of V there is, from 0 to about 1.
inline GreyPicture growFolds(const Raster<Tissue>& tissue, int seed)
{
    const int size = tissue.width();
    GreyPicture u(size, size);
    GreyPicture v(size, size);
    v.fill([&](int x, int y) {
        const glm::vec2 place = glm::vec2(x, y) * (24.0F / static_cast<float>(size));
        return noise(place, glm::ivec2(24), seed) > 0.1F ? 0.4F * tissue.at(x, y).alive : 0.0F;
    });
    u.fill([&](int x, int y) { return 1.0F - v.at(x, y); });
    GreyPicture nextU = u;
    GreyPicture nextV = v;
    for (int step = 0; step < kSteps; ++step) {
        for (int y = 1; y < size - 1; ++y) {
            for (int x = 1; x < size - 1; ++x) {
                const Tissue& here = tissue.at(x, y);
                const float reaction = u.at(x, y) * v.at(x, y) * v.at(x, y);
                const float gain = kSpreadOfU * here.breadth * flowInto(u, x, y);
                const float spread = kSpreadOfV * here.breadth * flowInto(v, x, y);
                nextU.at(x, y) = u.at(x, y) + gain - reaction + kFeed * (1.0F - u.at(x, y));
                nextV.at(x, y) =
                    here.alive * (v.at(x, y) + spread + reaction - (kFeed + kKill) * v.at(x, y));
            }
        }
        std::swap(u, nextU);
        std::swap(v, nextV);
    }
    v.fill([&](int x, int y) { return v.at(x, y) / kHighestV; });
    return v;
}

} // namespace brain
