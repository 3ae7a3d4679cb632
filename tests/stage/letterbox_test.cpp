#include "stage/letterbox.h"

#include <gtest/gtest.h>

TEST(Letterbox, KeepsThePicturesShapeInTheMiddle)
{
    struct Row {
        PictureSize display;
        Area area;
    };
    constexpr Row kRows[] = {
        {{640, 480},   {0, 0, 640, 480}    },
        {{1920, 1080}, {240, 0, 1440, 1080}},
        {{3840, 2160}, {480, 0, 2880, 2160}},
        {{1080, 1920}, {0, 555, 1080, 810} },
        {{1366, 768},  {171, 0, 1024, 768} },
        {{3440, 1440}, {760, 0, 1920, 1440}},
        {{5, 1},       {2, 0, 1, 1}        },
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(letterbox({640, 480}, row.display), row.area) << row.display.width;
    }
}

TEST(ComfortableWindow, IsALargeMultipleThatLeavesSomeOfTheDesktop)
{
    struct Row {
        PictureSize desktop;
        int times;
    };
    constexpr Row kRows[] = {
        {{320, 200},   1},
        {{1366, 768},  1},
        {{1920, 1080}, 2},
        {{1080, 1920}, 1},
        {{2560, 1440}, 2},
        {{3840, 2160}, 4},
    };
    for (const Row& row : kRows) {
        const PictureSize expected = {640 * row.times, 480 * row.times};
        EXPECT_EQ(comfortableWindow(row.desktop), expected) << row.desktop.width;
    }
}

TEST(WindowFor, IsAsLargeAsThePictureUnlessThatDoesNotFit)
{
    struct Row {
        PictureSize picture;
        PictureSize expected;
    };
    constexpr PictureSize kDesktop = {1920, 1040};
    constexpr Row kRows[] = {
        {{1280, 544},  {1280, 544} },
        {{1920, 1040}, {1920, 1040}},
        {{3840, 1632}, {1728, 734} },
        {{640, 1280},  {468, 936}  },
        {{1, 16384},   {1, 936}    },
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(windowFor(row.picture, kDesktop), row.expected) << row.picture.width;
    }
}
