#pragma once

#include "virtual/timing.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

// A line on standard error that tells how far the recording is: rewritten in place on a terminal,
// or a new one every few seconds elsewhere.
class Progress {
public:
    // `end`: the frame before which the recording will end, where that is known.
    Progress(FrameRate rate, std::optional<std::uint64_t> end);

    // `frames` of the show are done. Cheap: most calls do nothing.
    void show(std::uint64_t frames);

    // Takes the line away, so that something else can be said.
    void clear();

    [[nodiscard]] double elapsedSeconds() const;

private:
    FrameRate rate_;
    std::optional<std::uint64_t> end_;
    bool isTerminal_;
    bool isShown_ = false;
    std::chrono::steady_clock::time_point start_;
    std::chrono::steady_clock::time_point due_;
};

// Minutes and seconds: "3:57.9" with one decimal, "3:57" without.
std::string clockText(double seconds, int decimals);
