#pragma once

#include "cues/catalogue.h"

#include <array>

class Part;

// The scenes by scene number; null where no scene has that number.
using SceneTable = std::array<Part*, cues::kSceneNumbers>;

// Filled by buildWorld. Each scene lives until the process ends.
extern SceneTable sceneTable;
