// The show as it is cut: shots, one after the other, and what cuts or moves without a note.
#pragma once

#include "tools/sync_script/script.h"

#include <cstdint>
#include <span>
#include <vector>

// Whether what a cue does to the picture is heard.
enum class Mark {
    kNone,     // it is, or there is nothing to hear
    kStop,     // a cut to black where no note begins or ends
    kUnstruck, // another cut or an event where no note begins
};

// A stretch between two changes of the scene shown. A number without a scene freezes the picture,
// and that is a shot too.
struct Shot {
    int scene = 0;
    std::int64_t begin = 0; // samples
    std::int64_t end = 0;
    int order = 0; // where it begins
    int row = 0;
    int rows = 0; // how many it lasts
    Mark mark = Mark::kNone;
};

struct ShotLengths {
    std::size_t count = 0;
    double mean = 0.0; // seconds
    Shot longest;
};

bool isFreeze(int scene);

// From the beginning to the end, without gaps.
std::vector<Shot> shotsOf(const Script& script);

// A mark for each cue of the script.
std::vector<Mark> marksOf(const Script& script);

ShotLengths lengthsOf(std::span<const Shot> shots);

double secondsOf(const Shot& shot);
