// The show told a second time, plainly, and without its sources; the scenes are in model/.
#pragma once

#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// Begins a new show.
void beginModel();

// One pass of the main loop, t seconds into the show, with what the music has sent since the pass
// before, in order. Returns the frame in the words of the stand-in.
Calls modelPass(const std::vector<int>& heard, float t);
