#include "reference/plain_zoom_blur.h"
#include "render/zoom_blur.h"
#include "tests/render/random_numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

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

TEST(ZoomBlurDeathTest, DiesWithAMessageWhenThereIsNoMemory)
{
    for (const int height : {1 << 28, 1 << 30, -3}) {
        EXPECT_EXIT(ZoomBlur{}.build(1 << 30, height), testing::ExitedWithCode(0),
                    "\nError allocating memory!!!\n");
    }
}
