#pragma once

#include <glm/gtc/constants.hpp>
#include <glm/vec2.hpp>

// The functions of the standard library for doubles, with their results rounded to floats: what
// differs from machine to machine is then too small to show, which is not so with the functions for
// floats. Angles are in radians.
float power(float x, float exponent);
float sine(float angle);
float cosine(float angle);
float exponential(float x);
float logarithm(float x);
float angleOf(float x, float y); // of the direction (x, y), from -pi to pi

inline constexpr float kFullTurn = glm::two_pi<float>();

// How far a number is from the nearest whole one: 0 to 0.5.
float offWhole(float x);

// The shortest of the ways that lead to the same place where everything repeats each `size`.
glm::vec2 shortestWay(glm::vec2 way, glm::vec2 size);

// A place brought into 0 ... size - 1 by whole sizes.
inline int wrap(int place, int size)
{
    const int rest = place % size;
    return rest < 0 ? rest + size : rest;
}
