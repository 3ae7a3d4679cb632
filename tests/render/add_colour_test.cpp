#include "render/add_colour.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

// Every byte value with every colour worth a difference, in runs of every length with and without a
// rest, with neighbours that must stay; the portable form first, then the one that the show uses.
TEST(AddRun, BothFormsAddEveryByteAndKeepTheNeighbours)
{
    const auto added = [](int byte, int colour) {
        return static_cast<std::uint8_t>(std::min(255LL, byte + static_cast<long long>(colour)));
    };
    for (const auto run : {addRunPortable, addRun}) {
        for (const int colour : {INT_MIN, -1000, -256, -255, -3, -1, 0, 1, 2, 127, 128, 200, 254,
                                 255, 1000, INT_MAX}) {
            for (int i = 0; i < 256 * 13; ++i) {
                const int byte = i % 256;
                const std::ptrdiff_t count = i / 256 + 1;
                std::vector<std::uint8_t> pixels(68, static_cast<std::uint8_t>(byte));
                std::vector<std::uint8_t> expected = pixels;
                for (auto p = expected.begin() + 4; p != expected.begin() + 4 * (count + 1);) {
                    *p++ = added(byte, colour);
                    *p++ = added(byte, 255);
                    *p++ = added(byte, colour / -2);
                    *p++ = 0;
                }
                run(pixels.data() + 4, count, AddedColour{colour, 255, colour / -2});
                ASSERT_EQ(pixels, expected) << count << " pixels, " << byte << " + " << colour
                                            << (run == addRunPortable ? ", portable" : "");
            }
        }
    }
}
