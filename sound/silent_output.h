#pragma once

#include "sound/mixer.h"
#include "sound/output.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

// An output that nobody hears: a thread that mixes block after block at the pace of the clock and
// drops them. It begins with its construction and has ended when its destructor returns, at once
// even in the middle of a wait.
class SilentOutput : public Output {
public:
    explicit SilentOutput(Mixer& mixer); // borrowed

private:
    void run(const std::stop_token& stop);

    Mixer& mixer_;
    std::mutex waiting_;
    std::condition_variable_any wake_;
    std::jthread thread_; // last, so that it ends before the others go
};
