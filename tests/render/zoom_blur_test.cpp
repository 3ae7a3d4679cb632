#include "reference/plain_zoom_blur.h"
#include "render/zoom_blur.h"
#include "tests/render/random_numbers.h"

#include <algorithm>
#include <array>
#include <bit>
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

// Whatever the machine's order of bytes in a word, they lie in memory as the source's do.
TEST(ZoomBlur, WritesTheChannelsInTheSourcesOrder)
{
    constexpr std::array<std::uint8_t, 8> kSource = {1, 2, 3, 4, 50, 60, 70, 80};
    constexpr std::array<std::uint8_t, 8> kExpected = {1, 2, 3, 0, 50, 60, 70, 0};
    std::array<std::uint32_t, 2> target{};
    ZoomBlur blur;
    blur.build(2, 1);
    blur.setSource(kSource.data());
    blur.setTarget(target.data());
    blur.render(1);
    EXPECT_EQ((std::bit_cast<std::array<std::uint8_t, 8>>(target)), kExpected);
    PlainBlur{2, 1}.render(kSource.data(), target.data(), 1);
    EXPECT_EQ((std::bit_cast<std::array<std::uint8_t, 8>>(target)), kExpected) << "the plain form";
}

TEST(ZoomBlurDeathTest, DiesWithAMessageWhenThereIsNoMemory)
{
    for (const int height : {1 << 28, 1 << 30, -3}) {
        EXPECT_EXIT(ZoomBlur{}.build(1 << 30, height), testing::ExitedWithCode(0),
                    "\nError allocating memory!!!\n");
    }
}
