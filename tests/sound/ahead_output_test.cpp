#include "sound/ahead_output.h"
#include "tests/support/test_module.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

std::vector<int> performed;

std::unique_ptr<FMUSIC_MODULE> load(Bytes file)
{
    std::vector<ZxxCell> cells;
    EXPECT_EQ(takeZxxCells(file, cells), SoundError::none);
    auto module = std::make_unique<FMUSIC_MODULE>(file, cells);
    module->callback = [](FMUSIC_MODULE*, unsigned char parameter) {
        performed.push_back(parameter);
    };
    return module;
}

} // namespace

// At speed 2, rows are 1764 audio frames long.
TEST(AheadOutput, HoldsEffectsBackUntilTheyAreHeard)
{
    constexpr std::size_t kRow = 1764;
    const auto module = load(writeXm(makeModule(2, "Z01 Z02 / / Z03 / Z04")));
    Mixer mixer;
    mixer.play(*module);
    AheadOutput output(mixer);
    std::vector<std::int16_t> samples(kMixChannels);
    performed.clear();
    while (output.mixed() < std::int64_t{3 * kRow} + 1) {
        output.mix(samples);
    }
    EXPECT_TRUE(performed.empty()) << "before it is heard";

    struct Step {
        std::int64_t heard;
        std::vector<int> performed;
        std::int64_t latest;
    };
    const std::vector<Step> steps = {
        {-1,           {},           -1      },
        {0,            {1, 2},       0       },
        {2 * kRow - 1, {1, 2},       0       },
        {2 * kRow,     {1, 2, 3},    2 * kRow},
        {2 * kRow,     {1, 2, 3},    2 * kRow},
        {9 * kRow,     {1, 2, 3, 4}, 3 * kRow}, // further than was mixed
    };
    for (const Step& step : steps) {
        output.hear(step.heard);
        EXPECT_EQ(performed, step.performed) << step.heard;
        EXPECT_EQ(output.latestPerformed(), step.latest) << step.heard;
    }
}

// And counts the silence after the end, too.
TEST(AheadOutput, MixesTheSameAsTheMixer)
{
    const Bytes file = writeXm(makeModule(2, "Z01 / Z02"));
    const auto module = load(file);
    const auto again = load(file);
    Mixer mixer;
    Mixer plain;
    mixer.play(*module);
    plain.play(*again);
    AheadOutput output(mixer);
    std::vector<std::int16_t> got(5000);
    std::vector<std::int16_t> expected(5000);
    output.mix(got);
    plain.mix(expected);
    EXPECT_EQ(got, expected);
    EXPECT_EQ(output.mixed(), 2500);
    mixer.stopAll();
    output.mix(got);
    EXPECT_EQ(got, std::vector<std::int16_t>(5000));
    EXPECT_EQ(output.mixed(), 5000);
}
