#pragma once

#include "sound/mixer.h"
#include "sound/output.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

// An output without sound: its thread mixes block after block at the pace of the clock and drops
// them. The destructor ends the thread at once, even while it waits for its next block.
class SilentOutput : public Output {
public:
    explicit SilentOutput(Mixer& mixer); // borrowed

private:
    void run(const std::stop_token& stop);

    Mixer& mixer_;
    std::mutex waiting_;
    std::condition_variable_any wake_;
    std::jthread thread_; // last, so that it ends before the others are destroyed
};
