#include "reference/plain_grid_warp.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace {

// One point's zoom and, from it, the coordinates in every copy of the point that a strip holds.
void storePoint(const PlainGrid& grid, int r, int c, float zoom)
{
    const float u = static_cast<float>(c) / static_cast<float>(grid.columns) / zoom;
    const float v = static_cast<float>(r) / static_cast<float>(grid.rows) / zoom;
    const std::ptrdiff_t stripFloats = 4 * std::ptrdiff_t{grid.columns} + 8;
    if (r < grid.rows) {
        float* top = grid.texCoords + r * stripFloats + std::ptrdiff_t{4} * c;
        top[0] = u;
        top[1] = v;
    }
    if (r >= 1) {
        float* bottom = grid.texCoords + (r - 1) * stripFloats + std::ptrdiff_t{4} * c + 2;
        bottom[0] = u;
        bottom[1] = v;
    }
}

// Warps the points before `endRow` and `endColumn`.
template <typename Zoom>
void warp(const PlainGrid& grid, const std::array<float, 4>& phases, int endRow, int endColumn,
          Zoom zoom)
{
    const auto [topLeft, topRight, bottomLeft, bottomRight] = phases;
    const float leftStep = (bottomLeft - topLeft) / static_cast<float>(grid.rows);
    const float rightStep = (bottomRight - topRight) / static_cast<float>(grid.rows);
    float left = topLeft;
    float right = topRight;
    for (int r = 0; r < endRow; ++r) {
        const float step = (right - left) / static_cast<float>(grid.columns);
        float phase = left;
        for (int c = 0; c < endColumn; ++c) {
            storePoint(grid, r, c, static_cast<float>(zoom(static_cast<double>(phase))));
            phase += step;
        }
        left += leftStep;
        right += rightStep;
    }
}

std::array<float, 4> fastPhases(float t)
{
    return {
        static_cast<float>(3.14 * std::sin(t * 1.2 * 5.0)),
        static_cast<float>(3.14 * std::cos(t * 0.8 * 5.0)),
        static_cast<float>(3.14 * std::sin(t * 1.5 * 5.0)),
        static_cast<float>(3.14 * std::cos(t * 1.2 * 5.0)),
    };
}

} // namespace

void plainWarp(const PlainGrid& grid, float time)
{
    const std::array<float, 4> phases = {
        static_cast<float>(7.85 * std::sin(time * 1.2 * 1.5)),
        static_cast<float>(5.652 * std::cos(time * 0.8 * 1.5)),
        static_cast<float>(4.396 * std::sin(time * 1.5 * 1.5)),
        static_cast<float>(8.164 * std::cos(time * 1.2 * 1.5)),
    };
    warp(grid, phases, grid.rows + 1, grid.columns + 1,
         [](double phase) { return (std::cos(0.6 * phase) + 1.0) * 0.5 * 1.3 + 0.5; });
}

void plainWarpFast(const PlainGrid& grid, float time)
{
    warp(grid, fastPhases(time), grid.rows, grid.columns,
         [](double phase) { return (std::cos(phase) + 1.0) * 0.5 * 2.0 + 0.5; });
}

void plainWarpFastBiased(const PlainGrid& grid, float time, float base)
{
    warp(grid, fastPhases(time), grid.rows, grid.columns,
         [base](double phase) { return (std::cos(phase) + 1.0) * 0.5 * 2.0 + base; });
}
