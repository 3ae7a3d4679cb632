#pragma once

#include "tools/sync_script/script.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

// A frame of the show, and the stretch of time that it stands for.
struct Still {
    std::int64_t begin = 0; // samples
    std::int64_t end = 0;
    std::string seconds; // when it is taken; "12.05" is in the file 12.05.png
};

// One for each visit to a scene, more for a long visit, none for the empty scene. Each is taken
// when much is happening on the screen.
std::vector<Still> chooseStills(const Script& script);

// "12.05,40.70"
std::string stillTimes(std::span<const Still> stills);
