#include "bench/plain_line_set.h"
#include "render/line_set.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kHugest = std::numeric_limits<float>::max();

// Pixels with a zone before and behind them that nobody may write; without one where the address
// sanitizer watches the ends itself, and reads too.
class GuardedCanvas {
public:
    GuardedCanvas(int width, int height)
        : bytes_((static_cast<std::size_t>(width) * static_cast<std::size_t>(height) + 2 * kGuard) *
                 4),
          width_{width}, height_{height}
    {
    }

    [[nodiscard]] std::uint8_t* pixels() { return bytes_.data() + kGuard * 4; }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] PlainCanvas plain() { return {pixels(), width_, height_}; }
    [[nodiscard]] std::vector<std::uint8_t>& bytes() { return bytes_; }
    [[nodiscard]] std::array<int, 4> at(int x, int y)
    {
        const std::uint8_t* p = pixels() + std::ptrdiff_t{4} * (y * width_ + x);
        return {p[0], p[1], p[2], p[3]};
    }

    void fill(std::uint8_t byte) { bytes_.assign(bytes_.size(), byte); }

private:
#ifdef __SANITIZE_ADDRESS__
    static constexpr std::size_t kGuard = 0; // pixels
#else
    static constexpr std::size_t kGuard = 64; // pixels
#endif
    std::vector<std::uint8_t> bytes_;
    int width_;
    int height_;
};

using Places = std::set<std::pair<int, int>>; // x, y

// Draws one line of colour (1, 2, 3) on a grey canvas and tells which pixels it touched.
Places touched(float x0, float y0, float x1, float y1, int thickness)
{
    GuardedCanvas canvas{64, 64};
    canvas.fill(100);
    LineSet lines;
    lines.setTarget(canvas.pixels(), 64, 64);
    lines.drawLine(x0, y0, x1, y1, 1, 2, 3, canvas.pixels(), thickness);
    Places places;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            if (canvas.at(x, y) != std::array{100, 100, 100, 100}) {
                EXPECT_EQ(canvas.at(x, y), (std::array{103, 102, 101, 0}));
                places.insert({x, y});
            }
        }
    }
    return places;
}

Places block(int left, int top, int right, int bottom) // last column and row included
{
    Places places;
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            places.insert({x, y});
        }
    }
    return places;
}

Places operator+(Places a, const Places& b)
{
    a.insert(b.begin(), b.end());
    return a;
}

TEST(DrawLine, FillsExactlyThesePixels)
{
    const Places steep = block(10, 10, 10, 29);
    EXPECT_EQ(touched(10.0F, 10.0F, 10.5F, 30.0F, 1), steep);
    EXPECT_EQ(touched(10.5F, 30.0F, 10.0F, 10.0F, 1), steep) << "the other way";
    const Places shallow = block(10, 10, 20, 10) + block(21, 11, 29, 11);
    EXPECT_EQ(touched(10.0F, 10.0F, 30.0F, 12.0F, 1), shallow);
    EXPECT_EQ(touched(30.0F, 12.0F, 10.0F, 10.0F, 1), shallow) << "the other way";
    EXPECT_EQ(touched(10.0F, 20.5F, 14.0F, 20.5F, 3), block(10, 20, 13, 22)) << "grows down";
    EXPECT_EQ(touched(10.0F, 20.0F, 10.0F, 22.0F, 3), block(10, 20, 12, 21)) << "grows right";
    EXPECT_EQ(touched(10.0F, 10.0F, 12.0F, 12.0F, 2), block(10, 10, 11, 10) + block(11, 11, 12, 11))
        << "equal lengths walk down";

    const Places enteringLeft = block(0, 10, 1, 10) + block(2, 11, 3, 11) + block(4, 12, 5, 12) +
                                block(6, 13, 7, 13) + block(8, 14, 9, 14);
    EXPECT_EQ(touched(-10.0F, 5.0F, 10.0F, 15.0F, 1), enteringLeft);
    const Places enteringTop = block(10, 0, 10, 1) + block(11, 2, 11, 3) + block(12, 4, 12, 5) +
                               block(13, 6, 13, 7) + block(14, 8, 14, 9);
    EXPECT_EQ(touched(5.0F, -10.0F, 15.0F, 10.0F, 1), enteringTop);
    EXPECT_EQ(touched(20.0F, -4.0e6F, 20.0F, 10.0F, 2), block(20, 0, 21, 9)) << "from far above";

    // A bar that would touch the last column or row is left out whole.
    EXPECT_EQ(touched(60.0F, 10.0F, 60.0F, 20.0F, 3), block(60, 10, 62, 19));
    EXPECT_EQ(touched(61.0F, 10.0F, 61.0F, 20.0F, 3), Places{});
    EXPECT_EQ(touched(10.0F, 50.0F, 10.0F, 62.0F, 3), block(10, 50, 12, 59));
    EXPECT_EQ(touched(50.0F, 10.0F, 62.0F, 10.0F, 3), block(50, 10, 62, 12));
}

