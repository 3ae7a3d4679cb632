#include "stage/pacer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

using namespace std::chrono_literals;

TEST(Pace, StaysAsCloseTo60AsWholeRefreshesAllow)
{
    struct Row {
        double refresh;
        int refreshes;
    };
    constexpr Row kRows[] = {
        {0,     1},
        {24,    1},
        {50,    1},
        {59.94, 1},
        {60,    1},
        {75,    1},
        {90,    2},
        {100,   2},
        {120,   2},
        {144,   2},
        {165,   3},
        {240,   4},
        {360,   6},
        {480,   8},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(refreshesPerFrame(row.refresh), row.refreshes) << row.refresh;
    }
}

TEST(Pace, IsTheDisplaysOnlyIfItsSwapsTakeThatLong)
{
    struct Row {
        const char* display;
        double refresh;
        double swapMs;
        double frameMs; // of each frame
        bool waits;
    };
    // clang-format off
    constexpr Row kRows[] = {
        {"waits",                      60,  16.683, 16.683, true },
        {"waits for two refreshes",    144, 13.9,   13.9,   true },
        {"waits for one of the two",   144, 6.94,   13.889, false},
        {"waits for nothing",          144, 0.4,    13.889, false},
        {"waits for nothing",          60,  0.4,    16.667, false},
        {"is too slow for its rate",   60,  40.0,   16.667, false},
        {"has no rate",                0,   0.4,    16.667, false},
        {"has no rate, but waits",     0,   8.3,    16.667, false},
    };
    // clang-format on
    for (const Row& row : kRows) {
        // Some swaps are late, as when something else happens.
        std::vector<Seconds> swaps(20, Seconds(row.swapMs / 1000.0));
        swaps[3] = swaps[11] = 50ms;
        const Pace pace = measuredPace(row.refresh, swaps);
        EXPECT_EQ(pace.displayWaits, row.waits) << row.display << row.refresh;
        EXPECT_NEAR(pace.frame.count() * 1000.0, row.frameMs, 0.001) << row.display << row.refresh;
    }
}

TEST(Pace, IsNotThatOfARendererWhoseSwapsTakeSoLongByChance)
{
    std::vector<Seconds> swaps;
    for (int i = 0; i < 21; ++i) {
        swaps.emplace_back((10.0 + 0.4 * i) / 1000.0); // in the middle 14 ms
    }
    const Pace pace = measuredPace(144.0, swaps);
    EXPECT_FALSE(pace.displayWaits);
    EXPECT_EQ(pace.frame, Seconds(2 / 144.0));
}

// The delay from a frame's moment until the next one asks does not matter, unless it is long.
TEST(Pacer, KeepsItsMomentsWhateverFramesTake)
{
    constexpr auto kFrame = 10ms;
    Pacer pacer({kFrame, false});
    const Time::time_point start{1h};
    EXPECT_EQ(pacer.due(start), start);
    EXPECT_EQ(pacer.due(start + 1ms), start + kFrame);
    EXPECT_EQ(pacer.due(start + 19ms), start + 2 * kFrame);
    EXPECT_EQ(pacer.due(start + 33ms), start + 33ms) << "late: at once";
    EXPECT_EQ(pacer.due(start + 34ms), start + 40ms) << "and soon in time again";
    EXPECT_EQ(pacer.due(start + 200ms), start + 200ms) << "much too late: from here on";
    EXPECT_EQ(pacer.due(start + 201ms), start + 210ms);
}

TEST(Pacer, LeavesTheMomentsToADisplayThatWaits)
{
    Pacer pacer({10ms, true});
    for (const auto moment : {1h + 0ms, 1h + 1ms, 1h + 2ms}) {
        EXPECT_EQ(pacer.due(Time::time_point(moment)), Time::time_point(moment));
    }
}
