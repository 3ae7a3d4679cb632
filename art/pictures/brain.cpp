// A brain from the side, made of light. Two substances react and spread inside its outline until
// they have settled into a labyrinth; its walls are the folds, and the folds glow. Dozens of copies
// are added on screen, so one alone is faint.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"

#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <span>
#include <utility>

namespace {

constexpr int kSize = 256;
constexpr int kSeed = 11;

// Gray and Scott's reaction, as described by Pearson, "Complex Patterns in a Simple System" (1993).
constexpr float kFeed = 0.034F;
constexpr float kKill = 0.0585F;
constexpr float kSpreadOfU = 0.13F; // pixels squared a step, where folds are broadest
constexpr float kSpreadOfV = 0.065F;
constexpr int kSteps = 4500;
constexpr float kHighestV = 0.36F;

constexpr int kBends = 16;    // across the picture
constexpr float kBend = 4.8F; // pixels

// What a picture may hold without burning out in its scene.
constexpr float kPeak = 0.195F;

constexpr glm::vec3 kLight{-0.5F, -0.65F, 0.6F};
constexpr glm::vec3 kRimLight{0.8F, 0.55F, -0.1F};
constexpr float kBulge = 60.0F; // how steep the brain's outline falls off, pixels

const std::array kGlow = {colour(0x000000), colour(0x140634), colour(0x4a1690),
                          colour(0xb0309c), colour(0xff5a8c), colour(0xffc0d0)};

// The outlines' corners, in pixels; the brain faces left.
struct Point {
    double x;
    double y;
};
// clang-format off
constexpr auto kCerebrum = std::to_array<Point>({
    {14, 116}, {24, 76}, {56, 40}, {106, 20}, {160, 24}, {210, 50}, {240, 96}, {243, 134},
    {224, 154}, {186, 160}, {152, 176}, {108, 187}, {74, 178}, {56, 158}, {42, 150}, {22, 142},
});
constexpr auto kCerebellum = std::to_array<Point>({
    {152, 172}, {184, 158}, {222, 156}, {233, 172}, {222, 196}, {192, 208}, {164, 198},
});
constexpr auto kStem = std::to_array<Point>({
    {124, 184}, {150, 168}, {168, 186}, {172, 212}, {180, 240}, {162, 246}, {150, 222}, {132, 206},
});
// clang-format on

// The parts of a brain, as coverage.
struct Anatomy {
    GreyPicture cerebrum{kSize, kSize};
    GreyPicture cerebellum{kSize, kSize};
    GreyPicture stem{kSize, kSize};
    GreyPicture fissures{kSize, kSize};
};

// Fills a smooth closed curve through the points (Catmull and Rom's).
GreyPicture filled(std::span<const Point> points)
{
    const std::size_t count = points.size();
    VectorLayer layer(kSize, kSize);
    cairo_t* pen = layer.pen();
    cairo_move_to(pen, points[0].x, points[0].y);
    for (std::size_t i = 0; i < count; ++i) {
        const Point& before = points[(i + count - 1) % count];
        const Point& from = points[i];
        const Point& to = points[(i + 1) % count];
        const Point& after = points[(i + 2) % count];
        cairo_curve_to(pen, from.x + (to.x - before.x) / 6, from.y + (to.y - before.y) / 6,
                       to.x - (after.x - from.x) / 6, to.y - (after.y - from.y) / 6, to.x, to.y);
    }
    cairo_fill(pen);
    return layer.coverage();
}

Anatomy drawAnatomy()
{
    Anatomy anatomy;
    anatomy.cerebrum = filled(kCerebrum);
    anatomy.cerebellum = filled(kCerebellum);
    anatomy.stem = filled(kStem);
    VectorLayer layer(kSize, kSize);
    cairo_t* pen = layer.pen();
    // Below the temporal lobe's upper edge, then between forehead and crown: wedges that close.
    cairo_move_to(pen, 38, 148);
    cairo_curve_to(pen, 90, 149, 122, 132, 182, 104);
    cairo_curve_to(pen, 124, 136, 96, 156, 50, 153);
    cairo_fill(pen);
    cairo_move_to(pen, 139, 14);
    cairo_curve_to(pen, 137, 50, 116, 66, 113, 102);
    cairo_curve_to(pen, 120, 70, 140, 54, 143, 14);
    cairo_fill(pen);
    anatomy.fissures = layer.coverage();
    return anatomy;
}

// How far the substances spread at a place, as a share of the most, and whether they live there.
struct Tissue {
    float spreadX = 0.0F;
    float spreadY = 0.0F;
    float alive = 0.0F;
};

Raster<Tissue> tissueOf(const Anatomy& anatomy, const GreyPicture& dome)
{
    Raster<Tissue> tissue(kSize, kSize, Tissue());
    tissue.fill([&](int x, int y) {
        const float cerebrum = anatomy.cerebrum.at(x, y) * (1.0F - anatomy.fissures.at(x, y));
        const float behind = 1.0F - softStep(0.0F, 0.3F, anatomy.cerebrum.at(x, y));
        const float cerebellum = anatomy.cerebellum.at(x, y) * behind;
        const float stem = anatomy.stem.at(x, y) * behind * softStep(0.3F, 0.0F, cerebellum);
        if (cerebellum > 0.0F) {
            return Tissue{1.0F, 0.26F, cerebellum};
        }
        if (stem > 0.0F) {
            return Tissue{0.2F, 1.2F, stem};
        }
        const float breadth = 0.3F + 0.7F * softStep(0.35F, 1.0F, dome.at(x, y));
        return Tissue{breadth, breadth, cerebrum};
    });
    return tissue;
}

// What flows into a pixel from its eight neighbours; the diagonal ones keep the flow round.
float flowInto(const GreyPicture& substance, const Tissue& tissue, int x, int y)
{
    const float here = substance.at(x, y);
    const float aside = substance.at(x - 1, y) + substance.at(x + 1, y);
    const float above = substance.at(x, y - 1) + substance.at(x, y + 1);
    const float corners = substance.at(x - 1, y - 1) + substance.at(x + 1, y - 1) +
                          substance.at(x - 1, y + 1) + substance.at(x + 1, y + 1);
    return tissue.spreadX * (aside - 2.0F * here) + tissue.spreadY * (above - 2.0F * here) +
           glm::min(tissue.spreadX, tissue.spreadY) / 6.0F *
               (corners - 2.0F * (aside + above) + 4.0F * here);
}

// Lets the reaction settle; returns how much of V there is, from 0 to about 1.
GreyPicture growFolds(const Raster<Tissue>& tissue)
{
    GreyPicture u(kSize, kSize);
    GreyPicture v(kSize, kSize);
    v.fill([&](int x, int y) {
        const glm::vec2 place = glm::vec2(x, y) * (32.0F / kSize);
        return noise(place, glm::ivec2(32), kSeed) > 0.1F ? 0.4F * tissue.at(x, y).alive : 0.0F;
    });
    u.fill([&](int x, int y) { return 1.0F - v.at(x, y); });
    GreyPicture nextU = u;
    GreyPicture nextV = v;
    for (int step = 0; step < kSteps; ++step) {
        for (int y = 1; y < kSize - 1; ++y) {
            for (int x = 1; x < kSize - 1; ++x) {
                const Tissue& here = tissue.at(x, y);
                const float reaction = u.at(x, y) * v.at(x, y) * v.at(x, y);
                nextU.at(x, y) = u.at(x, y) + kSpreadOfU * flowInto(u, here, x, y) - reaction +
                                 kFeed * (1.0F - u.at(x, y));
                nextV.at(x, y) = here.alive * (v.at(x, y) + kSpreadOfV * flowInto(v, here, x, y) +
                                               reaction - (kFeed + kKill) * v.at(x, y));
            }
        }
        std::swap(u, nextU);
        std::swap(v, nextV);
    }
    v.fill([&](int x, int y) { return v.at(x, y) / kHighestV; });
    return v;
}

// Bends what has grown a little, outline and all, since nothing in a body is straight.
GreyPicture bent(const GreyPicture& folds)
{
    GreyPicture result(kSize, kSize);
    result.fill([&](int x, int y) {
        const glm::vec2 pixel(x, y);
        const glm::vec2 place = pixel * (static_cast<float>(kBends) / kSize);
        const glm::ivec2 period(kBends);
        const float aside = kBend * fractalNoise(place, period, 2, kSeed + 2);
        const float above = kBend * fractalNoise(place, period, 2, kSeed + 5);
        return folds.sample(pixel.x + aside, pixel.y + above);
    });
    return result;
}

// The glow of a fold: a bright thread on its crest, flesh on its sides, and what spills into the
// furrows. Signals run along some of the threads.
glm::vec3 glowAt(const GreyPicture& folds, const GreyPicture& dome, const GreyPicture& halo, int x,
                 int y)
{
    const float fold = folds.at(x, y);
    const glm::vec2 place = glm::vec2(x, y) * (16.0F / kSize);
    const float signal = softStep(0.05F, 0.45F, noise(place, glm::ivec2(16), kSeed + 1));
    const glm::vec3 bulge = normalAt(dome, x, y, kBulge);
    const glm::vec3 flank = normalAt(folds, x, y, 5.0F);
    const float form = 0.2F + 0.9F * matt(bulge, kLight) + 0.45F * matt(bulge, kRimLight);
    const float thread = power(glm::clamp(fold, 0.0F, 1.1F), 4.0F);
    const float flesh = fold * matt(flank, kLight);
    const float tail = softStep(250.0F, 216.0F, static_cast<float>(y)); // the stem fades away
    const float spill = halo.at(x, y);
    const float light =
        tail * form * (thread * (0.58F + 0.60F * signal) + 0.42F * flesh + 0.28F * spill);
    return ramp(kGlow, light);
}

void makeBrain(const OutputFolder& folder)
{
    const Anatomy anatomy = drawAnatomy();
    const GreyPicture dome = blurred(anatomy.cerebrum, 12);
    const GreyPicture folds = bent(growFolds(tissueOf(anatomy, dome)));
    const GreyPicture halo = blurred(folds, 3);

    Picture picture(kSize, kSize);
    picture.fill(
        [&](int x, int y) { return glm::vec4(kPeak * glowAt(folds, dome, halo, x, y), 1.0F); });
    folder.write(picture, 24, "additiivinen_aivo.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeBrain);
}
