// Seen along its axis, the bar is a turning square. Its visible faces are bounded by the two nearer
// ones of its four edges and by that one of the farther two which sticks out.
#include "render/twister.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

constexpr std::array kEdgeAngles = {0.0, 1.5707963, 3.1415926, 4.7123889}; // radians
constexpr double kDepthScale = 100.0;
constexpr double kLevel = 0.005; // with a smaller difference in depth, one face is seen head-on

constexpr int kSourceSize = 256; // texels along each side
constexpr int kSourceMask = kSourceSize - 1;

std::int64_t truncate(float pixels)
{
    return static_cast<std::int64_t>(pixels);
}

} // namespace

void Twister::drawRow(int centreX, int row, float angle)
{
    for (std::size_t k = 0; k < kEdgeAngles.size(); ++k) {
        const double turned = angle + kEdgeAngles[k];
        edgeX_[k] = static_cast<float>(centreX + std::sin(turned) * radius_);
        edgeZ_[k] = static_cast<float>(std::cos(turned) * kDepthScale);
    }
    exchangeIfFarther(2, 3);
    exchangeIfFarther(1, 3);
    exchangeIfFarther(0, 3);
    exchangeIfFarther(1, 2);
    exchangeIfFarther(0, 2);
    exchangeIfFarther(0, 1);

    if (std::fabs(edgeZ_[1] - edgeZ_[0]) < kLevel) {
        const auto [left, right] = std::minmax({truncate(edgeX_[2]), truncate(edgeX_[3])});
        fillSpan(left, right, row);
    } else {
        std::array bounds = {truncate(edgeX_[1]), truncate(edgeX_[2]), truncate(edgeX_[3])};
        std::sort(bounds.begin(), bounds.end());
        fillSpan(bounds[0], bounds[1], row);
        fillSpan(bounds[1], bounds[2], row);
    }
}

void Twister::exchangeIfFarther(std::size_t first, std::size_t second)
{
    if (edgeZ_[first] > edgeZ_[second]) {
        std::swap(edgeX_[first], edgeX_[second]);
        std::swap(edgeZ_[first], edgeZ_[second]);
    }
}

// Pixels `begin` to `end` - 1 get one row of the texture.
void Twister::fillSpan(std::int64_t begin, std::int64_t end, int row) const
{
    if (row < 0 || row >= height_ || begin == end) {
        return;
    }
    const std::uint32_t* const texels = source_ + std::ptrdiff_t{kSourceSize} * (row & kSourceMask);
    std::uint32_t* const pixels = target_ + std::ptrdiff_t{row} * width_;
    const float step = static_cast<float>(kSourceSize) / static_cast<float>(end - begin);
    const std::int64_t visibleEnd = std::min<std::int64_t>(end, width_);
    float u = 0.0F;
    for (std::int64_t x = begin; x < visibleEnd; ++x) {
        if (x >= 0) {
            pixels[x] = texels[static_cast<int>(u) & kSourceMask];
        }
        u += step;
    }
}
