#include "sound/ahead_output.h"

#include <cstddef>

void AheadOutput::mix(std::span<std::int16_t> samples)
{
    while (!samples.empty()) {
        RowEffects effects;
        const std::size_t size = mixer_.mixPiece(samples, effects).size();
        if (effects.count > 0) {
            waiting_.push_back({mixed_, effects});
        }
        mixed_ += static_cast<std::int64_t>(size / kMixChannels);
        samples = samples.subspan(size);
    }
}

void AheadOutput::hear(std::int64_t audioFrame)
{
    while (!waiting_.empty() && waiting_.front().audioFrame <= audioFrame) {
        // Taken out first: what is performed may stop the music.
        const RowEffects effects = waiting_.front().effects;
        latestPerformed_ = waiting_.front().audioFrame;
        waiting_.pop_front();
        effects.perform();
    }
}