TEST(DrawLine, DrawsNothing)
{
    constexpr int kHugestThickness = std::numeric_limits<int>::max();
    EXPECT_EQ(touched(10.0F, -5.0F, 20.0F, -0.1F, 1), Places{}) << "above";
    EXPECT_EQ(touched(-5.0F, 10.0F, -0.1F, 60.0F, 1), Places{}) << "left";
    EXPECT_EQ(touched(64.1F, 10.0F, 70.0F, 60.0F, 1), Places{}) << "right";
    EXPECT_EQ(touched(10.0F, 64.1F, 20.0F, 70.0F, 1), Places{}) << "below";
    EXPECT_EQ(touched(10.0F, 64.0F, 40.0F, 64.0F, 1), Places{}) << "on the lower border";
    EXPECT_EQ(touched(10.0F, 10.0F, 10.5F, 10.9F, 3), Places{}) << "shorter than a pixel";
    EXPECT_EQ(touched(10.0F, 10.0F, 30.0F, 12.0F, 0), Places{}) << "no thickness";
    EXPECT_EQ(touched(10.0F, 10.0F, 12.0F, 30.0F, -4), Places{}) << "less than none";
    EXPECT_EQ(touched(10.0F, 10.0F, 12.0F, 30.0F, 64), Places{}) << "thicker than the picture";
    EXPECT_EQ(touched(10.0F, 10.0F, 30.0F, 12.0F, kHugestThickness), Places{});
    EXPECT_EQ(touched(10.0F, 10.0F, kNotANumber, 12.0F, 3), Places{});
    EXPECT_EQ(touched(10.0F, 10.0F, 10.0F, kInfinity, 3), Places{});
    EXPECT_EQ(touched(-kHugest, 10.0F, kHugest, 11.0F, 3), Places{}) << "infinitely long";
}

TEST(DrawLine, Saturates)
{
    GuardedCanvas canvas{64, 64};
    LineSet lines;
    lines.setTarget(canvas.pixels(), 64, 64);
    for (int i = 0; i < 2; ++i) {
        lines.drawLine(10.0F, 10.0F, 30.0F, 12.0F, 200, 0, 0, canvas.pixels(), 1);
    }
    EXPECT_EQ(canvas.at(15, 10), (std::array{0, 0, 255, 0}));
}

struct Size {
    int width, height;
};

constexpr auto kSizes = std::to_array<Size>({
    {1,   1  },
    {7,   5  },
    {64,  64 },
    {33,  190},
    {211, 17 },
    {256, 128},
    {0,   9  },
});

// An end inside, around, far from or nowhere near the picture, or on a round number, so that equal
// lengths and level lines come up.
float coordinate(std::mt19937& random, int extent)
{
    const auto size = static_cast<float>(extent);
    const auto in = [&](float low, float high) {
        return std::uniform_real_distribution<float>{low, high}(random);
    };
    switch (random() % 16) {
    case 0:
        return in(-1.0e5F, 1.0e5F);
    case 1:
        return std::ldexp(in(-1.0F, 1.0F), static_cast<int>(random() % 130));
    case 2: {
        constexpr std::array kOdd = {kInfinity, -kInfinity, kNotANumber, kHugest, -kHugest, -0.0F};
        return kOdd[random() % 6];
    }
    case 3:
    case 4:
    case 5:
        return std::floor(in(-size, 2.0F * size));
    case 6:
    case 7:
        return in(-3.0F * size, 4.0F * size);
    default:
        return in(0.0F, size);
    }
}

int channel(std::mt19937& random)
{
    constexpr std::array kOdd = {0, 255, 256, 1000, -1, -300};
    const unsigned kind = random() % 8;
    return kind == 0 ? kOdd[random() % 6] : static_cast<int>(random() % (kind == 1 ? 256 : 64));
}

