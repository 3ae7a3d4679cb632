#include "web/gl/wide_line.h"

#include <cmath>
#include <cstddef>

namespace {

// How far a point is on the visible side of the near plane.
float beforeEye(const Point& p)
{
    return p[2] + p[3];
}

// The point between two others at which the near plane is met.
Point onNearPlane(const Point& visible, const Point& hidden)
{
    const float share = beforeEye(visible) / (beforeEye(visible) - beforeEye(hidden));
    Point result{};
    for (std::size_t i = 0; i < 4; ++i) {
        result[i] = visible[i] + share * (hidden[i] - visible[i]);
    }
    return result;
}

Point divided(const Point& p)
{
    return {p[0] / p[3], p[1] / p[3], p[2] / p[3], 1.0F};
}

} // namespace

std::optional<WideLine> wideLine(const Point& from, const Point& to, float width, int viewportWidth,
                                 int viewportHeight)
{
    Point a = from;
    Point b = to;
    if (!(beforeEye(a) > 0.0F) && !(beforeEye(b) > 0.0F)) {
        return std::nullopt;
    }
    if (beforeEye(a) < 0.0F) {
        a = onNearPlane(to, from);
    } else if (beforeEye(b) < 0.0F) {
        b = onNearPlane(from, to);
    }
    a = divided(a);
    b = divided(b);

    // From -1 to 1 there are as many units as half the viewport has pixels.
    const auto pixelsX = static_cast<float>(viewportWidth) / 2.0F;
    const auto pixelsY = static_cast<float>(viewportHeight) / 2.0F;
    const bool steep = std::fabs((b[1] - a[1]) * pixelsY) > std::fabs((b[0] - a[0]) * pixelsX);
    const float sideX = steep ? width / 2.0F / pixelsX : 0.0F;
    const float sideY = steep ? 0.0F : width / 2.0F / pixelsY;
    const auto moved = [&](const Point& p, float sign) {
        return Point{p[0] + sign * sideX, p[1] + sign * sideY, p[2], p[3]};
    };
    return WideLine{moved(a, -1.0F), moved(a, 1.0F), moved(b, -1.0F), moved(b, 1.0F)};
}
