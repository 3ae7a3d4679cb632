#include "image/pixel_conversion.h"

#include <bit>
#include <cstring>

namespace {

using Bytes2 = std::array<std::uint8_t, 2>;
using Bytes3 = std::array<std::uint8_t, 3>;
using Bytes4 = std::array<std::uint8_t, 4>;

constexpr std::uint8_t byteOf(unsigned value)
{
    return static_cast<std::uint8_t>(value);
}

// How the pixels of a depth become red, green and blue of 8 bits each.
struct From15 {
    using Pixel = Bytes2;
    static Bytes3 colour(Pixel pixel)
    {
        const unsigned word = pixel[0] + 256U * pixel[1];
        return {byteOf((word >> 10 & 31) << 3), byteOf((word >> 5 & 31) << 3),
                byteOf((word & 31) << 3)};
    }
};

struct From16 {
    using Pixel = Bytes2;
    static Bytes3 colour(Pixel pixel)
    {
        const unsigned word = pixel[0] + 256U * pixel[1];
        return {byteOf((word >> 11) << 3), byteOf((word >> 5 & 63) << 2), byteOf((word & 31) << 3)};
    }
};

struct From24 {
    using Pixel = Bytes3;
    static Bytes3 colour(Pixel pixel) { return pixel; }
};

struct From32 {
    using Pixel = Bytes4;
    static Bytes3 colour(Pixel pixel) { return {pixel[0], pixel[1], pixel[2]}; }
};

// How a colour becomes a pixel of a depth. What 5 and 6 bits cannot hold is cut off here, so a
// channel of 5 bits comes through 8 bits unharmed.
struct To16 {
    using Pixel = Bytes2;
    static Pixel pixel(Bytes3 colour)
    {
        const auto [r, g, b] = colour;
        const unsigned word = unsigned{r} >> 3 << 11 | unsigned{g} >> 2 << 5 | unsigned{b} >> 3;
        return {byteOf(word), byteOf(word >> 8)};
    }
};

struct To24 {
    using Pixel = Bytes3;
    static Pixel pixel(Bytes3 colour) { return colour; }
};

struct To32 {
    using Pixel = Bytes4;
    static Pixel pixel(Bytes3 colour) { return {colour[0], colour[1], colour[2], 255}; }
};

template <class From, class To>
void convertEach(const std::uint8_t* source, std::uint8_t* destination, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        typename From::Pixel from{};
        std::memcpy(from.data(), source + i * from.size(), from.size());
        const auto to = To::pixel(From::colour(from));
        std::memcpy(destination + i * to.size(), to.data(), to.size());
    }
}

// An index stands for its palette entry, which is converted once.
template <class To>
void convertIndices(const std::uint8_t* source, std::uint8_t* destination, std::size_t count,
                    const std::array<PaletteEntry, 256>& palette)
{
    std::array<typename To::Pixel, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = To::pixel(palette[i]);
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto& to = table[source[i]];
        std::memcpy(destination + i * to.size(), to.data(), to.size());
    }
}

template <class To>
void convertTo(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination,
               std::size_t count, const std::array<PaletteEntry, 256>& palette)
{
    switch (sourceBpp) {
    case 8:
        return convertIndices<To>(source, destination, count, palette);
    case 15:
        return convertEach<From15, To>(source, destination, count);
    case 16:
        return convertEach<From16, To>(source, destination, count);
    case 24:
        return convertEach<From24, To>(source, destination, count);
    default:
        return convertEach<From32, To>(source, destination, count);
    }
}

} // namespace

std::size_t pixelBytes(int bpp)
{
    const bool known = bpp == 8 || bpp == 15 || bpp == 16 || bpp == 24 || bpp == 32;
    return known ? static_cast<std::size_t>(bpp + 7) / 8 : 0;
}

void convertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination, int bpp,
                   std::size_t count, const std::array<PaletteEntry, 256>& palette)
{
    if (sourceBpp == bpp) {
        return;
    }
    if (bpp == 16) {
        convertTo<To16>(source, sourceBpp, destination, count, palette);
    } else if (bpp == 24) {
        convertTo<To24>(source, sourceBpp, destination, count, palette);
    } else {
        convertTo<To32>(source, sourceBpp, destination, count, palette);
    }
}
