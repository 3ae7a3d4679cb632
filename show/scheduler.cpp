#include "show/scheduler.h"

#include "scenes/part.h"
#include "show/demo_clock.h"
#include "show/sync_queue.h"

#include <cstddef>

namespace {

// Null if no scene has this number.
Part* sceneAt(std::int32_t number)
{
    const auto index = static_cast<std::size_t>(number);
    return number >= 0 && index < sceneTable.size() ? sceneTable[index] : nullptr;
}

} // namespace

SceneTable sceneTable{};
std::atomic<std::int32_t> currentScene{0};
std::int32_t quitRequested = 0;

void runFrame()
{
    const float seconds = demoClock.seconds();
    const std::int32_t number = currentScene.load(std::memory_order_relaxed);

    if (Part* const scene = sceneAt(number); scene != nullptr) {
        syncQueue.drainSyncQueue(scene);
        scene->drawFrame(seconds);
    } else if (number == cues::kEndOfShow) {
        quitRequested = 1; // The queue is left as it is.
    } else {
        // No scene: the last frame stays on the screen, and events are dropped.
        syncQueue.clearSyncQueue();
    }
}
