#include "art/pictures/kit/arithmetic.h"

#include <cmath>
#include <glm/common.hpp>

float power(float x, float exponent)
{
    return static_cast<float>(std::pow(static_cast<double>(x), static_cast<double>(exponent)));
}

float sine(float angle)
{
    return static_cast<float>(std::sin(static_cast<double>(angle)));
}

float cosine(float angle)
{
    return static_cast<float>(std::cos(static_cast<double>(angle)));
}

float exponential(float x)
{
    return static_cast<float>(std::exp(static_cast<double>(x)));
}

float logarithm(float x)
{
    return static_cast<float>(std::log(static_cast<double>(x)));
}

float angleOf(float x, float y)
{
    return static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
}

float offWhole(float x)
{
    return std::fabs(x - std::floor(x + 0.5F));
}

glm::vec2 shortestWay(glm::vec2 way, glm::vec2 size)
{
    return way - size * glm::floor(way / size + 0.5F);
}
