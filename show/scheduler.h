// What happens once per pass of the main loop: the current scene gets its events and draws one
// frame.
#pragma once

#include "cues/scenes_and_events.h"

#include <array>
#include <atomic>
#include <cstdint>

class Part;

// The scenes by scene number; null where no scene has that number.
using SceneTable = std::array<Part*, cues::kSceneNumbers>;

// Filled by buildWorld. Each scene lives until the process ends.
extern SceneTable sceneTable;

// The scene number that the music set last, 0 to 63: 0-7 a scene, 8 the end, the others no scene.
// The mixer thread stores, the main thread loads once a frame; only the latest value matters.
extern std::atomic<std::int32_t> currentScene;

// Set to 1 by runFrame when the music has ended the show; never cleared. Main thread.
extern std::int32_t quitRequested;

// Passes the pending events to the current scene and has it draw one frame.
void runFrame();
