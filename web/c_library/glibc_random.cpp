#include "web/c_library/glibc_random.h"

namespace {

constexpr int kDropped = 310; // so that similar seeds part

} // namespace

void GlibcRandom::seed(std::uint32_t value)
{
    // Park and Miller's generator, reckoned in signed numbers as glibc does it.
    auto word = static_cast<std::int32_t>(value == 0 ? 1 : value);
    for (std::uint32_t& entry : latest_) {
        entry = static_cast<std::uint32_t>(word);
        const std::int32_t high = word / 127773;
        const std::int32_t low = word % 127773;
        word = 16807 * low - 2836 * high;
        if (word < 0) {
            word += 2147483647;
        }
    }
    place_ = 3; // the numbers before the first one repeat the first three
    for (int i = 0; i < kDropped; ++i) {
        next();
    }
}

int GlibcRandom::next()
{
    constexpr std::size_t kSize = 31;
    const std::uint32_t sum = latest_[place_] + latest_[(place_ + kSize - 3) % kSize];
    latest_[place_] = sum;
    place_ = (place_ + 1) % kSize;
    return static_cast<int>(sum >> 1U);
}
