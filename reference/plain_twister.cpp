#include "reference/plain_twister.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

struct Edge {
    float x;
    float z; // larger is nearer
};

void drawSpan(const PlainBar& bar, int row, long long from, long long to)
{
    const float step = 256.0F / static_cast<float>(to - from);
    float u = 0.0F;
    for (long long x = from; x < to; ++x) {
        const int texel = (row & 255) * 256 + (static_cast<int>(u) & 255);
        u += step;
        if (x >= 0 && x < bar.width && row >= 0 && row < bar.height) {
            bar.target[static_cast<long long>(row) * bar.width + x] = bar.source[texel];
        }
    }
}

} // namespace

void plainTwisterRow(const PlainBar& bar, int centreX, int row, float angle)
{
    constexpr std::array kOffsets = {0.0, 1.5707963, 3.1415926, 4.7123889};
    std::array<Edge, 4> edges{};
    for (std::size_t k = 0; k < edges.size(); ++k) {
        edges[k].x = static_cast<float>(centreX + std::sin(angle + kOffsets[k]) * bar.radius);
        edges[k].z = static_cast<float>(std::cos(angle + kOffsets[k]) * 100.0);
    }
    constexpr std::array<std::pair<std::size_t, std::size_t>, 6> kExchanges = {
        {{2, 3}, {1, 3}, {0, 3}, {1, 2}, {0, 2}, {0, 1}}
    };
    for (const auto& [first, second] : kExchanges) {
        if (edges[first].z > edges[second].z) {
            std::swap(edges[first], edges[second]);
        }
    }

    const auto column = [&edges](std::size_t k) { return static_cast<long long>(edges[k].x); };
    if (std::fabs(edges[1].z - edges[0].z) < 0.005) {
        drawSpan(bar, row, std::min(column(2), column(3)), std::max(column(2), column(3)));
        return;
    }
    std::array<long long, 3> columns = {column(1), column(2), column(3)};
    std::sort(columns.begin(), columns.end());
    drawSpan(bar, row, columns[0], columns[1]);
    drawSpan(bar, row, columns[1], columns[2]);
}
