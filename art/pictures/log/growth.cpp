#include "art/pictures/log/growth.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <limits>
#include <span>

namespace wood {

namespace {

constexpr float kMerging = 11.0F; // how softly rings of two hearts join

// Good and bad years come in groups. Nothing is so narrow that the warp makes a moire of it.
constexpr std::array kBroadYears{22.0F, 36.0F}; // pixels
constexpr std::array kNarrowYears{12.0F, 16.0F};

// The growth among the first hearts only, as many as there are `heads`.
Growth growthAmong(std::span<const float> heads, glm::vec2 place)
{
    Growth growth{};
    float sum = 0.0F;
    float knots = 0.0F;
    float nearest = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < heads.size(); ++i) {
        const Heart& heart = kHearts[i];
        const glm::vec2 inner = shortestWay(place - heart.place, kScreen);
        for (int copy = 0; copy < 9; ++copy) {
            const glm::vec2 lattice(copy % 3 - 1, copy / 3 - 1);
            const glm::vec2 way = inner + lattice * kScreen;
            const float age = glm::length(way) / heart.ringWidth + heads[i];
            const float weight = exponential(-age / kMerging);
            sum += weight;
            knots += i >= kFirstKnot ? weight : 0.0F;
            if (age < nearest) {
                nearest = age;
                growth.heart = i;
                growth.fromHeart = way;
            }
        }
    }
    growth.age = -kMerging * logarithm(sum);
    growth.knot = knots / sum;
    return growth;
}

// Adds a group of years that are all broad or all narrow; returns the age at their end.
float growGroup(bool areBroad, float age, Random& random, std::vector<Year>& years)
{
    const auto& widths = areBroad ? kBroadYears : kNarrowYears;
    const int count = static_cast<int>(areBroad ? random.between(1, 4) : random.between(3, 6));
    const float paleness = areBroad ? random.between(0.04F, 0.22F) : random.between(-0.16F, 0.0F);
    for (int i = 0; i < count; ++i) {
        const float width = random.between(widths[0], widths[1]);
        years.push_back({age, width, paleness + random.between(-0.1F, 0.1F)});
        age += width;
    }
    return age;
}

} // namespace

// A knot begins so late that it reaches its radius before the stems' wood closes around it.
Ages agesOfHearts()
{
    Ages heads{};
    for (std::size_t i = kFirstKnot; i < kHearts.size(); ++i) {
        const Heart& knot = kHearts[i];
        heads[i] = growthAmong(std::span(heads).first(kFirstKnot), knot.place).age -
                   knot.radius / knot.ringWidth;
    }
    return heads;
}

Growth growthAt(glm::vec2 place, const Ages& heads)
{
    return growthAmong(heads, place);
}

std::vector<Year> growYears()
{
    Random random(23);
    std::vector<Year> years;
    float age = -120.0F;
    for (int group = 0; age < 420.0F; ++group) {
        age = growGroup(group % 2 == 0, age, random, years);
    }
    return years;
}

const Year& yearAt(const std::vector<Year>& years, float age)
{
    const auto next = std::upper_bound(years.begin() + 1, years.end() - 1, age,
                                       [](float a, const Year& year) { return a < year.start; });
    return *(next - 1);
}

glm::vec2 noisePlace(glm::vec2 place, glm::ivec2 period)
{
    return place / kScreen * glm::vec2(period);
}

} // namespace wood
