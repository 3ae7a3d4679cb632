// Matrices as OpenGL has them: sixteen floats, column after column.
#pragma once

#include <array>

using Matrix = std::array<float, 16>;
using Point = std::array<float, 4>;

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// a b, in single precision.
Matrix product(const Matrix& a, const Matrix& b);

// The matrix times (x, y, z, 1).
Point transformed(const Matrix& m, float x, float y, float z);

Matrix translation(float x, float y, float z);
Matrix scaling(float x, float y, float z);
Matrix rotation(float degrees, float x, float y, float z); // about an axis of any length but 0
Matrix perspective(double fieldOfView, double aspect, double nearPlane, double farPlane);
