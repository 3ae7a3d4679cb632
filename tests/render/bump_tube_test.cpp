#include "reference/plain_bump_tube.h"
#include "render/bump_tube.h"
#include "tests/render/random_numbers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

// Past 164 seconds the fastest map has left the range of its position, past 304 all but one have.
TEST(BumpTube, BulgesAndLightsAsThePlainTubeDoes)
{
    const auto map = randomNumbers<std::uint8_t>(std::size_t{1024} * 1024);
    for (const auto& [slices, stacks] : {
             std::array{64, 64},
             std::array{5,  3 }
    }) {
        BumpTube tube;
        tube.build(slices, stacks, 1.0F, 40.0F);
        tube.setHeightMaps(map.data(), map.data());
        PlainTube plain{slices, stacks, 1.0F, 40.0F};
        tube.update(0.0F); // where the maps are before is left to chance
        plain.bulge(0.0F, map.data(), map.data());

        for (const float t : {0.016F, 3.5F, 163.0F, 170.0F, 310.0F, 3600.0F, 0.0F}) {
            tube.update(t);
            plain.bulge(t, map.data(), map.data());
            const auto vertices = tube.vertices();
            ASSERT_EQ(vertices.size(), plain.bulged().size());
            for (std::size_t i = 0; i < vertices.size(); ++i) {
                const BumpTube::Vertex& a = vertices[i];
                const PlainTubeVertex& b = plain.bulged()[i];
                ASSERT_EQ((std::array{a.x, a.y, a.z, a.s, a.t}),
                          (std::array{b.x, b.y, b.z, b.s, b.t}))
                    << "vertex " << i << " of " << slices << " x " << stacks << " at " << t;
            }
        }
    }
}

TEST(BumpTubeDeathTest, DiesWithAMessageWhenThereIsNoMemory)
{
    for (const int stacks : {1 << 28, 1 << 30, -3}) {
        EXPECT_EXIT((BumpTube{}.build(1 << 30, stacks, 1.0F, 1.0F)), testing::ExitedWithCode(0),
                    "\nError allocating memory!\n");
    }
}
