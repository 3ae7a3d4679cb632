#pragma once

#include "virtual/timing.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

// A line on standard error that tells how far the recording is. On a terminal it is rewritten in
// place; elsewhere there is a new one every ten seconds.
class Progress {
public:
    // `end`: the frame before which the recording will end, if that is known.
    Progress(FrameRate rate, std::optional<std::uint64_t> end);

    // Tells that `frames` frames of the show are done. Cheap: most calls do nothing.
    void show(std::uint64_t frames);

    // Removes the line, so that a message can be printed.
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
