#pragma once

#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/vector_layer.h"

#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <span>

// What a brain is made of, seen from its left side: it faces left.
//
// Places are in pixels of the finished picture, which is 256 wide and high.
namespace brain {

inline constexpr int kSize = 256;

struct Point {
    double x;
    double y;
};

// clang-format off
// Forehead, crown and back of the head in one.
inline constexpr auto kUpperLobes = std::to_array<Point>({
    {12, 112}, {17, 82}, {38, 50}, {70, 27}, {112, 14}, {156, 15}, {198, 32}, {230, 65},
    {245, 104}, {243, 134}, {226, 150}, {194, 156}, {164, 158}, {128, 160}, {96, 156},
    {66, 152}, {42, 147}, {21, 134},
});
inline constexpr auto kTemporalLobe = std::to_array<Point>({
    {58, 174}, {66, 158}, {88, 151}, {110, 145}, {142, 128}, {172, 114}, {200, 126}, {208, 152},
    {182, 170}, {146, 184}, {108, 194}, {70, 190},
});
inline constexpr auto kCerebellum = std::to_array<Point>({
    {148, 180}, {168, 164}, {204, 152}, {234, 154}, {242, 176}, {232, 202}, {200, 217}, {168, 207},
});
inline constexpr auto kStem = std::to_array<Point>({
    {117, 186}, {138, 166}, {160, 180}, {167, 200}, {167, 220}, {159, 228}, {151, 218}, {136, 212},
    {122, 202},
});

// The fissures, as lines from where they are widest to where they close.
inline constexpr auto kLateralFissure = std::to_array<Point>({
    {34, 156}, {62, 152}, {94, 148}, {126, 136}, {154, 118}, {176, 105}, {184, 97},
});
inline constexpr auto kCentralFissure = std::to_array<Point>({
    {150, 10}, {147, 30}, {136, 48}, {134, 68}, {121, 86}, {117, 108}, {110, 122},
});
inline constexpr auto kBackFissure = std::to_array<Point>({{226, 56}, {214, 68}, {209, 84}});
// clang-format on

// A smooth curve through the points (Catmull and Rom's), as cubic pieces.
inline void addCurve(cairo_t* pen, std::span<const Point> points, bool closed)
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

} // namespace brain
