#include "stage/pacer.h"

#include <algorithm>
#include <cmath>
#include <vector>

int refreshesPerFrame(double refreshesPerSecond)
{
    const auto distance = [&](int refreshes) {
        return std::abs(std::log(refreshesPerSecond / refreshes / kComposedFor));
    };
    int best = 1;
    while (refreshesPerSecond > 0.0 && distance(best + 1) < distance(best)) {
        ++best;
    }
    return best;
}

Pace measuredPace(double refreshesPerSecond, std::span<const Seconds> swaps)
{
    constexpr double kTolerance = 0.1; // rates are told as whole numbers, and measured roughly
    if (refreshesPerSecond <= 0.0) {
        return {};
    }
    const Seconds frame{refreshesPerFrame(refreshesPerSecond) / refreshesPerSecond};
    if (swaps.empty()) {
        return {frame, false};
    }
    std::vector<Seconds> sorted(swaps.begin(), swaps.end());
    std::ranges::sort(sorted);
    const auto isClose = [&](Seconds swap) { return std::abs(swap / frame - 1.0) < kTolerance; };
    const Seconds median = sorted[sorted.size() / 2];
    // A display is regular. A renderer that does not wait may be as slow by chance.
    const bool waits = isClose(sorted[sorted.size() / 4]) && isClose(median) &&
                       isClose(sorted[sorted.size() * 3 / 4]);
    return {waits ? median : frame, waits};
}

Time::time_point Pacer::due(Time::time_point now)
{
    if (pace_.displayWaits) {
        return now;
    }
    const auto frame = std::chrono::duration_cast<Time::duration>(pace_.frame);
    // From moment to moment, so that small delays do not add up. What is later than a frame begins
    // anew.
    const Time::time_point moment = latest_ ? *latest_ + frame : now;
    latest_ = now > moment + frame ? now : moment;
    return std::max(now, *latest_);
}
