#include "web/gl/matrix.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

} // namespace

Matrix product(const Matrix& a, const Matrix& b)
{
    Matrix result{};
    for (std::size_t c = 0; c < 4; ++c) {
        for (std::size_t r = 0; r < 4; ++r) {
            result[4 * c + r] = a[r] * b[4 * c] + a[4 + r] * b[4 * c + 1] +
                                a[8 + r] * b[4 * c + 2] + a[12 + r] * b[4 * c + 3];
        }
    }
    return result;
}

Point transformed(const Matrix& m, float x, float y, float z)
{
    Point result{};
    for (std::size_t r = 0; r < 4; ++r) {
        result[r] = m[r] * x + m[4 + r] * y + m[8 + r] * z + m[12 + r];
    }
    return result;
}

Matrix translation(float x, float y, float z)
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

Matrix scaling(float x, float y, float z)
{
    return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}

Matrix rotation(float degrees, float x, float y, float z)
{
    const float length = std::sqrt(x * x + y * y + z * z);
    x /= length;
    y /= length;
    z /= length;
    const double radians = degrees * kRadiansPerDegree;
    const auto s = static_cast<float>(std::sin(radians));
    const auto c = static_cast<float>(std::cos(radians));
    const float d = 1.0F - c;
    // By hand, since the formatter gives each a line of its own.
    // clang-format off
    return {
        x * x * d + c,     x * y * d + z * s, x * z * d - y * s, 0.0F,
        x * y * d - z * s, y * y * d + c,     y * z * d + x * s, 0.0F,
        x * z * d + y * s, y * z * d - x * s, z * z * d + c,     0.0F,
        0.0F,              0.0F,              0.0F,              1.0F,
    };
    // clang-format on
}

Matrix perspective(double fieldOfView, double aspect, double nearPlane, double farPlane)
{
    const double scale = 1.0 / std::tan(fieldOfView / 2.0 * kRadiansPerDegree);
    const double depth = nearPlane - farPlane;
    Matrix result{};
    result[0] = static_cast<float>(scale / aspect);
    result[5] = static_cast<float>(scale);
    result[10] = static_cast<float>((farPlane + nearPlane) / depth);
    result[11] = -1.0F;
    result[14] = static_cast<float>(2.0 * farPlane * nearPlane / depth);
    return result;
}
