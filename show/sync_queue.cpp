#include "show/sync_queue.h"

#include "scenes/part.h"

#include <cstddef>
#include <mutex>

constinit SyncQueue syncQueue;

void SpinLock::lock()
{
    // Waits by reading only, so that the cache line stays with the holder until it unlocks.
    while (taken_.exchange(1, std::memory_order_acquire) != 0) {
        while (taken_.load(std::memory_order_relaxed) != 0) {
        }
    }
}

void SyncQueue::append(int value)
{
    const std::scoped_lock held(lock_);
    if (static_cast<std::size_t>(count_) < events_.size()) {
        events_[static_cast<std::size_t>(count_)] = value;
        ++count_;
    }
}

void SyncQueue::drainSyncQueue(Part* scene)
{
    const std::scoped_lock held(lock_);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count_); ++i) {
        scene->syncEvent(events_[i]);
    }
    count_ = 0;
}

void SyncQueue::clearSyncQueue()
{
    const std::scoped_lock held(lock_);
    count_ = 0;
}
