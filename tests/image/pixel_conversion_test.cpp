#include "tests/image/picture_checks.h"

namespace {

TEST(PixelConversion, ConvertsEveryWordAsThePlainFormDoes)
{
    Bytes words;
    for (unsigned word = 0; word < 65536; ++word) {
        words.insert(words.end(), {std::uint8_t(word & 255), std::uint8_t(word >> 8)});
    }
    struct Depths {
        int sourceBpp;
        int bpp;
    };
    constexpr Depths kDepths[] = {
        {15, 16},
        {15, 24},
        {15, 32},
        {16, 24},
        {16, 32},
    };
    for (const auto& [sourceBpp, bpp] : kDepths) {
        Bitmap bitmap;
        bitmap.create(256, 256, static_cast<unsigned>(bpp));
        bitmap.convertFrom(words.data(), sourceBpp);
        Bytes expected(pixelsOf(bitmap).size());
        plainConvertPixels(words.data(), sourceBpp, expected.data(), bpp, 65536, {});
        EXPECT_TRUE(pixelsOf(bitmap) == expected) << sourceBpp << " to " << bpp;
    }
}

// Written out, in case the plain form is wrong in the same way.
TEST(PixelConversion, CutsAndFillsLowBits)
{
    struct Row {
        int sourceBpp;
        unsigned bpp;
        Bytes source; // of two pixels
        Bytes expected;
    };
    // clang-format off
    const Row rows[] = {
        {24, 16, {255, 255, 255, 8, 4, 8}, {0xff, 0xff, 0x21, 0x08}},
        {16, 24, {0xff, 0xff, 0x21, 0x08}, {248, 252, 248, 8, 4, 8}},
        {15, 16, {0xff, 0x7f, 0x01, 0x80}, {0xdf, 0xff, 0x01, 0x00}},
        {15, 32, {0xff, 0xff, 0x41, 0x0c}, {248, 248, 248, 255, 24, 16, 8, 255}},
        {8, 16, {5, 0}, {0xa3, 0x08, 0, 0}},
        {32, 32, {1, 2, 3, 4, 5, 6, 7, 8}, {0, 0, 0, 0, 0, 0, 0, 0}}, // nothing is written
    };
    // clang-format on
    for (const auto& [sourceBpp, bpp, source, expected] : rows) {
        Bitmap bitmap;
        bitmap.create(2, 1, bpp);
        bitmap.clear();
        bitmap.getPalette()[5] = {10, 20, 30};
        bitmap.convertFrom(source.data(), sourceBpp);
        EXPECT_EQ(pixelsOf(bitmap), expected) << sourceBpp << " to " << bpp;
    }
}

TEST(PixelConversionDeathTest, ConvertsToThreeDepthsOnly)
{
    const std::string to8 = "^\nError! Can't convert to 8bpp!!\n\n$";
    const std::string destination = "^\n\nError! Not supported destination-bpp!!\n\n$";
    Bitmap bitmap;
    bitmap.create(0, 0, 8);
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 12), kStatus0,
                "^\n\nError! Not a valid bitdepth for the source!!\n\n$");
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 24), kStatus0, to8);
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 8), kStatus0, destination);
    const TemporaryFile file{makeTga({.width = 32767, .height = 100}, {})};
    EXPECT_EXIT(bitmap.load(file.path(), 15), kStatus0, destination);
    EXPECT_EXIT(bitmap.load(file.path(), 0xffffffffU), kStatus0,
                "\n\nError allocating memory!!\n\n$");
}

} // namespace
