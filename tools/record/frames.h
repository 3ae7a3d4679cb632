// Puts the capture library's packets together to whole frames: each with its picture and exactly
// its sound.
#pragma once

#include "tools/capture/packets.h"
#include "virtual/timing.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

struct Frame {
    std::uint64_t number = 0;            // since the show's first
    std::vector<std::uint8_t> picture;   // red, green, blue, rows top first; empty: nobody wants it
    std::span<const std::int16_t> sound; // left, right; until the next frame's moment
};

class FrameAssembler {
public:
    // Frames go to `take` as they become whole, those before `first` to nobody.
    FrameAssembler(FrameRate rate, std::uint64_t first, std::function<void(Frame)> take)
        : rate_(rate), first_(first), take_(std::move(take))
    {
    }

    void add(const PacketHeader& header, std::vector<std::uint8_t> bytes);

    // After the last packet: the last frame's missing sound is silence.
    void finish();

    // Frames of the show so far.
    [[nodiscard]] std::uint64_t seen() const { return seen_; }

private:
    void addSound(std::uint64_t position, std::span<const std::uint8_t> bytes);
    void passOn();

    FrameRate rate_;
    std::uint64_t first_;
    std::function<void(Frame)> take_;
    std::optional<Frame> waiting_; // for its sound
    std::uint64_t seen_ = 0;
    std::uint64_t soundBegin_ = 0; // sample, of what `sound_` begins with
    std::vector<std::int16_t> sound_;
};
