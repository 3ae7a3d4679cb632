#pragma once

// Degrees to radians with the constant 3.1415926, not a full-precision pi: which pixels a picture
// covers depends on it.
constexpr float degToRad(float degrees)
{
    return static_cast<float>(static_cast<double>(degrees) / 360.0 * 3.1415926 * 2.0);
}
