#include "base/window_and_view.h"
#include "reference/plain_grid_warp.h"
#include "render/grid_mesh.h"
#include "render/grid_warp.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <span>
#include <vector>

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
        grid.setProjection(kViewWidth, kViewHeight, kFieldOfView);
        grid.build(0, 0, kViewWidth, kViewHeight, columns, rows, 10.0F);
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
