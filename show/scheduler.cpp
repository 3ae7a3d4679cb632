#include "show/scheduler.h"

#include "scenes/part.h"
#include "show/demo_clock.h"
#include "show/scene_table.h"
#include "show/sync_queue.h"

#include <cstddef>

namespace {

constexpr std::int32_t kEndOfShow = 8;

} // namespace

SceneTable sceneTable{};
std::atomic<std::int32_t> currentScene{0};
std::int32_t quitRequested = 0;

void runFrame()
{
    const float seconds = demoClock.seconds();
    const std::int32_t number = currentScene.load(std::memory_order_relaxed);

    if (number >= 0 && static_cast<std::size_t>(number) < sceneTable.size()) {
        Part* scene = sceneTable[static_cast<std::size_t>(number)];
        syncQueue.drainSyncQueue(scene);
        scene->drawFrame(seconds);
    } else if (number == kEndOfShow) {
        quitRequested = 1; // The queue is left as it is.
    } else {
        // No scene: the picture last shown stays, and events meant for nobody are dropped.
        syncQueue.clearSyncQueue();
    }
}
