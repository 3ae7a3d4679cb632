#include "stage/durations.h"

#include <algorithm>

void Durations::add(double milliseconds)
{
    const double step =
        std::clamp(milliseconds / kStepMs, 0.0, static_cast<double>(counts_.size() - 1));
    ++counts_[static_cast<std::size_t>(step)];
    ++count_;
    worst_ = std::max(worst_, milliseconds);
}

double Durations::quantile(double share) const
{
    const double wanted = share * static_cast<double>(count_);
    std::uint64_t passed = 0;
    for (std::size_t i = 0; i < counts_.size(); ++i) {
        passed += counts_[i];
        if (passed > 0 && static_cast<double>(passed) >= wanted) {
            return std::min((static_cast<double>(i) + 0.5) * kStepMs, worst_);
        }
    }
    return 0.0;
}
