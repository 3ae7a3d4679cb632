#pragma once

#include <array>
#include <atomic>
#include <cstdint>

class Part;

// A lock to be held for a few instructions: a thread that waits spins. Usable with
// std::scoped_lock.
class SpinLock {
public:
    void lock();
    void unlock() { taken_.store(0, std::memory_order_release); }

private:
    std::atomic<std::uint32_t> taken_{0};
};

// The events that the music has sent since the last frame, in order of arrival. The mixer thread
// appends them and the main thread takes them out. The array is fixed so that neither allocates.
class SyncQueue {
public:
    // Adds an event, 64 to 255. An event that finds the queue full is dropped. Mixer thread.
    void append(int value);

    // Passes every event to `scene`, oldest first, and empties the queue. The lock is held
    // meanwhile, so the mixer thread may have to wait for the scene's syncEvent. Main thread.
    void drainSyncQueue(Part* scene);

    // Drops every event. Main thread.
    void clearSyncQueue();

private:
    std::array<std::int32_t, 64> events_{};
    std::int32_t count_ = 0;
    SpinLock lock_; // guards events_ and count_
};

extern SyncQueue syncQueue;
