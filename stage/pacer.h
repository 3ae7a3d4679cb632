// When frames are shown, so that they come as close to 60 a second as the display allows: the show
// is composed for that, and its kicks die away by a step a frame.
#pragma once

#include <chrono>
#include <optional>
#include <span>

using Time = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr double kComposedFor = 60.0; // frames a second

// For how many of a display's refreshes a frame stays: 1 at 60 and 75 Hz, 2 at 120 and 144, 3 at
// 165, 4 at 240.
int refreshesPerFrame(double refreshesPerSecond);

struct Pace {
    Seconds frame{1.0 / kComposedFor}; // how long each stays
    bool displayWaits = false;         // the swap takes as long by itself
};

// What `swaps`, how long each of some swaps took that were to wait for refreshesPerFrame, tells of
// the display. A rate of 0 is unknown.
Pace measuredPace(double refreshesPerSecond, std::span<const Seconds> swaps);

// Tells the moments of frames for as long as the display does not.
class Pacer {
public:
    explicit Pacer(Pace pace) : pace_(pace) {}

    // When the frame that is ready at `now` is to be shown: now, or later.
    Time::time_point due(Time::time_point now);

    [[nodiscard]] const Pace& pace() const { return pace_; }

private:
    Pace pace_;
    std::optional<Time::time_point> latest_; // when the frame before was due
};
