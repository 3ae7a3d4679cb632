// Modules that tell the show what to do, and when.
#pragma once

#include "art/music/xm.h"
#include "virtual/timing.h"

#include <cstdint>
#include <vector>

// A Zxx effect in a scripted module.
struct Cue {
    int order;
    int row;     // 0 to 63; each lasts 5292 samples, 0.12 s
    int channel; // 0 to 15
    int value;
};

constexpr int kRowsPerOrder = 64;

// At the usual tempo, by the rules of the format and not by playing it: six ticks of a fiftieth of
// a second.
constexpr std::uint64_t kSamplesPerRow = 5292;

// The first frame that hears a row of a scripted module, counted from 0.
constexpr std::uint64_t frameThatHears(int order, int row, const FrameRate& rate)
{
    return rate.firstFrameHearing(static_cast<std::uint64_t>(order * kRowsPerOrder + row) *
                                  kSamplesPerRow);
}

// A module of `orders` silent patterns of 64 rows at the usual tempo, with these effects.
XmModule scriptedModule(int orders, const std::vector<Cue>& cues);
