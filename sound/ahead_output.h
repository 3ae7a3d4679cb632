#pragma once

#include "sound/mixer.h"
#include "sound/output.h"

#include <cstdint>
#include <deque>
#include <span>

// An output that is pulled, for places without threads, like a web page: it mixes when it is asked,
// ahead of what is heard, and holds the effects of each row back until the row is heard. All of it
// runs on the thread that calls.
class AheadOutput : public Output {
public:
    explicit AheadOutput(Mixer& mixer) : mixer_(mixer) {} // borrowed

    // Mixes the next audio frames.
    void mix(std::span<std::int16_t> samples);

    // How many audio frames have been mixed, of which the first is number 0.
    [[nodiscard]] std::int64_t mixed() const { return mixed_; }

    // Performs the effects that are due, now that this audio frame is heard: those of all rows that
    // began with it or before it. A row is noticed with the piece of 32 audio frames in which it
    // begins, so it counts from there, up to 31 audio frames early; mixed one by one, it is exact.
    void hear(std::int64_t audioFrame);

    // The audio frame that the effects performed last counted from; -1 if none were.
    [[nodiscard]] std::int64_t latestPerformed() const { return latestPerformed_; }

private:
    struct Waiting {
        std::int64_t audioFrame;
        RowEffects effects;
    };

    Mixer& mixer_;
    std::int64_t mixed_ = 0;
    std::int64_t latestPerformed_ = -1;
    std::deque<Waiting> waiting_; // by audio frame
};
