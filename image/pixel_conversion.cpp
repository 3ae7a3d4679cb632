#include "image/pixel_conversion.h"

#include "image/byte_shuffle.h"

#include <bit>
#include <cstring>

namespace {

struct Colour {
    unsigned r; // 8 bits each
    unsigned g;
    unsigned b;
};

void putByte(std::uint8_t* destination, unsigned value)
{
    *destination = static_cast<std::uint8_t>(value);
}

// From... reads a colour out of a pixel of one depth, To... writes it into one of another. To16
// cuts off the bits that do not fit, so a channel of 5 bits survives its way through 8 bits.
struct From15 {
    static constexpr std::size_t kSize = 2;
    static Colour colour(const std::uint8_t* pixel)
    {
        const unsigned word = pixel[0] + 256U * pixel[1];
        return {(word >> 10 & 31) << 3, (word >> 5 & 31) << 3, (word & 31) << 3};
    }
};

struct From16 {
    static constexpr std::size_t kSize = 2;
    static Colour colour(const std::uint8_t* pixel)
    {
        const unsigned word = pixel[0] + 256U * pixel[1];
        return {word >> 11 << 3, (word >> 5 & 63) << 2, (word & 31) << 3};
    }
};

template <std::size_t kBytes>
struct FromBytes {
    static constexpr std::size_t kSize = kBytes;
    static Colour colour(const std::uint8_t* pixel) { return {pixel[0], pixel[1], pixel[2]}; }
};

struct To16 {
    static constexpr std::size_t kSize = 2;
    static void put(std::uint8_t* pixel, Colour colour)
    {
        const unsigned word = colour.r >> 3 << 11 | colour.g >> 2 << 5 | colour.b >> 3;
        putByte(pixel, word);
        putByte(pixel + 1, word >> 8);
    }
};

struct To24 {
    static constexpr std::size_t kSize = 3;
    static void put(std::uint8_t* pixel, Colour colour)
    {
        putByte(pixel, colour.r);
        putByte(pixel + 1, colour.g);
        putByte(pixel + 2, colour.b);
    }
};

struct To32 {
    static constexpr std::size_t kSize = 4;
    static void put(std::uint8_t* pixel, Colour colour)
    {
        To24::put(pixel, colour);
        putByte(pixel + 3, 255);
    }
};

// Converts the first pixels several at a time, as far as possible, and returns how many;
// convertEach converts the rest one by one.
template <class From, class To>
std::size_t convertFast(const std::uint8_t* /*source*/, std::uint8_t* /*destination*/,
                        std::size_t /*count*/)
{
    return 0;
}

template <>
std::size_t convertFast<FromBytes<3>, To32>(const std::uint8_t* source, std::uint8_t* destination,
                                            std::size_t count)
{
    constexpr ByteShuffle kExpand = {
        {0, 1, 2, 0x80, 3, 4, 5, 0x80, 6, 7, 8, 0x80, 9, 10, 11, 0x80},
        {0, 0, 0, 255,  0, 0, 0, 255,  0, 0, 0, 255,  0, 0,  0,  255 },
        12,
        16
    };
    return 4 * shuffleBytes(kExpand, source, 3 * count, destination, 4 * count);
}

// Eight 16-bit pixels, which fill a register.
using EightWords [[gnu::vector_size(16)]] = std::uint16_t;

// Computes eight pixels as two registers of words, red and green in one, blue and alpha in the
// other, and interleaves the two.
template <class RedGreen>
std::size_t convertWords(const std::uint8_t* source, std::uint8_t* destination, std::size_t count,
                         RedGreen redGreen)
{
    if constexpr (std::endian::native != std::endian::little) {
        return 0;
    }
    std::size_t i = 0;
    for (; count - i >= 8; i += 8) {
        EightWords words;
        std::memcpy(&words, source + 2 * i, 16);
        const EightWords rg = redGreen(words);
        const EightWords ba = (words << 3 & 0xf8) | 0xff00;
        const EightWords first = __builtin_shufflevector(rg, ba, 0, 8, 1, 9, 2, 10, 3, 11);
        const EightWords last = __builtin_shufflevector(rg, ba, 4, 12, 5, 13, 6, 14, 7, 15);
        std::memcpy(destination + 4 * i, &first, 16);
        std::memcpy(destination + 4 * i + 16, &last, 16);
    }
    return i;
}

template <>
std::size_t convertFast<From15, To32>(const std::uint8_t* source, std::uint8_t* destination,
                                      std::size_t count)
{
    return convertWords(source, destination, count, [](EightWords words) {
        return EightWords{(words >> 7 & 0xf8) | (words << 6 & 0xf800)};
    });
}

template <>
std::size_t convertFast<From16, To32>(const std::uint8_t* source, std::uint8_t* destination,
                                      std::size_t count)
{
    return convertWords(source, destination, count, [](EightWords words) {
        return EightWords{(words >> 8 & 0xf8) | (words << 5 & 0xfc00)};
    });
}

template <class From, class To>
void convertEach(const std::uint8_t* source, std::uint8_t* destination, std::size_t count)
{
    for (std::size_t i = convertFast<From, To>(source, destination, count); i < count; ++i) {
        To::put(destination + To::kSize * i, From::colour(source + From::kSize * i));
    }
}

// Converts the palette once and looks each index up in the result.
template <class To>
void convertIndices(const std::uint8_t* source, std::uint8_t* destination, std::size_t count,
                    const Palette& palette)
{
    std::array<std::uint8_t, 256 * To::kSize> table{};
    convertEach<FromBytes<3>, To>(palette.data()->data(), table.data(), 256);
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(destination + To::kSize * i, table.data() + To::kSize * source[i], To::kSize);
    }
}

template <class To>
void convertTo(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination,
               std::size_t count, const Palette& palette)
{
    switch (sourceBpp) {
    case 8:
        return convertIndices<To>(source, destination, count, palette);
    case 15:
        return convertEach<From15, To>(source, destination, count);
    case 16:
        return convertEach<From16, To>(source, destination, count);
    case 24:
        return convertEach<FromBytes<3>, To>(source, destination, count);
    default:
        return convertEach<FromBytes<4>, To>(source, destination, count);
    }
}

} // namespace

void convertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination, int bpp,
                   std::size_t count, const Palette& palette)
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
