#include "show/music.h"

#include <gtest/gtest.h>

TEST(FmodErrorText, KnowsItsCodesAndNoOthers)
{
    EXPECT_STREQ(fmodErrorText(0), "No errors");
    EXPECT_STREQ(fmodErrorText(1),
                 "Cannot call this command after FSOUND_Init.  Call FSOUND_Close first.");
    EXPECT_STREQ(fmodErrorText(9), "File not found");
    EXPECT_STREQ(fmodErrorText(12), "Not enough memory ");
    EXPECT_STREQ(fmodErrorText(19), "Required Mediaplayer codec is not installed");
    EXPECT_STREQ(fmodErrorText(20), "Unknown error");
    EXPECT_STREQ(fmodErrorText(-1), "Unknown error");
}
