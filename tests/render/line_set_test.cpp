#include "reference/plain_line_set.h"
#include "render/line_set.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kHugest = std::numeric_limits<float>::max();

using Pixel = std::array<std::uint8_t, 4>; // red, green, blue, alpha
using Block = std::array<int, 4>;          // left, top, right and bottom, both included

// Bytes before and behind the pixels that must not be written; none where the address sanitizer
// watches the ends itself, and reads too.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kGuard = 0;
#else
constexpr std::size_t kGuard = 256;
#endif

struct Canvas {
    int width, height;
    std::vector<std::uint8_t> bytes =
        std::vector<std::uint8_t>(static_cast<std::size_t>(4 * width * height) + 2 * kGuard);

    [[nodiscard]] std::uint8_t* pixels() { return bytes.data() + kGuard; }
    void fill(std::uint8_t byte) { bytes.assign(bytes.size(), byte); }
    void paint(const Block& block, const Pixel& pixel)
    {
        for (int y = block[1]; y <= block[3]; ++y) {
            for (int x = block[0]; x <= block[2]; ++x) {
                std::copy_n(pixel.begin(), 4, pixels() + std::ptrdiff_t{4} * (y * width + x));
            }
        }
    }
};

struct Drawing {
    float x0, y0, x1, y1;
    int thickness;
    std::vector<Block> blocks;
};

TEST(DrawLine, FillsExactlyThesePixelsAndSaturates)
{
    // clang-format off
    const std::vector<Drawing> drawings = {
        {10, 10, 10.5F, 30, 1, {{10, 10, 10, 29}}},
        {10.5F, 30, 10, 10, 1, {{10, 10, 10, 29}}}, // the other way
        {10, 10, 30, 12, 1, {{10, 10, 20, 10}, {21, 11, 29, 11}}},
        {30, 12, 10, 10, 1, {{10, 10, 20, 10}, {21, 11, 29, 11}}},
        {10, 20.5F, 14, 20.5F, 3, {{10, 20, 13, 22}}}, // grows down
        {10, 20, 10, 22, 3, {{10, 20, 12, 21}}}, // grows right
        {10, 10, 12, 12, 2, {{10, 10, 11, 10}, {11, 11, 12, 11}}}, // equal lengths walk down
        {-10, 5, 10, 15, 1,
         {{0, 10, 1, 10}, {2, 11, 3, 11}, {4, 12, 5, 12}, {6, 13, 7, 13}, {8, 14, 9, 14}}},
        {5, -10, 15, 10, 1,
         {{10, 0, 10, 1}, {11, 2, 11, 3}, {12, 4, 12, 5}, {13, 6, 13, 7}, {14, 8, 14, 9}}},
        // A bar that would touch the last column or row is left out whole.
        {60, 10, 60, 20, 3, {{60, 10, 62, 19}}},
        {61, 10, 61, 20, 3, {}},
        {10, 50, 10, 62, 3, {{10, 50, 12, 59}}},
        {50, 10, 62, 10, 3, {{50, 10, 62, 12}}},
        {10, 64, 40, 64, 1, {}}, // on the lower border
    };
    // clang-format on
    for (const Drawing& d : drawings) {
        Canvas canvas{64, 64};
        canvas.fill(200);
        Canvas expected = canvas;
        for (const Block& block : d.blocks) {
            expected.paint(block, {203, 202, 255, 0});
        }
        LineSet lines;
        lines.setTarget(canvas.pixels(), 64, 64);
        lines.drawLine(d.x0, d.y0, d.x1, d.y1, 200, 2, 3, canvas.pixels(), d.thickness);
        EXPECT_TRUE(canvas.bytes == expected.bytes)
            << d.x0 << ", " << d.y0 << " to " << d.x1 << ", " << d.y1;
    }
}

// An end inside, around, far from or nowhere near the picture, or on a round number, so that equal
// lengths and level lines come up.
float coordinate(std::mt19937& random, int extent)
{
    constexpr std::array kOdd = {kInfinity, -kInfinity, kNotANumber, kHugest, -kHugest, -0.0F};
    const auto size = static_cast<float>(extent);
    const float share = std::uniform_real_distribution<float>{-1.0F, 1.0F}(random);
    const unsigned kind = random() % 16;
    return kind == 0  ? kOdd[random() % 6]
           : kind < 3 ? std::ldexp(share, static_cast<int>(random() % 130))
           : kind < 6 ? std::floor(2.0F * size * share)
           : kind < 8 ? 4.0F * size * share
                      : size * std::fabs(share);
}

