#include "show/options.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct CommandLine {
    std::vector<const char*> arguments; // after the command's own name
    int fullscreen;
    int noSound;
    int startScene;
};

// clang-format off
const CommandLine kCommandLines[] = {
    {{}, 1, 0, 0},
    {{"-window"}, 0, 0, 0},
    {{"-nosound"}, 1, 1, 0},
    {{"5"}, 1, 0, 5},
    {{"-window", "5"}, 0, 0, 5},
    {{"5", "-window"}, 0, 0, 0},
    {{"-window", "-nosound"}, 0, 1, 0},
    {{"-nosound", "-window"}, 0, 1, 0},
    {{"3", "4"}, 1, 0, 4},
    {{"-window", "-nosound", "3"}, 0, 1, 3},
    {{"-nosound", "3", "-window"}, 1, 1, 3},
    {{"-nosound", "4", "6"}, 1, 1, 6},
    {{"-nosound", "4", "1"}, 1, 1, 4},
    {{"4", "-window", "-nosound"}, 0, 0, 0},
    {{"1"}, 1, 0, 0},
    {{"2"}, 1, 0, 2},
    {{"8"}, 1, 0, 8},
    {{"9"}, 1, 0, 9},
    {{"10"}, 1, 0, 0},
    {{"-3"}, 1, 0, 0},
    {{"abc"}, 1, 0, 0},
    {{""}, 1, 0, 0},
    {{"+3"}, 1, 0, 3},
    {{" 3"}, 1, 0, 3},
    {{"3rd"}, 1, 0, 3},
    {{"0x5"}, 1, 0, 0},
    {{"99999999999999999999"}, 1, 0, 0},
    {{"4294967301"}, 1, 0, 0}, // 5 when cut to 32 bits
    {{"-Window"}, 1, 0, 0},
    {{"-window2"}, 1, 0, 0},
    {{"-windo"}, 1, 0, 0},
    {{"-window", "-nosound", "3", "4"}, 1, 0, 0},
    {{"-window", "-nosound", "3", "4", "5", "6"}, 1, 0, 0},
};
// clang-format on

} // namespace

TEST(Options, MeanWhatTheirPlaceSays)
{
    for (const CommandLine& line : kCommandLines) {
        std::string shown;
        std::vector<char*> arguments{const_cast<char*>("kso")};
        for (const char* argument : line.arguments) {
            shown += std::string(" [") + argument + "]";
            arguments.push_back(const_cast<char*>(argument));
        }
        readOptions(static_cast<int>(arguments.size()), arguments.data());
        EXPECT_EQ(options.fullscreen, line.fullscreen) << shown;
        EXPECT_EQ(options.noSound, line.noSound) << shown;
        EXPECT_EQ(options.startScene, line.startScene) << shown;
    }
}

TEST(Options, SurviveAMissingCommandName)
{
    readOptions(0, nullptr);
    EXPECT_EQ(options.startScene, 0);
}
