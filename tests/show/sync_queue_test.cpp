#include "scenes/part.h"
#include "show/sync_queue.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

class Listener : public Part {
public:
    void syncEvent(int value) override { heard.push_back(value); }
    void drawFrame(float /*seconds*/) override {}

    std::vector<int> heard;
};

} // namespace

TEST(SyncQueue, DeliversOnceInOrderAndDropsWhatComesAfterTheLastSlot)
{
    SyncQueue queue;
    Listener listener;
    std::vector<int> expected;
    for (int i = 0; i < 70; ++i) {
        queue.append(64 + i);
        if (i < 64) {
            expected.push_back(64 + i);
        }
    }
    queue.drainSyncQueue(&listener);
    queue.drainSyncQueue(&listener);
    EXPECT_EQ(listener.heard, expected);

    queue.append(200);
    queue.clearSyncQueue();
    queue.append(201);
    queue.drainSyncQueue(&listener);
    expected.push_back(201);
    EXPECT_EQ(listener.heard, expected);
}

TEST(SyncQueue, LosesNothingBetweenTwoThreads)
{
    SyncQueue queue;
    Listener listener;
    constexpr int kEvents = 20000;
    std::atomic<int> sent{0};
    std::atomic<int> received{0};
    std::thread mixer([&] {
        while (sent < kEvents) {
            if (sent - received < 64) { // never more than the queue holds
                queue.append(sent);
                ++sent;
            } else {
                std::this_thread::yield();
            }
        }
    });
    while (received < kEvents) {
        queue.drainSyncQueue(&listener);
        received = static_cast<int>(listener.heard.size());
    }
    mixer.join();
    for (int i = 0; i < kEvents; ++i) {
        ASSERT_EQ(listener.heard[static_cast<std::size_t>(i)], i);
    }
}
