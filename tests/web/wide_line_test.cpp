#include "web/gl/wide_line.h"

#include <gtest/gtest.h>

namespace {

constexpr int kWidth = 200; // pixels of the viewport, so that one is a hundredth of a unit
constexpr int kHeight = 100;

struct Case {
    const char* name;
    Point from;
    Point to;
    float width;
    std::array<std::array<float, 2>, 4> corners; // pixels from the viewport's middle
};

// A steep line is widened sideways, any other up and down; 45 degrees are not steep.
constexpr Case kCases[] = {
    {"Level",       {0, 0, 0, 1},    {0.1F, 0, 0, 1},    5, {{{0, -2.5F}, {0, 2.5F}, {10, -2.5F}, {10, 2.5F}}}},
    {"Upright",     {0, 0, 0, 1},    {0, 0.2F, 0, 1},    4, {{{-2, 0}, {2, 0}, {-2, 10}, {2, 10}}}            },
    {"HalfWay",     {0, 0, 0, 1},    {0.1F, 0.2F, 0, 1}, 2, {{{0, -1}, {0, 1}, {10, 9}, {10, 11}}}            },
    {"Perspective", {0, 0, 1, 2},    {0.4F, 0, 3, 4},    2, {{{0, -1}, {0, 1}, {10, -1}, {10, 1}}}            },
 // From the near plane (z = -w) on, which is half way.
    {"FromBehind",  {0, 0, -3, 1},   {0.2F, 0, 1, 1},    2, {{{10, -1}, {10, 1}, {20, -1}, {20, 1}}}          },
    {"ToBehind",    {0.2F, 0, 1, 1}, {0, 0, -3, 1},      2, {{{20, -1}, {20, 1}, {10, -1}, {10, 1}}}          },
};

} // namespace

TEST(WideLine, IsAParallelogram)
{
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.name);
        const auto line = wideLine(row.from, row.to, row.width, kWidth, kHeight);
        ASSERT_TRUE(line);
        for (std::size_t i = 0; i < line->size(); ++i) {
            const Point& p = (*line)[i];
            EXPECT_NEAR(p[0] / p[3] * kWidth / 2, row.corners[i][0], 1e-4) << "corner " << i;
            EXPECT_NEAR(p[1] / p[3] * kHeight / 2, row.corners[i][1], 1e-4) << "corner " << i;
        }
    }
}

TEST(WideLine, IsNothingBehindTheEye)
{
    EXPECT_FALSE(wideLine({0, 0, -3, 1}, {1, 0, -2, 1}, 5, kWidth, kHeight));
    EXPECT_FALSE(wideLine({0, 0, -3, -1}, {1, 0, -2, -2}, 5, kWidth, kHeight));
}
