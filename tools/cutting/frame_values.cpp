#include "tools/cutting/frame_values.h"

#include <cstdlib>
#include <utility>

namespace {

double ratio(std::uint64_t part, std::size_t whole)
{
    return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
}

double meanDifference(std::span<const std::uint8_t> before, std::span<const std::uint8_t> now)
{
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        sum += static_cast<std::uint64_t>(std::abs(int{now[i]} - int{before[i]}));
    }
    return ratio(sum, before.size());
}

} // namespace

FrameValues valuesOf(std::span<const std::uint8_t> before, std::span<const std::uint8_t> now)
{
    std::uint64_t sum = 0;
    std::uint64_t blownOut = 0;
    for (std::size_t i = 0; i + 2 < now.size(); i += 3) {
        sum += std::uint64_t{now[i]} + now[i + 1] + now[i + 2];
        const bool isBlownOut =
            now[i] >= kBlownOut && now[i + 1] >= kBlownOut && now[i + 2] >= kBlownOut;
        blownOut += isBlownOut ? 1 : 0;
    }
    return {meanDifference(before, now), ratio(sum, now.size()), ratio(blownOut, now.size() / 3)};
}

std::vector<FrameValues> readFrames(std::istream& stream, std::size_t frameBytes)
{
    std::vector<FrameValues> values;
    std::vector<std::uint8_t> before;
    std::vector<std::uint8_t> now(frameBytes);
    while (stream.read(reinterpret_cast<char*>(now.data()),
                       static_cast<std::streamsize>(frameBytes))) {
        values.push_back(valuesOf(before, now));
        std::swap(before, now);
        now.resize(frameBytes);
    }
    return values;
}
