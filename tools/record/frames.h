// Puts the capture library's packets together into frames: each with its picture and exactly the
// sound that belongs to it.
#pragma once

#include "tools/capture/packets.h"
#include "virtual/timing.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

struct Frame {
    std::uint64_t number = 0;            // 0 is the show's first frame
    std::vector<std::uint8_t> picture;   // red, green, blue, rows top first; empty: not needed
    std::span<const std::int16_t> sound; // left, right; up to the next frame's; empty: not needed
};

class FrameAssembler {
public:
    // Passes each frame to `take` when it is complete; drops those before frame `first`. Without
    // sound a frame is complete with its picture.
    FrameAssembler(FrameRate rate, std::uint64_t first, bool hasSound,
                   std::function<void(Frame)> take)
        : rate_(rate), first_(first), hasSound_(hasSound), take_(std::move(take)),
          soundBegin_(rate.samplesBefore(first))
    {
    }

    void add(const PacketHeader& header, std::vector<std::uint8_t> bytes);

    // True while no further picture may be added: the latest one has not all its sound yet.
    [[nodiscard]] bool needsSound() const { return waiting_.has_value(); }

    // The sample before which all sound is there.
    [[nodiscard]] std::uint64_t heard() const
    {
        return soundBegin_ + sound_.size() / kSoundChannels;
    }

    // To be called after the last packet: completes the last frame with silence.
    void finish();

    // The number of frames so far, dropped ones included.
    [[nodiscard]] std::uint64_t seen() const { return seen_; }

private:
    void addSound(std::uint64_t position, std::span<const std::uint8_t> bytes);
    void passOn();

    FrameRate rate_;
    std::uint64_t first_;
    bool hasSound_;
    std::function<void(Frame)> take_;
    std::optional<Frame> waiting_; // for its sound
    std::uint64_t seen_ = 0;
    std::uint64_t soundBegin_; // the audio frame that `sound_` begins with
    std::vector<std::int16_t> sound_;
};
