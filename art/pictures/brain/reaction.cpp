#include "art/pictures/brain/reaction.h"

#include "art/pictures/kit/noise.h"

#include <glm/vec2.hpp>
#include <utility>

namespace brain {

namespace {

constexpr float kFeed = 0.034F;
constexpr float kKill = 0.0585F;
constexpr float kSpreadOfU = 0.125F; // cells squared a step
constexpr float kSpreadOfV = 0.0625F;
constexpr int kSteps = 5000;
constexpr float kHighestV = 0.36F;

// What flows into a cell from its eight neighbours; the diagonal ones keep the flow round.
float flowInto(const GreyPicture& substance, int x, int y)
{
    const float beside = substance.at(x - 1, y) + substance.at(x + 1, y) + substance.at(x, y - 1) +
                         substance.at(x, y + 1);
    const float corners = substance.at(x - 1, y - 1) + substance.at(x + 1, y + 1) +
                          substance.at(x - 1, y + 1) + substance.at(x + 1, y - 1);
    return (4.0F * beside + corners - 20.0F * substance.at(x, y)) / 6.0F;
}

struct Substances {
    GreyPicture u;
    GreyPicture v;
};

// V in spots at first, U everywhere else.
Substances sown(const Raster<Tissue>& tissue, int seed)
{
    const int size = tissue.width();
    Substances substances{GreyPicture(size, size), GreyPicture(size, size)};
    GreyPicture& u = substances.u;
    GreyPicture& v = substances.v;
    v.fill([&](int x, int y) {
        const glm::vec2 place = glm::vec2(x, y) * (24.0F / static_cast<float>(size));
        return noise(place, glm::ivec2(24), seed) > 0.1F ? 0.4F * tissue.at(x, y).alive : 0.0F;
    });
    u.fill([&](int x, int y) { return 1.0F - v.at(x, y); });
    return substances;
}

// One step in one cell.
void react(const Substances& before, const Tissue& here, int x, int y, Substances& after)
{
    const auto& [u, v] = before;
    const float reaction = u.at(x, y) * v.at(x, y) * v.at(x, y);
    const float gain = kSpreadOfU * here.breadth * flowInto(u, x, y);
    const float spread = kSpreadOfV * here.breadth * flowInto(v, x, y);
    after.u.at(x, y) = u.at(x, y) + gain - reaction + kFeed * (1.0F - u.at(x, y));
    after.v.at(x, y) = here.alive * (v.at(x, y) + spread + reaction - (kFeed + kKill) * v.at(x, y));
}

} // namespace

GreyPicture growFolds(const Raster<Tissue>& tissue, int seed)
{
    const int size = tissue.width();
    Substances now = sown(tissue, seed);
    Substances next = now;
    for (int step = 0; step < kSteps; ++step) {
        for (int y = 1; y < size - 1; ++y) {
            for (int x = 1; x < size - 1; ++x) {
                react(now, tissue.at(x, y), x, y, next);
            }
        }
        std::swap(now, next);
    }
    now.v.fill([&](int x, int y) { return now.v.at(x, y) / kHighestV; });
    return now.v;
}

} // namespace brain
