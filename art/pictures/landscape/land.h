// The landscape's land as a height field, and what of it is seen from a place over its lake.
//
// Ground: x to the right and y into the distance, from the eye; heights are over the lake's level.
#pragma once

#include "art/pictures/kit/picture.h"
#include "base/window_and_view.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace landscape {

inline constexpr int kWidth = 1024;
inline constexpr int kHeight = 512;
inline constexpr int kFiner = 2; // drawn this much larger, then averaged
inline constexpr int kFineWidth = kWidth * kFiner;
inline constexpr int kFineHeight = kHeight * kFiner;

// The picture is shown over the whole view; angles and places on screen are in the view's pixels.
inline constexpr glm::vec2 kScreen(kViewWidth, kViewHeight);
inline constexpr glm::vec2 kScreenPerPixel = kScreen / glm::vec2(kFineWidth, kFineHeight);
inline constexpr float kFocalLength = 430.0F;
inline constexpr float kHorizon = 178.0F;
inline constexpr float kAhead = 437.0F;   // the column of the screen that looks straight ahead
inline constexpr float kEyeHeight = 3.4F; // over the lake, which is at height 0

// The place on the ground that is seen at a distance in a column of the screen.
glm::vec2 groundAt(float screenX, float distance);

// What a pixel shows of the land.
struct Sight {
    float distance = 0.0F;              // 0 for the sky
    float height = 0.0F;                // over the lake; where that is seen, its bed's: at most 0
    glm::vec3 normal{0.0F, 1.0F, 0.0F}; // right, up, into the distance
};
using Sights = Raster<Sight>;

// What every pixel of the picture, drawn kFiner times as large, shows of the land.
Sights lookOverLand();

} // namespace landscape
