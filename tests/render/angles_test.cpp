#include "render/angles.h"

#include <gtest/gtest.h>

TEST(DegToRad, UsesTheShortPi)
{
    EXPECT_EQ(degToRad(180.0F), 3.1415926F);
    EXPECT_EQ(degToRad(30.0F), 0.52359876667F);
    EXPECT_EQ(degToRad(1000.0F), 17.453292222F); // a full-precision pi gives 17.4532925
}
