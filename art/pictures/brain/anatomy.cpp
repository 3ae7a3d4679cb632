#include "art/pictures/brain/anatomy.h"

#include "art/pictures/kit/vector_layer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/common.hpp>
#include <span>

namespace brain {

namespace {

struct Point {
    double x;
    double y;
};

// clang-format off
// Forehead, crown and back of the head in one.
constexpr auto kUpperLobes = std::to_array<Point>({
    {12, 112}, {17, 82}, {38, 50}, {70, 27}, {112, 14}, {156, 15}, {198, 32}, {230, 65},
    {245, 104}, {243, 134}, {226, 150}, {194, 156}, {164, 158}, {128, 160}, {96, 156},
    {66, 152}, {42, 147}, {21, 134},
});
constexpr auto kTemporalLobe = std::to_array<Point>({
    {58, 174}, {66, 158}, {88, 151}, {110, 145}, {142, 128}, {172, 114}, {200, 126}, {208, 152},
    {182, 170}, {146, 184}, {108, 194}, {70, 190},
});
constexpr auto kCerebellum = std::to_array<Point>({
    {148, 180}, {168, 164}, {204, 152}, {234, 154}, {242, 176}, {232, 202}, {200, 217}, {168, 207},
});
constexpr auto kStem = std::to_array<Point>({
    {117, 186}, {138, 166}, {160, 180}, {167, 200}, {167, 220}, {159, 228}, {151, 218}, {136, 212},
    {122, 202},
});

// The fissures, as lines from where they are widest to where they close.
constexpr auto kLateralFissure = std::to_array<Point>({
    {34, 156}, {62, 152}, {94, 148}, {126, 136}, {154, 118}, {176, 105}, {184, 97},
});
constexpr auto kCentralFissure = std::to_array<Point>({
    {150, 10}, {147, 30}, {136, 48}, {134, 68}, {121, 86}, {117, 108}, {110, 122},
});
constexpr auto kBackFissure = std::to_array<Point>({{226, 56}, {214, 68}, {209, 84}});
// clang-format on

// A smooth curve through the points (Catmull and Rom's), as cubic pieces.
void addCurve(cairo_t* pen, std::span<const Point> points, bool closed)
{
    const auto count = static_cast<int>(points.size());
    const auto at = [&](int i) {
        const int place = closed ? wrap(i, count) : glm::clamp(i, 0, count - 1);
        return points[static_cast<std::size_t>(place)];
    };
    cairo_move_to(pen, points[0].x, points[0].y);
    for (int i = 0; i < (closed ? count : count - 1); ++i) {
        const Point before = at(i - 1);
        const Point from = at(i);
        const Point to = at(i + 1);
        const Point after = at(i + 2);
        cairo_curve_to(pen, from.x + (to.x - before.x) / 6, from.y + (to.y - before.y) / 6,
                       to.x - (after.x - from.x) / 6, to.y - (after.y - from.y) / 6, to.x, to.y);
    }
}

GreyPicture filled(std::span<const Point> points)
{
    VectorLayer layer(kSize, kSize);
    addCurve(layer.pen(), points, true);
    cairo_fill(layer.pen());
    return layer.coverage();
}

// A fissure: strokes along it, each of which ends sooner and is wider than the one before.
GreyPicture closing(std::span<const Point> points, double widest)
{
    VectorLayer layer(kSize, kSize);
    cairo_t* pen = layer.pen();
    cairo_set_line_cap(pen, CAIRO_LINE_CAP_ROUND);
    for (std::size_t count = points.size(); count >= 2; --count) {
        const auto share = static_cast<double>(points.size() - count + 1);
        cairo_set_line_width(pen, widest * share / static_cast<double>(points.size() - 1));
        addCurve(pen, points.first(count), false);
        cairo_stroke(pen);
    }
    return layer.coverage();
}

// Lets what stands inside an outline rise by one step toward its rest.
void relax(GreyPicture& swelling, const GreyPicture& outline)
{
    constexpr float kHaste = 1.93F;
    for (int y = 1; y < kSize - 1; ++y) {
        for (int x = 1; x < kSize - 1; ++x) {
            const float around = swelling.at(x - 1, y) + swelling.at(x + 1, y) +
                                 swelling.at(x, y - 1) + swelling.at(x, y + 1);
            float& here = swelling.at(x, y);
            const float next = here + kHaste * (0.25F * (around + 1.0F) - here);
            here = outline.at(x, y) < 0.5F ? 0.0F : next;
        }
    }
}

// How high a membrane over an outline stands when it is blown up (Poisson's equation, solved by
// over-relaxation), steepened so that it is upright at the rim. 1 is more than the highest.
GreyPicture swollen(const GreyPicture& outline)
{
    constexpr int kPasses = 500;
    constexpr float kHighest = 62.0F;
    GreyPicture swelling(kSize, kSize);
    for (int pass = 0; pass < kPasses; ++pass) {
        relax(swelling, outline);
    }
    swelling.fill(
        [&](int x, int y) { return std::sqrt(std::max(0.0F, swelling.at(x, y))) / kHighest; });
    return swelling;
}

GreyPicture larger(const GreyPicture& a, const GreyPicture& b)
{
    GreyPicture result(a.width(), a.height());
    result.fill([&](int x, int y) { return std::max(a.at(x, y), b.at(x, y)); });
    return result;
}

GreyPicture fissures()
{
    return larger(closing(kLateralFissure, 7.0),
                  larger(closing(kCentralFissure, 3.5), closing(kBackFissure, 5.0)));
}

} // namespace

Anatomy drawAnatomy()
{
    const GreyPicture lobes = larger(filled(kUpperLobes), filled(kTemporalLobe));
    const GreyPicture parting = fissures();
    Anatomy anatomy{lobes, filled(kCerebellum), filled(kStem), lobes};
    anatomy.cortex.fill([&](int x, int y) { return lobes.at(x, y) * (1.0F - parting.at(x, y)); });

    // The fissures part the cortex only half.
    const GreyPicture whole = swollen(lobes);
    const GreyPicture parted = swollen(anatomy.cortex);
    const GreyPicture below = larger(swollen(anatomy.cerebellum), swollen(anatomy.stem));
    anatomy.swelling.fill([&](int x, int y) {
        return std::max(0.5F * (whole.at(x, y) + parted.at(x, y)), below.at(x, y));
    });
    return anatomy;
}

} // namespace brain
