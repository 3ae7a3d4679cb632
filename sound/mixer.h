// Turns the playing module into samples and performs its Zxx effects on the way.
#pragma once

#include "sound/module.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>

constexpr int kMixRateHz = 44100;
constexpr int kMixChannels = 2;
constexpr std::size_t kBlockFrames = 512; // what the outputs ask for at a time

// A lock that lets nobody wait for long. The mixer takes it again right after giving it back, and
// with a plain mutex a thread that waits could miss every one of these moments; here it waits at
// the gate, and the mixer has to pass the gate first.
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

// Plays one module at a time. Every call may come at any time; those of the main thread wait
// for one piece's mixing at most, however much the mixer has to do.
class Mixer {
public:
    // The main thread's calls. Modules are borrowed until they are stopped.
    void play(FMUSIC_MODULE& module);
    bool jump(FMUSIC_MODULE& module, int order); // false past the end of the order list
    void stop(const FMUSIC_MODULE& module);
    void stopAll();
    void setGain(FMUSIC_MODULE& module, float gain);
    void setCallback(FMUSIC_MODULE& module, FMUSIC_CALLBACK callback);

    // Writes the next samples, left and right in turn; silence when nothing plays. The effects of
    // the rows that begin meanwhile are performed from within, each row right after the piece of
    // 32 frames in which it begins. The callback runs without the lock, so it may wait, and it may
    // use the calls above; the last ones of a row may come after its module was stopped.
    //
    // A row counts as new when the order or the row number changes, so a row that repeats itself,
    // by a jump or a loop onto itself or as a module's only one, is performed once.
    void mix(std::span<std::int16_t> samples);

private:
    // The effects of one row, copied, since the module may go away while they are performed.
    struct RowEffects {
        FMUSIC_MODULE* module = nullptr;
        FMUSIC_CALLBACK callback = nullptr;
        std::size_t count = 0;
        std::array<std::uint8_t, 256> parameters; // more than a row has channels
    };

    bool mixPiece(std::span<std::int16_t> samples, RowEffects& effects);

    FairLock lock_;
    FMUSIC_MODULE* playing_ = nullptr; // guarded by lock_, with the module behind it
};
