// Modules that tell the show what to do, and when.
#pragma once

#include "art/music/xm.h"

#include <vector>

// A Zxx effect in a scripted module.
struct Cue {
    int order;
    int row;     // 0 to 63; each lasts 5292 samples, 0.12 s
    int channel; // 0 to 15
    int value;
};

constexpr int kSamplesPerRow = 5292;
constexpr int kRowsPerOrder = 64;

// A module of `orders` silent patterns of 64 rows at the usual tempo, with these effects.
XmModule scriptedModule(int orders, const std::vector<Cue>& cues);
