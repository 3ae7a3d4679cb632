#include "image/bitmap.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace {

std::vector<std::uint8_t> bytesOf(const Bitmap& bitmap, std::size_t count)
{
    return {bitmap.getPixels(), bitmap.getPixels() + count};
}

// Width, height, bits per pixel and texture name.
std::array<unsigned, 4> shapeOf(const Bitmap& bitmap)
{
    return {bitmap.getWidth(), bitmap.getHeight(), bitmap.getBpp(), bitmap.getTextureName()};
}

TEST(Bitmap, ReleaseForgetsSizeAndTextureButCreateKeepsTheTexture)
{
    Bitmap bitmap;
    bitmap.setTextureName(7);
    bitmap.create(2, 3, 24);
    bitmap.create(4, 5, 32); // the leak check of a sanitizer build watches the first buffer
    EXPECT_EQ(shapeOf(bitmap), (std::array{4U, 5U, 32U, 7U}));
    bitmap.release();
    EXPECT_EQ(bitmap.getPixels(), nullptr);
    EXPECT_EQ(shapeOf(bitmap), (std::array{0U, 0U, 0U, 0U}));

    // Without pixels, empty or in an image of nothing, there is nothing to do.
    bitmap.updateTexture();
    for (int i = 0; i < 2; ++i) {
        bitmap.setAlpha(1.0F);
        bitmap.setColourKeyAlpha(0, 0, 0, 0);
        bitmap.clear();
        bitmap.release();
        bitmap.create(0, 1000, 32);
        EXPECT_EQ(shapeOf(bitmap), (std::array{0U, 1000U, 32U, 0U}));
    }
}

TEST(Bitmap, SetAlphaWritesTheLowByteOfTheTruncatedProduct)
{
    using Row = std::pair<float, std::uint8_t>;
    constexpr std::array kRows = {
        Row{1.0F,                                    255},
        Row{0.5F,                                    127},
        Row{2.0F,                                    254}, // 510, not clamped
        Row{-0.5F,                                   129}, // -127, truncated toward zero
        Row{std::numeric_limits<float>::max(),       0  },
        Row{std::numeric_limits<float>::quiet_NaN(), 0  },
    };
    for (const auto& [alpha, byte] : kRows) {
        Bitmap bitmap;
        bitmap.create(13, 3, 32); // leaves a rest behind every width of register
        std::vector<std::uint8_t> expected(156, 0x5a);
        std::copy(expected.begin(), expected.end(), bitmap.getPixels());
        for (std::size_t i = 3; i < expected.size(); i += 4) {
            expected[i] = byte;
        }
        bitmap.setAlpha(alpha);
        EXPECT_EQ(bytesOf(bitmap, 156), expected) << alpha;
    }
}

TEST(Bitmap, ColourKeyComparesAllThreeBytesAndTouchesNothingElse)
{
    const std::vector<std::uint8_t> before = {1, 2, 3, 4, 1, 2, 4, 4, 0, 2, 3, 4,
                                              1, 0, 3, 4, 1, 2, 3, 9, 3, 2, 1, 4};
    std::vector<std::uint8_t> after = before;
    after[3] = after[19] = 200;
    Bitmap bitmap;
    bitmap.create(3, 2, 32);
    std::copy(before.begin(), before.end(), bitmap.getPixels());
    bitmap.setColourKeyAlpha(1, 2, 3, 200);
    EXPECT_EQ(bytesOf(bitmap, 24), after);
}

TEST(Bitmap, ClearZeroesExactlyThePixels)
{
    for (const unsigned bpp : {8U, 16U, 24U, 32U}) {
        Bitmap bitmap;
        bitmap.create(3, 3, bpp);
        const std::size_t size = std::size_t{9} * bpp / 8;
        std::fill_n(bitmap.getPixels(), size, std::uint8_t{1});
        bitmap.clear(); // a byte too many is a sanitizer's finding
        EXPECT_EQ(bytesOf(bitmap, size), std::vector<std::uint8_t>(size, 0)) << bpp;
    }
}

const testing::ExitedWithCode kStatus0{0};

TEST(BitmapDeathTest, CreateRefusesOtherDepthsAndSizesThatDoNotFit)
{
    Bitmap bitmap;
    for (const unsigned bpp : {0U, 1U, 15U, 17U, 64U, 0x80000020U}) {
        EXPECT_EXIT(bitmap.create(1, 1, bpp), kStatus0,
                    "^\n\nError! Wrong bpp for the picture!!\n\n$");
    }
    // Products that need more than 64 bits, wrap to 0 or to a small number, or that no machine has.
    constexpr std::array kWidths = {0xffffffffU, 0x80000000U, 0x80000001U, 0x80000000U};
    constexpr std::array kHeights = {0xffffffffU, 0x80000000U, 0x7fffffffU, 0x00020000U};
    for (std::size_t i = 0; i < kWidths.size(); ++i) {
        EXPECT_EXIT(bitmap.create(kWidths[i], kHeights[i], 32), kStatus0,
                    "\nError allocating memory for Bitmap!!\n$");
    }
}

TEST(BitmapDeathTest, TexturesOfOtherDepthsAreRefused)
{
    Bitmap bitmap;
    EXPECT_EXIT(bitmap.makeTexture(), kStatus0,
                "^\nError! Bitmap not in use yet!! Cannot generate GL-texture!\n$");
    bitmap.create(2, 2, 8);
    EXPECT_EXIT(bitmap.makeTexture(), kStatus0,
                "^\nError! 8bpp textures NOT supported as a GL-texture!!\n$");
    bitmap.updateTextureAs(1);

    bitmap.create(2, 2, 16);
    constexpr const char* kRefusal = "^\nError! 16bpp textures not yet supported!!\n\n$";
    EXPECT_EXIT(bitmap.makeTexture(), kStatus0, kRefusal);
    EXPECT_EXIT(bitmap.updateTexture(), kStatus0, kRefusal);
    EXPECT_EXIT(bitmap.updateTextureAs(1), kStatus0, kRefusal);
}

} // namespace
