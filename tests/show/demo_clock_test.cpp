#include "show/demo_clock.h"
#include "tests/show/fake_ticks.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

TEST(DemoClock, CountsFromStartAcrossTheCountersWrap)
{
    DemoClock clock;
    for (const std::uint32_t start : {0U, 12345U, 0xFFFFFF00U}) {
        fakeTicks = start;
        clock.start();
        EXPECT_EQ(clock.seconds(), 0.0F);
        fakeTicks = start + 1000;
        EXPECT_EQ(clock.seconds(), 1.0F);
        fakeTicks = start + 16777217; // one more millisecond than a float can count
        EXPECT_EQ(clock.seconds(), 16777.217F);
    }
}

TEST(DemoClock, AddsItsOffsetUntilTheNextStart)
{
    DemoClock clock;
    fakeTicks = 500;
    clock.start();
    clock.setOffset(-2.25F);
    fakeTicks = 1500;
    EXPECT_EQ(clock.seconds(), -1.25F);
    clock.start();
    EXPECT_EQ(clock.seconds(), 0.0F);
}

// The steps of a float, as demo_clock.h tells them; the offset of a frame at 60 Hz from its place.
TEST(DemoClock, CountsInStepsThatGrow)
{
    struct Row {
        double hours;
        int readings; // different ones in the thousand milliseconds that follow
        float step;   // seconds
    };
    constexpr Row kRows[] = {
        {1.0 / 6, 1000, 1.0F / 16384},
        {1,       1000, 1.0F / 4096 },
        {4.5,     1000, 1.0F / 1024 },
        {6,       512,  1.0F / 512  },
        {24,      129,  1.0F / 128  },
    };
    DemoClock clock;
    fakeTicks = 0;
    clock.start();
    for (const Row& row : kRows) {
        std::set<float> readings;
        for (std::uint32_t i = 0; i < 1000; ++i) {
            fakeTicks = static_cast<std::uint32_t>(row.hours * 3'600'000) + i;
            readings.insert(clock.seconds());
        }
        EXPECT_EQ(readings.size(), row.readings) << row.hours << " hours";
        const float first = *readings.begin();
        EXPECT_EQ(std::nextafter(first, 1e9F) - first, row.step) << row.hours << " hours";
    }
}