int channel(std::mt19937& random)
{
    constexpr std::array kOdd = {0, 200, 255, 256, 1000, -1, -300};
    return random() % 8 == 0 ? kOdd[random() % 7] : static_cast<int>(random() % 64);
}

TEST(DrawLine, EqualsThePlainWalkByteForByte)
{
    std::mt19937 random{20010317};
    constexpr std::array kWidths = {1, 7, 64, 33, 211, 256, 0};
    constexpr std::array kHeights = {1, 5, 64, 190, 17, 128, 9};
    for (std::size_t size = 0; size < kWidths.size(); ++size) {
        const int width = kWidths[size];
        const int height = kHeights[size];
        Canvas canvas{width, height};
        Canvas expected{width, height};
        LineSet lines;
        lines.setTarget(canvas.pixels(), width, height);
        for (int i = 0; i < 12000; ++i) {
            if (i % 500 == 0) { // before all of it has saturated
                canvas.fill(static_cast<std::uint8_t>(random() % 100));
                expected.bytes = canvas.bytes;
            }
            const float x0 = coordinate(random, width);
            const float y0 = coordinate(random, height);
            const float x1 = coordinate(random, width);
            const bool sameLengths = random() % 8 == 0;
            const float y1 = sameLengths ? y0 + (x1 - x0) : coordinate(random, height);
            const std::array c = {channel(random), channel(random), channel(random)};
            const int thickness =
                random() % 64 == 0 ? INT_MAX : static_cast<int>(random() % 23) - 1;
            lines.drawLine(x0, y0, x1, y1, c[0], c[1], c[2], canvas.pixels(), thickness);
            plainDrawLine({expected.pixels(), width, height}, x0, y0, x1, y1, c[0], c[1], c[2],
                          thickness);
            ASSERT_TRUE(canvas.bytes == expected.bytes)
                << width << " x " << height << ", segment " << i << ": " << x0 << ", " << y0
                << " to " << x1 << ", " << y1 << ", thickness " << thickness;
        }
    }
}

using Values = std::array<float, 6>; // x, y, z, blue, green, red

Values valuesOf(const LineVertex& v)
{
    return {v.x, v.y, v.z, v.colour[0], v.colour[1], v.colour[2]};
}

TEST(LineSet, StartsAtTheOriginUnturnedInGreyishColours)
{
    LineSet lines;
    lines.setAngleX(1.0F);
    lines.create(2);
    for (const auto& vertices : {lines.vertices(), lines.transformed()}) {
        ASSERT_EQ(vertices.size(), 2U);
        EXPECT_EQ(valuesOf(vertices[0]), (Values{0, 0, 0, 32, 16, 24}));
        EXPECT_EQ(valuesOf(vertices[1]), (Values{0, 0, 0, 32, 16, 24}));
    }
    lines.setPosition(0.5F, -1.0F, 2.0F);
    lines.transform();
    EXPECT_EQ(lines.matrix(),
              (std::array<float, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.5F, -1, 2, 1}));
    testing::internal::CaptureStdout();
    lines.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nx: 0.5\ny: -1\nz: 2\n\nx: 0.5\ny: -1\nz: 2\n");

    lines.create(-4); // holds nothing
    lines.generate(1);
    lines.draw();
    EXPECT_TRUE(lines.transformed().empty());
}

