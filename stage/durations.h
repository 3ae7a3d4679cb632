#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// Many durations, of which only their distribution is kept: to a tenth of a millisecond, up to a
// second.
class Durations {
public:
    void add(double milliseconds);

    [[nodiscard]] std::uint64_t count() const { return count_; }
    [[nodiscard]] double worst() const { return worst_; } // milliseconds

    // What this share of them, from 0 to 1, did not exceed, in milliseconds; 0.5 gives the median.
    [[nodiscard]] double quantile(double share) const;

private:
    static constexpr double kStepMs = 0.1;

    std::array<std::uint64_t, 10'000> counts_{};
    std::uint64_t count_ = 0;
    double worst_ = 0.0;
};
