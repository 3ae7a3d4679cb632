// Adds one colour to runs of 32-bit pixels, bytes red, green, blue, alpha.
//
// A byte becomes the low 8 bits of min(255, byte + colour), so with a negative colour it wraps
// around below 0. Alpha becomes 0. There are two forms: addRunPortable works on one pixel in one
// word at a time, addRunSse2 on four pixels in one register. addRun is the faster one that every
// machine the program is compiled for has.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// A colour as the words that are added: a channel is in one of them and 0 in the other.
struct AddedColour {
    std::uint32_t saturating = 0; // channels of 0 and more; those above 255 count as 255
    std::uint32_t wrapping = 0;   // negative channels, modulo 256
    std::uint32_t kept = 0;       // everything but alpha

    AddedColour(int red, int green, int blue)
        : saturating{pixel(upper(red), upper(green), upper(blue), 0)},
          wrapping{pixel(lower(red), lower(green), lower(blue), 0)}, kept{pixel(255, 255, 255, 0)}
    {
    }

private:
    static std::uint8_t upper(int channel)
    {
        return static_cast<std::uint8_t>(std::clamp(channel, 0, 255));
    }
    static std::uint8_t lower(int channel)
    {
        return static_cast<std::uint8_t>(std::min(channel, 0));
    }
    static std::uint32_t pixel(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a)
    {
        return std::bit_cast<std::uint32_t>(std::array<std::uint8_t, 4>{r, g, b, a});
    }
};

inline void addRunPortable(std::uint8_t* pixels, std::ptrdiff_t count, const AddedColour& colour)
{
    constexpr std::uint32_t kTop = 0x80808080U;  // the top bit of every byte
    constexpr std::uint32_t kRest = 0x7f7f7f7fU; // the other seven

    // Four bytes are added at once: the lower seven bits cannot carry into the next byte, and the
    // top bits are added without carry.
    const auto addBytes = [](std::uint32_t a, std::uint32_t b) {
        return ((a & kRest) + (b & kRest)) ^ ((a ^ b) & kTop);
    };

    for (std::ptrdiff_t i = 0; i < count; ++i) {
        std::uint32_t word = 0;
        std::memcpy(&word, pixels + 4 * i, 4);
        const std::uint32_t sum = addBytes(word, colour.saturating);
        const std::uint32_t carried =
            ((word & colour.saturating) | ((word | colour.saturating) & ~sum)) & kTop;
        const std::uint32_t full = (carried >> 7) * 0xffU;
        word = addBytes(sum | full, colour.wrapping) & colour.kept;
        std::memcpy(pixels + 4 * i, &word, 4);
    }
}

#if defined(__SSE2__)

inline void addRunSse2(std::uint8_t* pixels, std::ptrdiff_t count, const AddedColour& colour)
{
    const __m128i saturating = _mm_set1_epi32(static_cast<int>(colour.saturating));
    const __m128i wrapping = _mm_set1_epi32(static_cast<int>(colour.wrapping));
    const __m128i kept = _mm_set1_epi32(static_cast<int>(colour.kept));
    const auto add = [=](__m128i four) {
        return _mm_and_si128(_mm_add_epi8(_mm_adds_epu8(four, saturating), wrapping), kept);
    };
    const auto load = [](const void* from) {
        return _mm_loadu_si128(static_cast<const __m128i*>(from));
    };
    const auto store = [](void* to, __m128i four) {
        _mm_storeu_si128(static_cast<__m128i*>(to), four);
    };

    for (; count > 4; count -= 4, pixels += 16) {
        store(pixels, add(load(pixels)));
    }

    // The last one to four pixels; the bytes after them are written back unchanged.
    alignas(16) static constexpr std::array<std::int32_t, 8> kRuns = {-1, -1, -1, -1, 0, 0, 0, 0};
    const __m128i inside = load(kRuns.data() + (4 - count));
    const __m128i before = load(pixels);
    store(pixels,
          _mm_or_si128(_mm_and_si128(inside, add(before)), _mm_andnot_si128(inside, before)));
}

inline void addRun(std::uint8_t* pixels, std::ptrdiff_t count, const AddedColour& colour)
{
    addRunSse2(pixels, count, colour);
}

#else

inline void addRun(std::uint8_t* pixels, std::ptrdiff_t count, const AddedColour& colour)
{
    addRunPortable(pixels, count, colour);
}

#endif
