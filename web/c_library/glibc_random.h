#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The numbers that glibc's rand() gives, which the figure, the tube and the greetings were composed
// with: each is the sum of the ones 3 and 31 before it, without its lowest bit.
class GlibcRandom {
public:
    GlibcRandom() { seed(1); }

    void seed(std::uint32_t value);
    int next(); // 0 to 2147483647

private:
    std::array<std::uint32_t, 31> latest_{}; // a ring
    std::size_t place_ = 0;                  // of the oldest
};
