#include "runtime/demo_clock.h"
#include "runtime/music.h"
#include "runtime/part.h"
#include "runtime/scheduler.h"
#include "runtime/sync_queue.h"
#include "tests/runtime/fake_ticks.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string story; // what the scenes were told, in order

class Teller : public Part {
public:
    void syncEvent(int value) override { story += name + "!" + std::to_string(value) + " "; }
    void drawFrame(float seconds) override
    {
        fakeTicks += 500; // a slow scene does not change its own time
        story += name + "@" + std::to_string(static_cast<int>(seconds * 1000.0F)) + " ";
    }

    std::string name;
};

class Scheduler : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (std::size_t i = 0; i < tellers.size(); ++i) {
            tellers[i].name = std::to_string(i);
            sceneTable[i] = &tellers[i];
        }
        story.clear();
        fakeTicks = 1000;
        demoClock.start();
        currentScene = 0;
        quitRequested = 0;
        syncQueue.clearSyncQueue();
    }

    static std::string frame()
    {
        story.clear();
        runFrame();
        return story;
    }

    std::array<Teller, 8> tellers;
};

} // namespace

TEST_F(Scheduler, DeliversEventsToTheSceneCurrentAtTheFrameBeforeItDraws)
{
    EXPECT_EQ(frame(), "0@0 ");
    onZxx(nullptr, 64);
    onZxx(nullptr, 255);
    onZxx(nullptr, 64);
    EXPECT_EQ(frame(), "0!64 0!255 0!64 0@500 ");

    // Queued for one scene, delivered to the next.
    onZxx(nullptr, 128);
    onZxx(nullptr, 7);
    EXPECT_EQ(frame(), "7!128 7@1000 ");
    EXPECT_EQ(frame(), "7@1500 ");
}

TEST_F(Scheduler, DropsEventsWhileNoSceneIsOn)
{
    for (const int number : {9, 63}) {
        onZxx(nullptr, static_cast<unsigned char>(number));
        onZxx(nullptr, 128);
        EXPECT_EQ(frame(), "");
        EXPECT_EQ(quitRequested, 0);
        onZxx(nullptr, 129);
        onZxx(nullptr, 3);
        onZxx(nullptr, 130);
        EXPECT_EQ(frame().substr(0, 14), "3!129 3!130 3@") << number;
    }
}

TEST_F(Scheduler, EndsAtEightAndLeavesTheQueueAlone)
{
    onZxx(nullptr, 128);
    onZxx(nullptr, 8);
    EXPECT_EQ(frame(), "");
    EXPECT_EQ(quitRequested, 1);
    onZxx(nullptr, 2);
    EXPECT_EQ(frame().substr(0, 8), "2!128 2@");
    EXPECT_EQ(quitRequested, 1);
}
