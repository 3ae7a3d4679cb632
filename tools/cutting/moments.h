// The moments of the show that an editor looks at: its cuts, its events, or one every few seconds.
#pragma once

#include "art/music/score/score.h"
#include "tools/sync_script/script.h"
#include "tools/sync_script/shots.h"
#include "virtual/timing.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

struct Moment {
    std::int64_t sample = 0;
    int order = 0;
    int row = 0;
    int scene = 0;     // that is shown from here on
    std::string words; // "twister to black"; of several events, all
    Mark mark = Mark::kNone;
};

std::vector<Moment> cutsOf(const Script& script);

// One for each row with events that their scene reacts to.
std::vector<Moment> eventsOf(const Script& script);

// The first at the beginning.
std::vector<Moment> momentsEvery(const Script& script, double seconds);

// A part of the show: its order positions from the first to the last.
struct Part {
    int firstOrder = 0;
    int lastOrder = 255;

    [[nodiscard]] bool has(int order) const { return order >= firstOrder && order <= lastOrder; }
};

// The part that a section is. Throws std::runtime_error, which names all sections, if there is none
// of this name.
Part partOf(std::span<const ScoreSection> sections, const std::string& name);

// "12" or "12-15"; none if it is neither.
std::optional<Part> partOf(const std::string& orders);

void keepPart(std::vector<Moment>& moments, const Part& part);

// Frames from the first to before the end.
struct FrameRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    [[nodiscard]] bool has(std::uint64_t frame) const { return frame >= begin && frame < end; }
};

// The frames that a recording of this part has; empty if the part is not played.
FrameRange framesOf(const Script& script, const Part& part, FrameRate rate);

// The first frame that hears the moment.
std::uint64_t frameOf(const Moment& moment, FrameRate rate);

// The frame's time for the recorder's --at, which names its still: "12.041667".
std::string stillTime(std::uint64_t frame, FrameRate rate);
