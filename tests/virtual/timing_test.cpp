#include "virtual/timing.h"

#include <gtest/gtest.h>

constexpr std::uint64_t kSecond = kMicrosecondsPerSecond;

TEST(FrameRate, CountsFromTheFirstFrame)
{
    struct Row {
        FrameRate rate;
        std::uint64_t frame; // the one at a time or after it,
        std::uint64_t microseconds;
        std::uint64_t samples; // before it, and
        std::uint64_t frameAt; // the one on screen at the time
    };
    constexpr std::uint64_t kDay = 86'400;
    // clang-format off
    constexpr Row kRows[] = {
        {{24, 1},       0,               0,                     0,                       0},
        {{24, 1},       1,               1,                     1837,                    0},
        {{24, 1},       3,               125'000,               5512,                    3},
        {{60000, 1001}, 1,               16'683,                735,                     0},
        {{60000, 1001}, 2,               16'684,                1471,                    1},
        {{60000, 1001}, 60000,           1001 * kSecond,        44'144'100,              60000},
        {{60, 1},       7,               116'666,               5145,                    6},
        {{60, 1},       8,               116'667,               5880,                    7},
        {{144, 1},      144,             kSecond,               44'100,                  144},
        {{144, 1},      145,             kSecond + 1,           44'406,                  144},
        {{24, 1},       24 * kDay,       kDay * kSecond,        44'100 * kDay,           24 * kDay},
        {{60000, 1001}, 5'178'822,       kDay * kSecond,        44'100 * kDay + 604,     5'178'821},
        {{144, 1},      144 * kDay + 1,  kDay * kSecond + 6944, 44'100 * kDay + 306,     144 * kDay},
    };
    // clang-format on
    for (const Row& row : kRows) {
        EXPECT_EQ(row.rate.firstFrameFrom(row.microseconds), row.frame) << row.microseconds;
        EXPECT_EQ(row.rate.samplesBefore(row.frame), row.samples) << row.microseconds;
        EXPECT_EQ(row.rate.frameAt(row.microseconds), row.frameAt) << row.microseconds;
        // The moment itself is heard, and the sample after it a frame later.
        EXPECT_EQ(row.rate.firstFrameHearing(row.samples), row.frame) << row.samples;
        EXPECT_EQ(row.rate.firstFrameHearing(row.samples + 1), row.frame + 1) << row.samples;
    }
}
