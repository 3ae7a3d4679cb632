// The landscape's night at noon: the moon before the sun, whose corona stands around it and lights
// thin clouds from the back. Places are on the screen.
#pragma once

#include "art/pictures/kit/lighting.h"

#include <array>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace landscape {

inline const std::array kFog = {colour(0x0a1118), colour(0x16242f), colour(0x35525f),
                                colour(0x86a9b0), colour(0xc9dcda)};
inline const glm::vec3 kMoonColour = colour(0xeef3ec);
inline constexpr glm::vec2 kMoon(400.0F, 80.0F); // its middle

// How much light hangs in the air: near the moon, and hardly at the sides.
float airlight(glm::vec2 screen);

// How much of the light is left: less of it behind the longest title, which stands on calm ground.
float hush(glm::vec2 screen);

// 1 on the lines where a value passes a multiple of the interval, about one screen pixel wide.
// `change` is the value's change from one screen pixel to the next; crowded lines fade away.
float contour(float value, float interval, float change);

glm::vec3 skyAt(glm::vec2 screen);

} // namespace landscape
