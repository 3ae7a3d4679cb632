#include "sound/xm_patterns.h"
#include "tests/support/test_module.h"

#include <gtest/gtest.h>

constexpr std::array kVersions = {0x0102, 0x0103, 0x0104};

static const std::string kPatterns = "... ... ... Z09 / / ZC8 ... Z07 | / Z00 Y05";

// Everything else stays: unpacked, the file becomes the one that never had them.
TEST(XmPatterns, TakesZxxCellsInEveryLayout)
{
    // clang-format off
    const std::vector<ZxxCell> expected = {{0, 0, 9}, {0, 2, 200}, {0, 2, 7}, {1, 1, 0}};
    // clang-format on
    for (const int version : kVersions) {
        for (const bool packed : {false, true}) {
            Bytes file = writeAs(makeModule(6, kPatterns), version, packed);
            const Bytes plain = writeAs(makeModule(6, withoutZxx(kPatterns)), version, packed);
            std::vector<ZxxCell> cells;
            EXPECT_EQ(takeZxxCells(file, cells), SoundError::none);
            EXPECT_EQ(cells, expected) << version << (packed ? " packed" : " unpacked");
            EXPECT_TRUE(packed || file == plain) << version;
        }
    }
}

// What lies behind the patterns is not looked at. In older files that is the sample alone. No
// shorter file is accepted, and none is read past its end.
TEST(XmPatterns, RefusesEveryFileThatEndsInAPattern)
{
    for (const int version : kVersions) {
        const Bytes whole = writeAs(makeModule(6, kPatterns), version, true);
        const std::size_t needed = whole.size() - kSampleBytes -
                                   (version < 0x0104 ? 0 : kInstrumentBytes + kSampleHeaderBytes);
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            // An allocation of this very size, so that a read behind it is seen.
            Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            std::vector<ZxxCell> cells;
            const SoundError expected = size >= needed ? SoundError::none
                                        : size < 17    ? SoundError::unknownFormat
                                                       : SoundError::unreadableFile;
            ASSERT_EQ(takeZxxCells(file, cells), expected) << version << ", " << size << " bytes";
        }
    }
}
