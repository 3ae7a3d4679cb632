#include "sound/mixer.h"
#include "sound/xm_patterns.h"
#include "tests/sound/test_module.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

TestModule twoPatterns(unsigned version)
{
    TestModule module;
    module.version = version;
    module.orders = {0, 1};
    module.instruments = 2;
    // clang-format off
    module.patterns = {
        {3, {{0, 0, 49, 0, 0}, {0, 3, 0, kZxx, 9}, {2, 0, 50, kZxx, 200}, {2, 2, 0, kZxx, 7}}},
        {2, {{1, 0, 0, kZxx, 0}, {1, 1, 0, 0x22, 5}}},
    };
    // clang-format on
    return module;
}

// As the library loads and plays: whatever the bytes are, this ends with an answer. The player
// takes its time to load, so not every file comes this far.
void loadAndPlay(Bytes file)
{
    std::vector<ZxxCell> cells;
    if (takeZxxCells(file, cells) != SoundError::none) {
        return;
    }
    try {
        FMUSIC_MODULE module(file, cells);
        Mixer mixer;
        std::array<std::int16_t, 1024> samples{};
        module.callback = [](FMUSIC_MODULE*, unsigned char) {};
        mixer.play(module);
        mixer.mix(samples);
        mixer.jump(module, 1);
        mixer.mix(samples);
    } catch (const openmpt::exception&) {
    }
}

} // namespace

// Everything but the Zxx cells has to stay, in every layout: the file becomes the one that never
// had them, up to the packing of emptied cells.
TEST(XmPatterns, FindsZxxCellsInEveryLayout)
{
    const std::vector<ZxxCell> expected = {
        {0, 0, 9  },
        {0, 2, 200},
        {0, 2, 7  },
        {1, 1, 0  }
    };
    for (const unsigned version : {0x0102U, 0x0103U, 0x0104U}) {
        for (const bool packed : {false, true}) {
            TestModule module = twoPatterns(version);
            module.packed = packed;
            Bytes file = module.build();
            std::vector<ZxxCell> cells;
            EXPECT_EQ(takeZxxCells(file, cells), SoundError::none);
            EXPECT_EQ(cells, expected) << version << (packed ? " packed" : " unpacked");
            if (!packed) {
                EXPECT_EQ(file, module.withoutZxx().build());
            }
        }
    }
}

// Only the last sample may end early: every shorter file is refused, and none reads past its end.
TEST(XmPatterns, RefusesEveryTruncation)
{
    for (const unsigned version : {0x0102U, 0x0103U, 0x0104U}) {
        const Bytes whole = twoPatterns(version).build();
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            // An allocation of this very size, so that a read behind it is seen.
            Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            file.shrink_to_fit();
            std::vector<ZxxCell> cells;
            const bool complete = size > whole.size() - kSampleBytes;
            const SoundError expected = complete    ? SoundError::none
                                        : size < 17 ? SoundError::unknownFormat
                                                    : SoundError::unreadableFile;
            ASSERT_EQ(takeZxxCells(file, cells), expected) << version << ", " << size << " bytes";
            if (complete && size % 16 == 0) {
                loadAndPlay(file);
            }
        }
    }
}

TEST(XmPatterns, SurvivesFlippedBytes)
{
    std::mt19937 random(1);
    for (int i = 0; i < 4000; ++i) {
        Bytes file = twoPatterns(i % 3 == 0 ? 0x0102 : 0x0104).build();
        for (int flips = 1 + i % 4; flips > 0; --flips) {
            file[random() % file.size()] = static_cast<std::uint8_t>(random());
        }
        if (i % 20 == 0) {
            loadAndPlay(file);
        } else {
            std::vector<ZxxCell> cells;
            takeZxxCells(file, cells);
        }
    }
}
