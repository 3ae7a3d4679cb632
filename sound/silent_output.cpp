#include "sound/silent_output.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <ratio>

namespace {

using Clock = std::chrono::steady_clock;
using Blocks = std::chrono::duration<std::int64_t, std::ratio<kBlockFrames, kMixRateHz>>;

// Up to this delay, mixing catches up with the clock; after a longer one, as when the process was
// stopped, it goes on where it was, as it would with a device.
constexpr std::chrono::seconds kMaxCaughtUp{1};

} // namespace

SilentOutput::SilentOutput(Mixer& mixer)
    : mixer_(mixer), thread_([this](const std::stop_token& stop) { run(stop); })
{
}

void SilentOutput::run(const std::stop_token& stop)
{
    std::array<std::int16_t, kBlockFrames * kMixChannels> block{};
    std::unique_lock held(waiting_);
    Clock::time_point start = Clock::now();
    // Each block's time is counted from the start, so that delays do not add up.
    for (Blocks mixed{0};; ++mixed) {
        const Clock::time_point due = start + std::chrono::floor<Clock::duration>(mixed);
        wake_.wait_until(held, stop, due, [] { return false; });
        if (stop.stop_requested()) {
            return;
        }
        if (const Clock::time_point now = Clock::now(); now - due > kMaxCaughtUp) {
            start += now - due;
        }
        mixer_.mix(block);
    }
}
