// The scenes frame by frame: what the real program draws is, bit for bit, what the model draws when
// it hears the same events at the same times.

#include "tests/whole_show/model.h"
#include "tests/whole_show/stage.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

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

void expectTheModelsFrames(Script script, int framesPerSecond)
{
    script.cue(0, 8);
    const int orders = script.row / kRowsPerOrder + 2; // no repetition within the last frame
    const Outcome outcome = perform(
        {.module = scriptedModule(orders, script.cues), .framesPerSecond = framesPerSecond});
    std::map<int, std::vector<int>> heard; // by frame
    for (const Cue& cue : script.cues) {
        heard[frameThatHears(cue.order, cue.row, framesPerSecond)].push_back(cue.value);
    }
    ASSERT_EQ(static_cast<int>(outcome.frames.size()), heard.rbegin()->first);

    beginModel();
    for (int number = 1; number < heard.rbegin()->first; ++number) {
        const int milliseconds = (number - 1) * 1000 / framesPerSecond;
        const Calls wanted = modelPass(heard[number], static_cast<float>(milliseconds / 1000.0));
        const Calls& made = outcome.frames[static_cast<std::size_t>(number - 1)];
        const auto [want, make] =
            std::mismatch(wanted.begin(), wanted.end(), made.begin(), made.end());
        ASSERT_TRUE(want == wanted.end() && make == made.end())
            << "frame " << number << " at " << framesPerSecond
            << "\n  drawn:  " << (make == made.end() ? "nothing more" : *make)
            << "\n  wanted: " << (want == wanted.end() ? "nothing more" : *want);
    }
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
