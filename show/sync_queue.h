#pragma once

#include <array>
#include <atomic>
#include <cstdint>

class Part;

// A lock for a few instructions: whoever waits turns on the spot. Usable with std::scoped_lock.
class SpinLock {
public:
    void lock();
    void unlock() { taken_.store(0, std::memory_order_release); }

private:
    std::atomic<std::uint32_t> taken_{0};
};

// The sync events that the music has sent since the last frame, in order of arrival. The mixer
// thread appends, the main thread takes out; a fixed array, so that neither ever allocates.
class SyncQueue {
public:
    // Adds an event, 64 to 255. An event that finds the queue full is dropped. Mixer thread.
    void append(int value);

    // Hands every event to `scene`, oldest first, and empties the queue. The lock is held
    // meanwhile, so the mixer thread waits for as long as the scene's syncEvent takes. Main thread.
    void drainSyncQueue(Part* scene);

    // Forgets every event. Main thread.
    void clearSyncQueue();

private:
    std::array<std::int32_t, 64> events_{};
    std::int32_t count_ = 0;
    SpinLock lock_; // guards events_ and count_
};

extern SyncQueue syncQueue;
