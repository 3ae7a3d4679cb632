// Mixes the playing module into samples and calls back for its Zxx effects.
//
// An audio frame is the left and the right sample of one moment.
#pragma once

#include "sound/module.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>

constexpr int kMixRateHz = 44100; // audio frames per second
constexpr int kMixChannels = 2;
constexpr std::size_t kBlockFrames = 512; // audio frames that the outputs ask for at a time

// A lock that no thread waits for long. The mixer locks it again right after unlocking it, and with
// a plain mutex a waiting thread might never get in between. Here the waiting thread holds the
// gate, and the mixer has to wait for the gate before it can lock again.
class FairLock {
public:
    void lock()
    {
        const std::scoped_lock passing(gate_);
        inner_.lock();
    }
    void unlock() { inner_.unlock(); }

private:
    std::mutex gate_;
    std::mutex inner_;
};

// The effects of one row, copied because the module may be freed before they are performed.
struct RowEffects {
    FMUSIC_MODULE* module = nullptr;
    FMUSIC_CALLBACK callback = nullptr;
    std::size_t count = 0;
    std::array<std::uint8_t, 256> parameters; // more than a module has channels

    void perform() const;
};

// Plays one module at a time. All calls are safe at any time. Those of the main thread wait at most
// until one piece of 32 audio frames is mixed.
class Mixer {
public:
    // For the main thread. Modules are borrowed until they are stopped.
    void play(FMUSIC_MODULE& module);
    bool jump(FMUSIC_MODULE& module, int order); // false past the end of the order list
    void stop(const FMUSIC_MODULE& module);
    void stopAll();
    void setGain(FMUSIC_MODULE& module, float gain);
    void setCallback(FMUSIC_MODULE& module, FMUSIC_CALLBACK callback);

    // Writes the next audio frames, the left sample before the right one; silence if no module
    // plays. Calls the callback for the effects of each row that begins meanwhile, right after
    // mixing the piece of 32 audio frames in which the row begins. The callback runs without the
    // lock, so it may wait and may use the calls above; callbacks of a row may still come after its
    // module was stopped.
    //
    // A row counts as new when the order position or the row number changes. So a row that jumps or
    // loops to itself, or is its module's only one, is performed once.
    void mix(std::span<std::int16_t> samples);

    // Writes at most one piece of 32 audio frames, like mix, and returns it. Nothing is performed:
    // `effects` receives those of the row that begins in the piece, none if no row does.
    std::span<std::int16_t> mixPiece(std::span<std::int16_t> samples, RowEffects& effects);

private:
    FairLock lock_;
    FMUSIC_MODULE* playing_ = nullptr; // lock_ guards it and the module that it points to
};
