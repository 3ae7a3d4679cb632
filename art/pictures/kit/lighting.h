#pragma once

#include "art/pictures/kit/picture.h"

#include <glm/vec3.hpp>
#include <span>

// A colour from its three bytes, as 0xRRGGBB.
glm::vec3 colour(unsigned code);

// The colour at t (0 to 1) on the way through these colours, which are evenly spaced.
glm::vec3 ramp(std::span<const glm::vec3> colours, float t);

// 0 below `from`, 1 above `to`, a soft step between; `from` may be the larger one.
float softStep(float from, float to, float x);

// The largest of its three channels.
float brightest(glm::vec3 pixel);

// The direction a surface faces at a pixel: x right, y down, z toward the viewer; unit length.
// The heights are multiplied by `steepness` (in pixels) and wrap around.
glm::vec3 normalAt(const GreyPicture& heights, int x, int y, float steepness);

// Light that a matt surface sends back: 0 where it faces away, 1 where it faces the light.
float matt(glm::vec3 normal, glm::vec3 toLight);

// The highlight of a glossy one, for a viewer straight above.
float glossy(glm::vec3 normal, glm::vec3 toLight, float sharpness);

// Averages over a square of (2 radius + 1) pixels, three times: close to a Gaussian. Wraps around.
GreyPicture blurred(const GreyPicture& picture, int radius);
