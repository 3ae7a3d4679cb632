#include "image/bitmap.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

std::vector<std::uint8_t> bytesOf(const Bitmap& bitmap, std::size_t count)
{
    return {bitmap.getPixels(), bitmap.getPixels() + count};
}

TEST(Bitmap, StartsEmptyAndReleasesNothing)
{
    Bitmap bitmap;
    bitmap.clear();
    bitmap.setAlpha(1.0F);
    bitmap.updateTexture();
    bitmap.release();
    EXPECT_EQ(bitmap.getWidth(), 0U);
    EXPECT_EQ(bitmap.getTextureName(), 0U);
}

TEST(Bitmap, ReleaseForgetsSizeAndTextureButCreateKeepsTheTexture)
{
    Bitmap bitmap;
    bitmap.setTextureName(7);
    bitmap.create(2, 3, 24);
    bitmap.create(4, 5, 32); // the leak check of a sanitizer build watches the first buffer
    EXPECT_EQ(bitmap.getWidth(), 4U);
    EXPECT_EQ(bitmap.getHeight(), 5U);
    EXPECT_EQ(bitmap.getBpp(), 32U);
    EXPECT_EQ(bitmap.getTextureName(), 7U);

    bitmap.release();
    EXPECT_EQ(bitmap.getPixels(), nullptr);
    EXPECT_EQ(bitmap.getWidth(), 0U);
    EXPECT_EQ(bitmap.getHeight(), 0U);
    EXPECT_EQ(bitmap.getBpp(), 0U);
    EXPECT_EQ(bitmap.getTextureName(), 0U);
}

struct AlphaCase {
    float alpha;
    int byte;
};

constexpr auto kAlphaCases = std::to_array<AlphaCase>({
    {1.0F,                                    255},
    {0.5F,                                    127},
    {0.999F,                                  254},
    {2.0F,                                    254}, // 510, not clamped
    {-0.5F,                                   129}, // -127, truncated toward zero
    {1.0e18F,                                 -1 }, // any byte, but no trap
    {std::numeric_limits<float>::max(),       0  },
    {std::numeric_limits<float>::infinity(),  0  },
    {std::numeric_limits<float>::quiet_NaN(), 0  },
});

TEST(Bitmap, SetAlphaWritesTheLowByteOfTheTruncatedProduct)
{
    // Odd sizes leave a rest behind every width of register.
    for (const AlphaCase& row : kAlphaCases) {
        Bitmap bitmap;
        bitmap.create(13, 3, 32);
        std::fill_n(bitmap.getPixels(), 156, std::uint8_t{0x5a});
        bitmap.setAlpha(row.alpha);
        for (std::size_t i = 0; i < 156; ++i) {
            const bool isAlpha = i % 4 == 3;
            if (isAlpha && row.byte >= 0) {
                ASSERT_EQ(bitmap.getPixels()[i], row.byte) << row.alpha << " at byte " << i;
            } else if (!isAlpha) {
                ASSERT_EQ(bitmap.getPixels()[i], 0x5a) << row.alpha << " at byte " << i;
            }
        }
    }
}

TEST(Bitmap, ColourKeyComparesAllThreeBytesAndTouchesNothingElse)
{
    const std::vector<std::uint8_t> before = {1, 2, 3, 4, 1, 2, 4, 4, 0, 2, 3, 4,
                                              1, 0, 3, 4, 1, 2, 3, 9, 3, 2, 1, 4};
    const std::vector<std::uint8_t> after = {1, 2, 3, 200, 1, 2, 4, 4,   0, 2, 3, 4,
                                             1, 0, 3, 4,   1, 2, 3, 200, 3, 2, 1, 4};
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

TEST(Bitmap, AnImageOfNothingIsHeld)
{
    Bitmap bitmap;
    bitmap.create(0, 1000, 32);
    bitmap.setAlpha(1.0F);
    bitmap.setColourKeyAlpha(0, 0, 0, 0);
    bitmap.clear();
    EXPECT_EQ(bitmap.getHeight(), 1000U);
}

constexpr const char* kNoMemory = "\nError allocating memory for Bitmap!!\n$";

TEST(BitmapDeathTest, CreateRefusesOtherDepths)
{
    for (const unsigned bpp : {0U, 1U, 15U, 17U, 64U, 0x80000020U}) {
        Bitmap bitmap;
        EXPECT_EXIT(bitmap.create(1, 1, bpp), testing::ExitedWithCode(0),
                    "^\n\nError! Wrong bpp for the picture!!\n\n$");
    }
}

TEST(BitmapDeathTest, CreateDiesWhereTheSizeDoesNotFit)
{
    struct Size {
        unsigned width, height, bpp;
    };
    constexpr auto kSizes = std::to_array<Size>({
        {0xffffffffU, 0xffffffffU, 32}, // more than 64 bits
        {0x80000000U, 0x80000000U, 32}, // 2^64 bytes: 0 when the product wraps
        {0x80000001U, 0x7fffffffU, 32}, // wraps to a small number
        {0x80000000U, 0x40000000U, 32}, // half the address space
        {0x80000000U, 0x00080000U, 8 }, // fits, but no machine has it
    });
    for (const Size& size : kSizes) {
        Bitmap bitmap;
        EXPECT_EXIT(bitmap.create(size.width, size.height, size.bpp), testing::ExitedWithCode(0),
                    kNoMemory);
    }
}

TEST(BitmapDeathTest, TexturesOfOtherDepthsAreRefused)
{
    Bitmap empty;
    EXPECT_EXIT(empty.makeTexture(), testing::ExitedWithCode(0),
                "^\nError! Bitmap not in use yet!! Cannot generate GL-texture!\n$");

    Bitmap indexed;
    indexed.create(2, 2, 8);
    EXPECT_EXIT(indexed.makeTexture(), testing::ExitedWithCode(0),
                "^\nError! 8bpp textures NOT supported as a GL-texture!!\n$");
    indexed.updateTexture();
    indexed.updateTextureAs(1);

    Bitmap highColour;
    highColour.create(2, 2, 16);
    constexpr const char* kRefusal = "^\nError! 16bpp textures not yet supported!!\n\n$";
    EXPECT_EXIT(highColour.makeTexture(), testing::ExitedWithCode(0), kRefusal);
    EXPECT_EXIT(highColour.updateTexture(), testing::ExitedWithCode(0), kRefusal);
    EXPECT_EXIT(highColour.updateTextureAs(1), testing::ExitedWithCode(0), kRefusal);
}

} // namespace
