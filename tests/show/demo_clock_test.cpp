#include "show/demo_clock.h"
#include "tests/show/fake_ticks.h"

#include <gtest/gtest.h>

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