TEST(LineSet, GeneratesTheCurveInItsColoursAndScalesThem)
{
    LineSet lines;
    lines.create(600);
    lines.generate(2);
    const auto vertices = lines.vertices();
    EXPECT_EQ(valuesOf(vertices[0]), (Values{1.2F, 0, 0, 63, 42, 7}));
    EXPECT_EQ(valuesOf(vertices[1]), (Values{-1.2F, 0, 0, 32, 16, 24}));
    EXPECT_EQ(vertices[2].colour, (std::array{63.0F, 32.0F, 7.0F}));

    // Scaled colours reach the first half of the segments.
    lines.transform();
    lines.scaleColours(0.0F);
    EXPECT_EQ(lines.transformed()[299].colour, (std::array{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(lines.transformed()[300].colour, vertices[300].colour);

    for (const int style : {1, 3}) { // 3 keeps what 1 gave
        lines.generate(style);
        EXPECT_EQ(lines.vertices()[0].colour, (std::array{7.0F, 42.0F, 63.0F}));
    }
}

TEST(LineSet, GeneratesThePlainCurveInBothStyles)
{
    LineSet lines;
    lines.create(600);
    for (const int style : {1, 2}) {
        lines.generate(style);
        const std::vector<PlainVertex> plain = plainCurve(600, style);
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const LineVertex& a = lines.vertices()[i];
            const PlainVertex& b = plain[i];
            ASSERT_EQ((std::array{a.x, a.y, a.z}), (std::array{b.x, b.y, b.z})) << i;
            ASSERT_TRUE(i % 2 == 1 || a.colour == b.colour) << i; // second ones are not used
        }
    }
}

TEST(LineSet, TurnsAboutXYAndZAndMoves)
{
    LineSet lines;
    lines.create(2);
    lines.generate(1);
    lines.setAngleX(0.92729522F); // sine 0.8, cosine 0.6
    lines.setAngleY(0.64350111F); // 0.6 and 0.8
    lines.setAngleZ(0.28379411F); // 0.28 and 0.96
    lines.setPosition(1.0F, 2.0F, 3.0F);
    lines.transform();
    constexpr std::array kColumns = {0.768F, -0.224F, 0.6F,     0.0F,    0.6288F, 0.4416F,
                                     -0.64F, 0.0F,    -0.1216F, 0.8688F, 0.48F,   0.0F,
                                     1.0F,   2.0F,    3.0F,     1.0F};
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_NEAR(lines.matrix()[i], kColumns[i], 1.0e-6F) << i;
    }
    const LineVertex& first = lines.transformed()[0]; // was 1.2, 0, 0
    EXPECT_NEAR(first.x, 1.9216F, 1.0e-6F);
    EXPECT_NEAR(first.y, 1.7312F, 1.0e-6F);
    EXPECT_NEAR(first.z, 3.72F, 1.0e-6F);
}

TEST(LineSet, DrawsFromTheMiddleOfAnOddTargetInColoursOfAnySize)
{
    using Row = std::pair<float, Pixel>; // the colour 63, 42, 7 times this, in a byte
    constexpr std::array kRows = {
        Row{-1.0F,       {193, 214, 249, 0}},
        Row{kInfinity,   {255, 255, 255, 0}},
        Row{kNotANumber, {0, 0, 0, 0}      },
    };
    for (const auto& [factor, pixel] : kRows) {
        Canvas canvas{17, 9};
        Canvas expected = canvas;
        LineSet lines;
        lines.setTarget(canvas.pixels(), 17, 9);
        lines.create(2);
        lines.generate(1);
        lines.setThickness(2);
        lines.setPosition(0.0F, 0.25F, -2.0F);
        lines.transform();
        lines.scaleColours(factor);
        lines.draw(); // from -0.6 to 0.6 and 0.125 above the middle: from 3.2 to 12.8 in row 3.5
        expected.paint({3, 3, 11, 4}, pixel);
        EXPECT_EQ(canvas.bytes, expected.bytes) << factor;
    }
}

const testing::ExitedWithCode kStatus0{0};

TEST(LineSetDeathTest, RefusesOddCountsAndMissingMemory)
{
    LineSet lines;
    for (const int count : {601, 1, -3}) {
        EXPECT_EXIT(lines.create(count), kStatus0,
                    "^\nError! You must create even number of vertices!\n$");
    }
    const auto createTooMany = [&] {
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they have their own limit
        const rlimit limit = {1UL << 34, 1UL << 34};
        setrlimit(RLIMIT_AS, &limit);
#endif
        lines.create(INT_MAX - 1);
    };
    EXPECT_EXIT(createTooMany(), kStatus0, "\nError allocating memory for the vertices!!\n$");
}

} // namespace
