// A row is summed level by level, not pixel by pixel: the levels of the table lie a power of two
// apart, and read all at once they would push each other out of the cache.
//
// The columns that have a sample at a level are a single span, which lies within that of the level
// before, so that no pixel has to be asked whether it has a sample:
//
//      level 0   |--------------------------------|
//      level 1      |--------------------------|
//      level 2         |--------------------|
//      samples    1  2          3            2  1
//
// Two 16-bit sums share a word; the compiler puts eight of them into a register.
#include "render/zoom_blur.h"

#include "base/fatal.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>

namespace {

constexpr int kLevels = 20;
constexpr double kLevelStep = 0.1; // of the distance from the centre
constexpr std::int64_t kBytesPerPixel = 4;

constexpr std::uint32_t kOuter = 0x00ff00ffU; // channels 0 and 2 of a pixel
constexpr std::uint32_t kLowest = 0x000000ffU;
constexpr std::uint32_t kLowerSum = 0x0000ffffU;

// From a word of memory to the number that has its first byte lowest, and back.
std::uint32_t firstByteLowest(std::uint32_t word)
{
    return std::endian::native == std::endian::big ? __builtin_bswap32(word) : word;
}

std::uint32_t pixelAt(const std::uint8_t* bytes)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return firstByteLowest(word);
}

// The factor that divides a sum by a count: a little more than 1 / count, so that truncation never
// gives a quotient that is one too small. quotientsAreExact tries every sum that there can be.
constexpr float reciprocalOf(int count)
{
    constexpr float kLittleMore = 1.0F + 0x1p-16F;
    return kLittleMore / static_cast<float>(count);
}

constexpr std::uint32_t quotient(std::uint32_t sum, float reciprocal)
{
    const auto value = static_cast<float>(static_cast<std::int32_t>(sum)) * reciprocal;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
}

constexpr bool quotientsAreExact()
{
    for (int count = 1; count <= kLevels; ++count) {
        for (int sum = 0; sum <= 255 * count; ++sum) {
            const auto divided = static_cast<std::uint32_t>(sum / count);
            if (quotient(static_cast<std::uint32_t>(sum), reciprocalOf(count)) != divided) {
                return false;
            }
        }
    }
    return true;
}
static_assert(quotientsAreExact());

template <class Entry>
Array<Entry> allocate(std::initializer_list<std::int64_t> sizes)
{
    auto entries = allocateArray<Entry>(sizes);
    if (entries == nullptr) {
        fatal(stderr, 0, "\nError allocating memory!!!\n");
    }
    return entries;
}

// Sets the sums to a run of pixels. With __restrict, which says that the arrays do not overlap, the
// compiler can use vector registers.
void setPixels(const std::uint8_t* __restrict source, std::int32_t count,
               std::uint32_t* __restrict outer, std::uint32_t* __restrict middle)
{
    for (std::int32_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = pixelAt(source + kBytesPerPixel * i);
        outer[i] = pixel & kOuter;
        middle[i] = pixel >> 8 & kLowest;
    }
}

// Adds the pixels at some places of the source to the sums.
void addPixels(const std::uint8_t* __restrict source, const std::int32_t* __restrict places,
               std::int32_t count, std::uint32_t* __restrict outer,
               std::uint32_t* __restrict middle)
{
    for (std::int32_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = pixelAt(source + places[i]);
        outer[i] += pixel & kOuter;
        middle[i] += pixel >> 8 & kLowest;
    }
}

// Divides a run of sums into pixels.
void divideSums(const std::uint32_t* __restrict outer, const std::uint32_t* __restrict middle,
                const float* __restrict reciprocals, std::int32_t count,
                std::uint32_t* __restrict target)
{
    for (std::int32_t i = 0; i < count; ++i) {
        const float reciprocal = reciprocals[i];
        const std::uint32_t channel0 = quotient(outer[i] & kLowerSum, reciprocal);
        const std::uint32_t channel1 = quotient(middle[i], reciprocal);
        const std::uint32_t channel2 = quotient(outer[i] >> 16, reciprocal);
        target[i] = firstByteLowest(channel2 << 16 | channel1 << 8 | channel0);
    }
}

} // namespace

