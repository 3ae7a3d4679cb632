#include "render/grid_warp.h"

#include "render/grid_mesh.h"

#include <cmath>
#include <cstddef>

// How one variant moves.
struct GridWarp::Motion {
    double topLeft, topRight, bottomLeft, bottomRight; // amplitudes of the corners' phases
    double pace;                                       // of all four
    double waves;                                      // of zoom for a phase of one
    double zoomRange;
    int skippedPoints; // at the end of each row and column
};

constexpr GridWarp::Motion GridWarp::kSwell = {
    .topLeft = 7.85,
    .topRight = 5.652,
    .bottomLeft = 4.396,
    .bottomRight = 8.164,
    .pace = 1.5,
    .waves = 0.6,
    .zoomRange = 1.3,
    .skippedPoints = 0,
};
constexpr GridWarp::Motion GridWarp::kFast = {
    .topLeft = 3.14,
    .topRight = 3.14,
    .bottomLeft = 3.14,
    .bottomRight = 3.14,
    .pace = 5.0,
    .waves = 1.0,
    .zoomRange = 2.0,
    .skippedPoints = 1,
};

namespace {

constexpr float kSmallestZoom = 0.5F;

} // namespace

void GridWarp::apply(float time)
{
    rewrite(time, kSwell, kSmallestZoom);
}

void GridWarp::applyFast(float time)
{
    applyFastBiased(time, kSmallestZoom);
}

void GridWarp::applyFastBiased(float time, float base)
{
    rewrite(time, kFast, base);
}

void GridWarp::rewrite(float time, const Motion& motion, float base)
{
    phaseTopLeft_ = static_cast<float>(motion.topLeft * std::sin(time * 1.2 * motion.pace));
    phaseTopRight_ = static_cast<float>(motion.topRight * std::cos(time * 0.8 * motion.pace));
    phaseBottomLeft_ = static_cast<float>(motion.bottomLeft * std::sin(time * 1.5 * motion.pace));
    phaseBottomRight_ = static_cast<float>(motion.bottomRight * std::cos(time * 1.2 * motion.pace));

    const int columns = grid_->columns();
    const int rows = grid_->rows();
    float* const texCoords = grid_->texCoords();
    const std::ptrdiff_t stride = grid_->stripStride();
    const auto columnCount = static_cast<float>(columns);
    const auto rowCount = static_cast<float>(rows);
    const float leftStep = (phaseBottomLeft_ - phaseTopLeft_) / rowCount;
    const float rightStep = (phaseBottomRight_ - phaseTopRight_) / rowCount;

    // Phases advance by addition, down both edges and along each row.
    float left = phaseTopLeft_;
    float right = phaseTopRight_;
    for (int r = 0; r <= rows - motion.skippedPoints; ++r) {
        const float step = (right - left) / columnCount;
        float phase = left;
        for (std::ptrdiff_t c = 0; c <= columns - motion.skippedPoints; ++c) {
            const auto zoom = static_cast<float>(
                (std::cos(motion.waves * phase) + 1.0) * 0.5 * motion.zoomRange + base);
            const float u = static_cast<float>(c) / columnCount / zoom;
            const float v = static_cast<float>(r) / rowCount / zoom;
            if (r < rows) {
                float* const asTop = texCoords + r * stride + 4 * c;
                asTop[0] = u;
                asTop[1] = v;
            }
            if (r >= 1) {
                float* const asBottom = texCoords + (r - 1) * stride + 4 * c + 2;
                asBottom[0] = u;
                asBottom[1] = v;
            }
            phase += step;
        }
        left += leftStep;
        right += rightStep;
    }
}
