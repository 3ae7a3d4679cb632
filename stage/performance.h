// What `--verbose` tells of a show when it is over.
#pragma once

#include "stage/durations.h"
#include "stage/pacer.h"

#include <optional>
#include <string>

class Performance {
public:
    explicit Performance(Seconds frame) : frame_(frame) {}

    static void frameBegins();
    void frameIsShown();
    // The picture is left standing: what comes next did not follow a frame.
    void pause() { latest_.reset(); }

    // Some lines: frame times, misses, and the events' delay.
    [[nodiscard]] std::string report() const;

private:
    Seconds frame_; // how long each is to stay
    std::optional<Time::time_point> latest_;
    Durations frames_;
    Durations delays_;
    std::uint64_t missed_ = 0; // frames that came half a frame late, or later
};
