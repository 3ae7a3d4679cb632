// What the show finds in a page in place of a machine's clock and sound device. The page's calls
// (web/page_api.h) set it before each frame.
#pragma once

#include <cstdint>
#include <memory>

class AheadOutput;
class Mixer;

struct PageWorld {
    std::uint32_t ticks = 0;       // SDL's clock, in milliseconds
    std::int64_t timeOfDay = -1;   // seconds since 1970; negative: the real one
    bool isShown = false;          // a frame was swapped; the page takes note and resets this
    AheadOutput* output = nullptr; // borrowed, from FSOUND_Init to FSOUND_Close
};

extern PageWorld pageWorld;
