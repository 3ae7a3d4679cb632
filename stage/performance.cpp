#include "stage/performance.h"

#include "stage/row_watch.h"

#include <array>
#include <cstdio>

namespace {

constexpr double kMillisecondsPerSecond = 1000.0;
constexpr double kMiss = 1.5; // frames

} // namespace

void Performance::frameBegins()
{
    ::frameBegins();
}

void Performance::frameIsShown()
{
    ::frameIsShown(delays_);
    const Time::time_point now = Time::now();
    if (latest_) {
        const Seconds took = now - *latest_;
        frames_.add(took.count() * kMillisecondsPerSecond);
        missed_ += took > kMiss * frame_ ? 1 : 0;
    }
    latest_ = now;
}

std::string Performance::report() const
{
    std::array<char, 512> text{};
    std::snprintf(text.data(), text.size(),
                  "kso: %llu frames of %.1f ms: median %.1f, 99 of 100 within %.1f, worst %.1f, "
                  "%llu missed\n"
                  "kso: %llu rows of the music were seen %.1f ms after they were mixed (median), "
                  "worst %.1f\n",
                  static_cast<unsigned long long>(frames_.count()),
                  frame_.count() * kMillisecondsPerSecond, frames_.quantile(0.5),
                  frames_.quantile(0.99), frames_.worst(), static_cast<unsigned long long>(missed_),
                  static_cast<unsigned long long>(delays_.count()), delays_.quantile(0.5),
                  delays_.worst());
    return text.data();
}
