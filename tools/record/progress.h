#pragma once

#include "virtual/timing.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

// A line on standard error that tells what the recorder does, how far it is, and how long that will
// still take. On a terminal it is rewritten in place; elsewhere there is a new one every ten
// seconds.
class Progress {
public:
    // Frames before `first` are skipped. `end`: the frame before which the recording will end, if
    // that is known.
    Progress(FrameRate rate, std::uint64_t first, std::optional<std::uint64_t> end);

    // Names something that has no frames, like "closing the film".
    void enter(const char* stage);

    // Tells that `frames` frames of the show are done, and what is done with them: "recording".
    // Cheap: most calls do nothing.
    void show(const char* stage, std::uint64_t frames);

    // Removes the line, so that a message can be printed.
    void clear();

    [[nodiscard]] double elapsedSeconds() const;

private:
    using Clock = std::chrono::steady_clock;

    void print(const std::string& line);
    [[nodiscard]] std::string textOf(const char* stage, std::uint64_t frames) const;

    FrameRate rate_;
    std::uint64_t first_;
    std::optional<std::uint64_t> end_;
    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point start_;
    Clock::time_point due_;
    // What is told of: the frames that are skipped, or those behind them.
    bool isSkipping_ = true;
    std::uint64_t begin_ = 0; // its first frame that was done
    Clock::time_point beginTime_;
};

// Minutes and seconds: "3:57.9" with one decimal, "3:57" without.
std::string clockText(double seconds, int decimals);
