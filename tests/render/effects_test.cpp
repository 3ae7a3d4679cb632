// The effects that work in memory, against their plain forms: equal to the last bit.
#include "reference/plain_bump_tube.h"
#include "reference/plain_grid_warp.h"
#include "reference/plain_twister.h"
#include "reference/plain_zoom_blur.h"
#include "render/bump_tube.h"
#include "render/grid_mesh.h"
#include "render/grid_warp.h"
#include "render/twister.h"
#include "render/zoom_blur.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <span>
#include <vector>

namespace {

template <class Number>
std::vector<Number> randomNumbers(std::size_t count)
{
    std::vector<Number> numbers(count);
    std::mt19937 random{5};
    std::generate(numbers.begin(), numbers.end(), [&] { return static_cast<Number>(random()); });
    return numbers;
}

} // namespace

// The slots between the strips, and what the fast variants leave, must stay as they were.
TEST(GridWarp, MovesEveryPointOfEveryVariantAndNothingElse)
{
    constexpr float kUntouched = -7.0F;
    for (const auto& [columns, rows] : {
             std::array{80, 34},
             std::array{1,  1 },
             std::array{3,  7 }
    }) {
        GridMesh grid;
        grid.setProjection(640, 272, 60.0F);
        grid.build(0, 0, 640, 272, columns, rows, 10.0F);
        GridWarp warp;
        warp.setGrid(&grid);
        std::vector<float> expected(static_cast<std::size_t>(rows * grid.stripStride()));
        const PlainGrid plain = {columns, rows, expected.data()};
        const std::span<float> coords = {grid.texCoords(), expected.size()};

        for (const float t : {0.0F, 1.25F, 61.7F, 299.99F}) {
            for (const int variant : {0, 1, 2}) {
                std::fill(coords.begin(), coords.end(), kUntouched);
                std::fill(expected.begin(), expected.end(), kUntouched);
                if (variant == 0) {
                    warp.apply(t);
                    plainWarp(plain, t);
                } else if (variant == 1) {
                    warp.applyFast(t);
                    plainWarpFast(plain, t);
                } else {
                    warp.applyFastBiased(t, 0.7F);
                    plainWarpFastBiased(plain, t, 0.7F);
                }
                EXPECT_TRUE(std::equal(coords.begin(), coords.end(), expected.begin()))
                    << columns << " x " << rows << ", variant " << variant << " at " << t;
            }
        }
    }
}

// Rows and columns outside, bars wider than the target, one face and two, no width at all.
TEST(Twister, DrawsTheVisibleFacesInsideTheTargetOnly)
{
    constexpr int kWidth = 64;
    constexpr int kHeight = 300;
    const auto source = randomNumbers<std::uint32_t>(std::size_t{256} * 256);
    std::vector<std::uint32_t> target(std::size_t{kWidth} * (kHeight + 2), 1U);
    std::vector<std::uint32_t> expected = target;
    Twister twister;
    twister.setWidth(kWidth);
    twister.setHeight(kHeight);
    twister.setTarget(target.data() + kWidth);
    twister.setSource(source.data());
    PlainBar plain = {expected.data() + kWidth, kWidth, kHeight, source.data(), 0};

    for (const int radius : {0, 1, 20, 33, 500, -20}) {
        for (const int centre : {-400, 0, 31, 64, 400}) {
            for (const float angle : {0.0F, 0.785398163F, 1.0F, -2.5F, 1234.5F}) {
                for (const int row : {-1, 0, 255, 256, kHeight - 1, kHeight}) {
                    twister.setRadius(radius);
                    twister.drawRow(centre, row, angle);
                    plain.radius = radius;
                    plainTwisterRow(plain, centre, row, angle);
                }
                ASSERT_EQ(target, expected) << radius << " about " << centre << " at " << angle;
            }
        }
    }
}

// Past 164 seconds the fastest map has left the range of its position, past 304 all but one have.
TEST(BumpTube, BulgesAndLightsAsThePlainTubeDoes)
{
    const auto map = randomNumbers<std::uint8_t>(std::size_t{1024} * 1024);
    for (const auto& [slices, stacks] : {
             std::array{64, 64},
             std::array{5,  3 }
    }) {
        BumpTube tube;
        tube.build(slices, stacks, 1.0F, 40.0F);
        tube.setHeightMaps(map.data(), map.data());
        PlainTube plain{slices, stacks, 1.0F, 40.0F};
        tube.update(0.0F); // where the maps are before is left to chance
        plain.bulge(0.0F, map.data(), map.data());

        for (const float t : {0.016F, 3.5F, 163.0F, 170.0F, 310.0F, 3600.0F, 0.0F}) {
            tube.update(t);
            plain.bulge(t, map.data(), map.data());
            const auto vertices = tube.vertices();
            ASSERT_EQ(vertices.size(), plain.bulged().size());
            for (std::size_t i = 0; i < vertices.size(); ++i) {
                const BumpTube::Vertex& a = vertices[i];
                const PlainTubeVertex& b = plain.bulged()[i];
                ASSERT_EQ((std::array{a.x, a.y, a.z, a.s, a.t}),
                          (std::array{b.x, b.y, b.z, b.s, b.t}))
                    << "vertex " << i << " of " << slices << " x " << stacks << " at " << t;
            }
        }
    }
}

// Every number of levels, also one after another, over sizes whose centre is no pixel's middle.
TEST(ZoomBlur, AveragesTheSamplesThatThereAre)
{
    for (const auto& [width, height] : {
             std::array{256, 128},
             std::array{1,   1  },
             std::array{8,   8  },
             std::array{33,  20 },
             std::array{3,   40 }
    }) {
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        auto source = randomNumbers<std::uint8_t>(4 * count);
        std::fill_n(source.begin(), source.size() / 3, std::uint8_t{255});
        std::vector<std::uint32_t> target(count + 1, 77U);
        std::vector<std::uint32_t> expected = target;
        ZoomBlur blur;
        blur.build(width, height);
        blur.setSource(source.data());
        blur.setTarget(target.data());
        const PlainBlur plain{width, height};
        for (int levels = 1; levels <= 20; ++levels) {
            blur.render(levels);
            plain.render(source.data(), expected.data(), levels);
            ASSERT_EQ(target, expected) << levels << " levels of " << width << " x " << height;
        }
    }
}

// Nothing that is asked for is too large to be refused in words.
TEST(Effects, DieWithAMessageWhenThereIsNoMemory)
{
    constexpr int kFar = 1 << 30;
    for (const int far : {1 << 28, kFar, -3}) {
        EXPECT_EXIT(GridMesh{}.build(0, 0, 1, 1, kFar, far, 1.0F), ::testing::ExitedWithCode(1),
                    "");
        EXPECT_EXIT(ZoomBlur{}.build(kFar, far), ::testing::ExitedWithCode(0),
                    "\nError allocating memory!!!\n");
        EXPECT_EXIT((BumpTube{}.build(kFar, far, 1.0F, 1.0F)), ::testing::ExitedWithCode(0),
                    "\nError allocating memory!\n");
    }
}