TEST(DrawLine, EqualsThePlainWalkByteForByte)
{
    std::mt19937 random{20010317};
    for (const Size& size : kSizes) {
        GuardedCanvas canvas{size.width, size.height};
        GuardedCanvas expected{size.width, size.height};
        LineSet lines;
        lines.setTarget(canvas.pixels(), size.width, size.height);
        for (int i = 0; i < 12000; ++i) {
            if (i % 500 == 0) { // before all of it has saturated
                const auto byte = static_cast<std::uint8_t>(random() % 100);
                canvas.fill(byte);
                expected.fill(byte);
            }
            const float x0 = coordinate(random, size.width);
            const float y0 = coordinate(random, size.height);
            const float x1 = coordinate(random, size.width);
            const bool sameLengths = random() % 8 == 0;
            const float y1 = sameLengths ? y0 + (x1 - x0) : coordinate(random, size.height);
            const int c0 = channel(random);
            const int c1 = channel(random);
            const int c2 = channel(random);
            const int thickness = static_cast<int>(random() % 23) - 1;
            lines.drawLine(x0, y0, x1, y1, c0, c1, c2, canvas.pixels(), thickness);
            plainDrawLine(expected.plain(), x0, y0, x1, y1, c0, c1, c2, thickness);
            ASSERT_EQ(canvas.bytes(), expected.bytes())
                << size.width << " x " << size.height << ", segment " << i << ": " << x0 << ", "
                << y0 << " to " << x1 << ", " << y1 << ", thickness " << thickness;
        }
    }
}

