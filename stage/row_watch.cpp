#include "stage/row_watch.h"

#include "stage/pacer.h"

#include <atomic>
#include <cstdint>
#include <dlfcn.h>
#include <libopenmpt/libopenmpt.hpp>
#include <mutex>
#include <vector>

namespace {

constexpr double kMillisecondsPerSecond = 1000.0;

std::atomic<bool> isWatching = false;

struct Watch {
    std::mutex lock;
    std::int32_t row = -1;                 // the latest that was noticed
    std::vector<Time::time_point> noticed; // rows since the latest frame began
    std::vector<Time::time_point> inFrame; // those whose frame has begun; the main thread's alone
};

Watch& watch()
{
    static auto* const kWatch = new Watch; // the mixer may call to the program's very end
    return *kWatch;
}

void notice(std::int32_t row)
{
    const std::scoped_lock held(watch().lock);
    if (row != watch().row) {
        watch().row = row;
        watch().noticed.push_back(Time::now());
    }
}

} // namespace

void watchRows()
{
    isWatching = true;
}

void frameBegins()
{
    const std::scoped_lock held(watch().lock);
    watch().inFrame.swap(watch().noticed);
    watch().noticed.clear();
}

void frameIsShown(Durations& delays)
{
    const Time::time_point now = Time::now();
    for (const Time::time_point row : watch().inFrame) {
        delays.add(Seconds(now - row).count() * kMillisecondsPerSecond);
    }
    watch().inFrame.clear();
}

// The library's own is found by its name in the C++ ABI of Linux.
std::int32_t openmpt::module::get_current_row() const
{
    using Function = std::int32_t (*)(const openmpt::module*);
    static const auto kReal =
        reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "_ZNK7openmpt6module15get_current_rowEv"));
    const std::int32_t row = kReal(this);
    if (isWatching) {
        notice(row);
    }
    return row;
}