void ZoomBlur::build(int width, int height)
{
    width_ = width;
    height_ = height;
    table_ = allocate<std::int32_t>({kLevels, width, height});
    spans_ = allocate<Span>({kLevels, height});
    reciprocals_ = allocate<float>({width, height});
    outerSums_ = allocate<std::uint32_t>({width});
    middleSums_ = allocate<std::uint32_t>({width});
    countedLevels_ = 0;
    fillTable();
    findSpans();
}

void ZoomBlur::fillTable()
{
    const int halfWidth = width_ / 2;
    const int halfHeight = height_ / 2;
    std::int32_t* entry = table_.get();
    for (int level = 0; level < kLevels; ++level) {
        const double scale = 1.0 + level * kLevelStep;
        for (int y = 0; y < height_; ++y) {
            const auto sy = static_cast<std::int64_t>(halfHeight + (y - halfHeight) * scale);
            for (int x = 0; x < width_; ++x) {
                const auto sx = static_cast<std::int64_t>(halfWidth + (x - halfWidth) * scale);
                const bool inside = sy >= 0 && sy < height_ && sx >= 0 && sx < width_;
                *entry =
                    inside ? static_cast<std::int32_t>((sy * width_ + sx) * kBytesPerPixel) : 0;
                ++entry;
            }
        }
    }
}

void ZoomBlur::findSpans()
{
    for (int level = 0; level < kLevels; ++level) {
        for (int y = 0; y < height_; ++y) {
            const std::int32_t* const entries = places(level, y);
            Span span = level == 0 ? Span{0, width_} : sampled(level - 1, y);
            while (span.begin < span.end && entries[span.begin] == 0) {
                ++span.begin;
            }
            while (span.begin < span.end && entries[span.end - 1] == 0) {
                --span.end;
            }
            spans_[static_cast<std::size_t>(row(level, y))] = span;
        }
    }
}

std::ptrdiff_t ZoomBlur::row(int level, int y) const
{
    return std::ptrdiff_t{level} * height_ + y;
}

const std::int32_t* ZoomBlur::places(int level, int y) const
{
    return table_.get() + row(level, y) * width_;
}

const ZoomBlur::Span& ZoomBlur::sampled(int level, int y) const
{
    return spans_[static_cast<std::size_t>(row(level, y))];
}

void ZoomBlur::render(int levels)
{
    assert(levels >= 1 && levels <= kLevels);
    if (levels != countedLevels_) {
        countSamples(levels);
    }
    for (int y = 0; y < height_; ++y) {
        startSums(y);
        for (int level = 1; level < levels; ++level) {
            addLevel(level, y);
        }
        const std::ptrdiff_t first = row(0, y) * width_;
        divideSums(outerSums_.get(), middleSums_.get(), reciprocals_.get() + first, width_,
                   target_ + first);
    }
}

// The top left pixel has one sample, itself, although the table's 0 stands for outside.
void ZoomBlur::countSamples(int levels)
{
    std::fill_n(reciprocals_.get(), row(1, 0) * width_, reciprocalOf(1));
    for (int level = 1; level < levels; ++level) {
        for (int y = 0; y < height_; ++y) {
            const auto [begin, end] = sampled(level, y);
            std::fill_n(reciprocals_.get() + row(0, y) * width_ + begin, end - begin,
                        reciprocalOf(level + 1));
        }
    }
    countedLevels_ = levels;
}

// At level 0 every pixel is its own sample.
void ZoomBlur::startSums(int y)
{
    setPixels(source_ + row(0, y) * width_ * kBytesPerPixel, width_, outerSums_.get(),
              middleSums_.get());
}

void ZoomBlur::addLevel(int level, int y)
{
    const auto [begin, end] = sampled(level, y);
    addPixels(source_, places(level, y) + begin, end - begin, outerSums_.get() + begin,
              middleSums_.get() + begin);
}
