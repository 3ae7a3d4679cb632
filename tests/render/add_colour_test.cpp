#include "render/add_colour.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

std::uint8_t added(int byte, int colour)
{
    return static_cast<std::uint8_t>(std::min(255LL, byte + static_cast<long long>(colour)));
}

using AddRun = void (*)(std::uint8_t*, std::ptrdiff_t, const AddedColour&);

struct Form {
    const char* name;
    AddRun run;
};

constexpr auto kForms = std::to_array<Form>({
    {"portable", addRunPortable},
    {"chosen",   addRun        },
});

// Every byte value with every colour worth a difference, at every length of run with and without a
// rest, with neighbours that must stay.
TEST(AddRun, EveryFormAddsEveryByteAndKeepsTheNeighbours)
{
    constexpr std::array kColours = {INT_MIN, -1000, -256, -255, -3,  -1,  0,    1,
                                     2,       127,   128,  200,  254, 255, 1000, INT_MAX};
    for (const Form& form : kForms) {
        for (std::size_t count = 1; count <= 13; ++count) {
            for (const int colour : kColours) {
                for (int byte = 0; byte < 256; ++byte) {
                    std::vector<std::uint8_t> pixels((count + 4) * 4,
                                                     static_cast<std::uint8_t>(byte));
                    std::vector<std::uint8_t> expected = pixels;
                    for (std::size_t i = 4; i < (count + 1) * 4; i += 4) {
                        expected[i] = added(byte, colour);
                        expected[i + 1] = added(byte, 255);
                        expected[i + 2] = added(byte, colour / -2);
                        expected[i + 3] = 0;
                    }
                    form.run(pixels.data() + 4, static_cast<std::ptrdiff_t>(count),
                             AddedColour{colour, 255, colour / -2});
                    ASSERT_EQ(pixels, expected)
                        << form.name << ", " << count << " pixels, " << byte << " + " << colour;
                }
            }
        }
    }
}

} // namespace
