#include "reference/plain_twister.h"
#include "render/twister.h"
#include "tests/render/random_numbers.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

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