TEST(LineSet, StartsAtTheOriginInGreyishColours)
{
    LineSet lines;
    lines.create(4);
    ASSERT_EQ(lines.transformed().size(), 4U);
    for (const auto& vertices : {lines.vertices(), lines.transformed()}) {
        for (const LineVertex& v : vertices) {
            EXPECT_EQ((std::array{v.x, v.y, v.z}), (std::array{0.0F, 0.0F, 0.0F}));
            EXPECT_EQ(v.colour, (std::array{32.0F, 16.0F, 24.0F}));
        }
    }
    // Angles 0 and scale 1, whatever they were before.
    lines.setAngleX(1.0F);
    lines.create(2);
    lines.setPosition(1.0F, 2.0F, 3.0F);
    lines.buildMatrix();
    EXPECT_EQ(lines.matrix(),
              (std::array<float, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
}

TEST(LineSet, NegativeCountsHoldNothing)
{
    LineSet lines;
    lines.create(-4);
    lines.generate(1);
    lines.transform();
    lines.scaleColours(1.0F);
    lines.draw();
    EXPECT_TRUE(lines.transformed().empty());
}

TEST(LineSet, GeneratesTheCurveInItsColours)
{
    LineSet lines;
    lines.create(600);
    lines.generate(2);
    const auto vertices = lines.vertices();
    EXPECT_EQ((std::array{vertices[0].x, vertices[0].y, vertices[0].z}),
              (std::array{1.2F, 0.0F, 0.0F}));
    EXPECT_EQ((std::array{vertices[1].x, vertices[1].y, vertices[1].z}),
              (std::array{-1.2F, 0.0F, 0.0F}));
    EXPECT_EQ(vertices[0].colour, (std::array{63.0F, 42.0F, 7.0F}));
    EXPECT_EQ(vertices[2].colour, (std::array{63.0F, 32.0F, 7.0F}));
    EXPECT_EQ(vertices[1].colour, (std::array{32.0F, 16.0F, 24.0F}));

    // The parameter is rounded to single precision at every step, and so is 14 t.
    float t = 0.0F;
    for (int i = 0; i < 299; ++i) {
        t = static_cast<float>(t + 0.2);
    }
    const LineVertex& from = vertices[598];
    const LineVertex& to = vertices[599];
    EXPECT_EQ(from.x, static_cast<float>(1.2 * std::cos(static_cast<double>(14 * t))));
    EXPECT_EQ(from.y, static_cast<float>(1.6 * std::sin(1.28927348934 * t)));
    EXPECT_EQ(from.z, static_cast<float>(1.4 * std::sin(42.69 * t)));
    EXPECT_EQ(to.x, static_cast<float>(-1.2 * std::cos(0.333 * t)));
    EXPECT_EQ(to.y, static_cast<float>(-1.6 * std::sin(static_cast<double>(8 * t))));
    EXPECT_EQ(to.z, static_cast<float>(-1.4 * std::sin(42.69 * t)));

    lines.generate(1);
    EXPECT_EQ(lines.vertices()[0].colour, (std::array{7.0F, 42.0F, 63.0F}));
    lines.generate(3);
    EXPECT_EQ(lines.vertices()[0].colour, (std::array{7.0F, 42.0F, 63.0F}));
}

TEST(LineSet, GenerateSeedsTheSharedRandomNumbersAndDrawsNone)
{
    LineSet lines;
    lines.create(2);
    for (int attempt = 0; attempt < 3; ++attempt) { // the second may turn over in between
        const auto before = static_cast<unsigned>(std::time(nullptr));
        lines.generate(1);
        const int drawn = std::rand();
        std::srand(before);
        if (drawn == std::rand()) {
            return;
        }
    }
    FAIL() << "the next number is not the first one of the time's sequence";
}

TEST(LineSet, TurnsAboutEachAxisAndMoves)
{
    // A quarter turn about one axis takes the axes to these columns of the matrix.
    struct Turn {
        void (LineSet::*set)(float);
        std::array<float, 9> columns;
    };
    constexpr auto kTurns = std::to_array<Turn>({
        {&LineSet::setAngleX, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
        {&LineSet::setAngleY, {0, 0, 1, 0, 1, 0, -1, 0, 0}},
        {&LineSet::setAngleZ, {0, -1, 0, 1, 0, 0, 0, 0, 1}},
    });
    for (const Turn& turn : kTurns) {
        LineSet lines;
        lines.create(2);
        (lines.*turn.set)(1.5707963F);
        lines.buildMatrix();
        for (std::size_t i = 0; i < 9; ++i) {
            EXPECT_NEAR(lines.matrix()[i / 3 * 4 + i % 3], turn.columns[i], 1e-6F) << i;
        }
    }
}

TEST(LineSet, WholeFigureEqualsThePlainOne)
{
    LineSet lines;
    lines.create(600);
    lines.generate(2);
    PlainFigure plain{lines.vertices()};
    GuardedCanvas canvas{512, 256};
    GuardedCanvas expected{512, 256};
    lines.setTarget(canvas.pixels(), 512, 256);
    for (int frame = 0; frame < 60; ++frame) {
        const auto turn = static_cast<float>(frame);
        const float depth = -0.07F * turn; // from the middle of the eye outward
        lines.setAngleX(0.31F * turn);
        lines.setAngleY(0.17F * turn);
        lines.setAngleZ(0.11F * turn);
        lines.setPosition(0.05F, -0.05F, depth);
        lines.transform();
        lines.scaleColours(0.37F);
        lines.setThickness(frame % 12);
        canvas.fill(0);
        lines.draw();

        plain.transform({0.31F * turn, 0.17F * turn, 0.11F * turn}, {0.05F, -0.05F, depth});
        plain.scaleColours(0.37F);
        expected.fill(0);
        plain.draw(expected.plain(), frame % 12);
        ASSERT_EQ(canvas.bytes(), expected.bytes()) << "frame " << frame;
    }
}

TEST(LineSet, ColourScaleReachesTheFirstHalfOfTheSegments)
{
    LineSet lines;
    lines.create(600);
    lines.generate(2);
    lines.transform();
    lines.scaleColours(0.0F);
    EXPECT_EQ(lines.transformed()[299].colour, (std::array{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(lines.transformed()[300].colour, lines.vertices()[300].colour);
}

TEST(LineSet, ColoursOutOfAllBoundsAreDrawnAsSomething)
{
    GuardedCanvas canvas{16, 16};
    LineSet lines;
    lines.create(2);
    lines.generate(1);
    lines.setTarget(canvas.pixels(), 16, 16);
    lines.setThickness(2);
    lines.setPosition(0.0F, 0.0F, -2.0F);
    for (const float factor : {kInfinity, -kInfinity, kNotANumber, kHugest}) {
        lines.transform();
        lines.scaleColours(factor);
        lines.draw();
    }
    SUCCEED();
}

TEST(LineSet, PrintsTheTransformedPositions)
{
    LineSet lines;
    lines.create(2);
    lines.setPosition(0.5F, -1.0F, 2.0F);
    lines.transform();
    testing::internal::CaptureStdout();
    lines.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nx: 0.5\ny: -1\nz: 2\n\nx: 0.5\ny: -1\nz: 2\n");
}

TEST(LineSetDeathTest, RefusesOddCountsAndMissingMemory)
{
    LineSet lines;
    for (const int count : {601, 1, -3}) {
        EXPECT_EXIT(lines.create(count), testing::ExitedWithCode(0),
                    "^\nError! You must create even number of vertices!\n$");
    }
    const auto createTooMany = [&] {
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they have their own limit
        rlimit limit = {};
        limit.rlim_cur = rlim_t{1} << 34; // bytes
        limit.rlim_max = limit.rlim_cur;
        setrlimit(RLIMIT_AS, &limit);
#endif
        lines.create(std::numeric_limits<int>::max() - 1);
    };
    EXPECT_EXIT(createTooMany(), testing::ExitedWithCode(0),
                "\nError allocating memory for the vertices!!\n$");
}

} // namespace
