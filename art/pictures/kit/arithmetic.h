#pragma once

// Of floats, but by the functions for doubles, rounded: between machines these differ only where a
// float hardly ever shows it, which the functions for floats do not promise. Angles are in radians.
float power(float x, float exponent);
float sine(float angle);
float cosine(float angle);
float exponential(float x);
float logarithm(float x);
float angleOf(float x, float y); // of the direction (x, y), from -pi to pi
