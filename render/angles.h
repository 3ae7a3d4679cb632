#pragma once

// Degrees to radians with the constant 3.1415926, not a full-precision pi: the placing of pictures
// to the pixel was made with it.
constexpr float degToRad(float degrees)
{
    return static_cast<float>(static_cast<double>(degrees) / 360.0 * 3.1415926 * 2.0);
}
