#include "art/pictures/kit/lighting.h"

#include "art/pictures/kit/arithmetic.h"

#include <algorithm>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

GreyPicture averagedAlong(const GreyPicture& picture, int radius, int stepX, int stepY)
{
    GreyPicture result(picture.width(), picture.height());
    result.fill([&](int x, int y) {
        float sum = 0.0F;
        for (int i = -radius; i <= radius; ++i) {
            sum += picture.wrapped(x + i * stepX, y + i * stepY);
        }
        return sum / static_cast<float>(2 * radius + 1);
    });
    return result;
}

} // namespace

glm::vec3 colour(unsigned code)
{
    return glm::vec3((code >> 16U) & 0xffU, (code >> 8U) & 0xffU, code & 0xffU) / 255.0F;
}

glm::vec3 ramp(std::span<const glm::vec3> colours, float t)
{
    const std::size_t last = colours.size() - 1;
    const float place = glm::clamp(t, 0.0F, 1.0F) * static_cast<float>(last);
    const std::size_t before = std::min(static_cast<std::size_t>(place), last - 1);
    return glm::mix(colours[before], colours[before + 1], place - static_cast<float>(before));
}

float softStep(float from, float to, float x)
{
    const float t = glm::clamp((x - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

float brightest(glm::vec3 pixel)
{
    return glm::max(pixel.r, glm::max(pixel.g, pixel.b));
}

glm::vec3 normalAt(const GreyPicture& heights, int x, int y, float steepness)
{
    const float right = heights.wrapped(x + 1, y) - heights.wrapped(x - 1, y);
    const float down = heights.wrapped(x, y + 1) - heights.wrapped(x, y - 1);
    return glm::normalize(glm::vec3(-0.5F * steepness * right, -0.5F * steepness * down, 1.0F));
}

float matt(glm::vec3 normal, glm::vec3 toLight)
{
    return glm::max(0.0F, glm::dot(normal, glm::normalize(toLight)));
}

float glossy(glm::vec3 normal, glm::vec3 toLight, float sharpness)
{
    const glm::vec3 halfway = glm::normalize(glm::normalize(toLight) + glm::vec3(0.0F, 0.0F, 1.0F));
    return power(matt(normal, halfway), sharpness);
}

GreyPicture blurred(const GreyPicture& picture, int radius)
{
    GreyPicture result = picture;
    for (int pass = 0; pass < 3; ++pass) {
        result = averagedAlong(averagedAlong(result, radius, 1, 0), radius, 0, 1);
    }
    return result;
}
