// The scenes frame by frame: what the real program draws is, bit for bit, what the model draws when
// it hears the same events at the same times.

#include "tests/whole_show/model.h"
#include "tests/whole_show/stage.h"
#include "virtual/row_walk.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

// What a scene may hear: every event that one of them knows, those next to them, and the extremes.
constexpr int kEvents[] = {64,  127, 128, 129, 130, 131, 132, 133,
                           134, 135, 136, 137, 138, 144, 255};

// A script under way: cues are added at its row.
struct Script {
    std::vector<Cue> cues;
    int row = 0;

    void cue(int channel, int value)
    {
        cues.push_back({row / kRowsPerOrder, row % kRowsPerOrder, channel, value});
    }
};

// Every scene for at least 120 frames: first every event, one to four in a row, then a quiet third.
Script tour(int framesPerSecond)
{
    Script script;
    const int rows = std::max(12, 1000 / framesPerSecond + 1);
    for (const int scene : {1, 2, 3, 4, 5, 6, 0}) {
        script.cue(0, scene);
        std::size_t event = 0;
        for (int i = 0; i < rows; ++i, ++script.row) {
            for (int channel = 0; i > 0 && i < rows * 2 / 3 && channel <= i % 4; ++channel) {
                script.cue(channel, kEvents[event++ % std::size(kEvents)]);
            }
        }
    }
    return script;
}

// From every scene to every other and to none, with events before, with and after the change.
Script switches()
{
    Script script;
    std::size_t event = 0;
    for (int from = 0; from < 8; ++from) {
        for (const int to : {0, 1, 2, 3, 4, 5, 6, 7, 9, 63}) {
            for (const int scene : {from, to}) {
                script.cue(0, kEvents[event++ % std::size(kEvents)]);
                script.cue(1, scene);
                script.cue(2, kEvents[event++ % std::size(kEvents)]);
                script.row += 1 + scene % 2;
            }
        }
    }
    return script;
}

// At a frame a second eight rows are heard at once: 64 events and as many that find no room.
Script crowd()
{
    Script script;
    script.cue(0, 1);
    for (script.row = 9; script.row < 17; ++script.row) {
        for (int channel = 0; channel < 16; ++channel) {
            script.cue(channel, script.row < 13 ? 128 : 130);
        }
    }
    script.row = 60;
    return script;
}

// The tube until three of its four scroll positions have left the range of 32 bits, and its lines
// fade.
Script longTube()
{
    Script script;
    script.cue(0, 5);
    for (int i = 0; i < 10; ++i) {
        script.row = 2 + 11 * i * i;
        script.cue(1, 128 + i);
    }
    script.row = 3450;
    return script;
}

// Puts the show's end into the script's next row, and orders behind it so that nothing is repeated
// within the last frame.
XmModule moduleOf(Script& script)
{
    script.cue(0, 8);
    return scriptedModule(script.row / kRowsPerOrder + 2, script.cues);
}

// What each frame hears, by its number.
using Heard = std::map<std::uint64_t, std::vector<int>>;

Heard heardFrom(const XmModule& module, const std::vector<Cue>& cues, const FrameRate& rate)
{
    const std::vector<std::uint8_t> bytes = writeXm(module);
    std::istringstream file(std::string(bytes.begin(), bytes.end()));
    RowWalk walk(file);
    std::map<std::pair<int, int>, std::uint64_t> samples; // by order and row
    while (walk.next()) {
        const RowStart& row = walk.row();
        samples[{row.order, row.row}] = static_cast<std::uint64_t>(row.sample);
    }
    Heard heard;
    for (const Cue& cue : cues) {
        heard[rate.firstFrameHearing(samples.at({cue.order, cue.row}))].push_back(cue.value);
    }
    return heard;
}

void expectTheModelsFrames(const XmModule& module, const std::vector<Cue>& cues,
                           int framesPerSecond)
{
    const FrameRate rate{static_cast<std::uint64_t>(framesPerSecond), 1};
    const Outcome outcome = perform({.module = module, .framesPerSecond = framesPerSecond});
    Heard heard = heardFrom(module, cues, rate);
    const std::uint64_t last = heard.rbegin()->first; // draws nothing
    ASSERT_EQ(outcome.frames.size(), last + 1);

    beginModel();
    for (std::uint64_t number = 0; number < last; ++number) {
        const auto milliseconds = static_cast<double>(rate.momentOf(number, 1000));
        const Calls wanted = modelPass(heard[number], static_cast<float>(milliseconds / 1000.0));
        const Calls& made = outcome.frames[number];
        const auto [want, make] =
            std::mismatch(wanted.begin(), wanted.end(), made.begin(), made.end());
        ASSERT_TRUE(want == wanted.end() && make == made.end())
            << "frame " << number << " at " << framesPerSecond
            << "\n  drawn:  " << (make == made.end() ? "nothing more" : *make)
            << "\n  wanted: " << (want == wanted.end() ? "nothing more" : *want);
    }
    EXPECT_EQ(outcome.frames.back(), Calls());
}

void expectTheModelsFrames(Script script, int framesPerSecond)
{
    const XmModule module = moduleOf(script);
    expectTheModelsFrames(module, script.cues, framesPerSecond);
}

} // namespace

TEST(Scenes, DrawWhatTheyHearAtEveryFrameRate)
{
    for (const int framesPerSecond : {30, 60, 144}) {
        expectTheModelsFrames(tour(framesPerSecond), framesPerSecond);
    }
}

TEST(Scenes, KeepTheirStateWhileOthersAreOn)
{
    expectTheModelsFrames(switches(), 30);
}

TEST(Scenes, DropEventsThatFindNoRoom)
{
    expectTheModelsFrames(crowd(), 1);
}

TEST(Scenes, GoOnPastTheRangeOfScrollPositions)
{
    expectTheModelsFrames(longTube(), 3);
}

// Ticks of many lengths, and rows of one tick to twelve.
TEST(Scenes, HearRowsOfEveryLength)
{
    Script script = switches();
    XmModule module = moduleOf(script);
    int number = 0;
    for (XmPattern& pattern : module.patterns) {
        for (int row = 0; row < kRowsPerOrder; ++row, ++number) {
            pattern.at(row, 4) = {.effect = kXmEffectSpeed,
                                  .parameter = static_cast<std::uint8_t>(1 + number % 12)};
            pattern.at(row, 5) = {.effect = kXmEffectSpeed,
                                  .parameter = static_cast<std::uint8_t>(255 - number % 200)};
        }
    }
    expectTheModelsFrames(module, script.cues, 30);
}
