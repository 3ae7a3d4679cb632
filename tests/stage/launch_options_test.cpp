#include "stage/launcher/launch_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

LaunchOptions read(const std::vector<const char*>& arguments)
{
    return readLaunchOptions(arguments);
}

} // namespace

TEST(LaunchOptions, AreWhatBeginsWithTwoDashesWhereverItStands)
{
    const LaunchOptions options = read({"-window", "--size", "1920x1080", "3", "--display", "2",
                                        "--refresh", "59.94", "--pace", "time", "--verbose", "x"});
    EXPECT_EQ(options.size, (PictureSize{1920, 1080}));
    EXPECT_EQ(options.display, 2);
    EXPECT_EQ(options.refresh, 59.94);
    EXPECT_TRUE(options.pacesByTime && options.isVerbose);
    EXPECT_FALSE(options.isPlain || options.isFromMenu || options.onlyTriesDisplay);
    EXPECT_THAT(options.forTheShow, testing::ElementsAre("-window", "3", "x"));
}

TEST(LaunchOptions, RefuseWhatTheyCannotUse)
{
    const std::vector<const char*> kRows[] = {
        {"--size"             },
        {"--size",              "1920"},
        {"--size",                     "x480"},
        {"--size","640x"},
        {"--size",              "0x480"},
        {"--size",                     "640x-480"},
        {"--size", "640x480x"},
        {"--size",              "99999x480"},
        {"--size",                     "99999999999999x480"},
        {"--display",           "0"},
        {"--display",              "second"},
        {"--refresh",                     "fast"},
        {"--refresh","0"},
        {"--refresh",           "nan"},
        {"--refresh",                     "1e9"},
        {"--pace","slow"},
        {"--full"          },
        {"--"                    },
    };
    for (const auto& arguments : kRows) {
        EXPECT_THROW(read(arguments), UsageError) << testing::PrintToString(arguments);
    }
}
