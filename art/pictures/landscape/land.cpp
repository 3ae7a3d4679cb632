#include "art/pictures/landscape/land.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <utility>

namespace landscape {

namespace {

constexpr int kSteps = 600; // into the distance
constexpr float kNearest = 3.0F;
constexpr float kStepGrowth = 1.0062F;

struct Mountain {
    glm::vec2 place; // to the right and into the distance
    float height;
    float radius;
};
constexpr std::array kMountains = {
    Mountain{{-8.5F, 19.0F},   1.6F,  4.5F },
    Mountain{{4.5F, 15.5F},    0.8F,  3.0F },
    Mountain{{14.0F, 24.0F},   8.0F,  7.0F },
    Mountain{{-15.0F, 31.0F},  4.2F,  7.0F },
    Mountain{{6.5F, 34.0F},    6.0F,  6.5F },
    Mountain{{-9.0F, 48.0F},   5.0F,  7.0F },
    Mountain{{15.0F, 52.0F},   16.0F, 11.0F},
    Mountain{{-34.0F, 74.0F},  11.0F, 18.0F},
    Mountain{{-56.0F, 66.0F},  9.0F,  13.0F},
    Mountain{{2.0F, 80.0F},    8.5F,  11.0F},
    Mountain{{26.0F, 98.0F},   19.0F, 22.0F},
    Mountain{{-16.0F, 112.0F}, 17.0F, 17.0F},
};

float heightOfLand(glm::vec2 place)
{
    const glm::ivec2 period(8, 8);
    float massif = 0.0F;
    for (const Mountain& mountain : kMountains) {
        const glm::vec2 way = (place - mountain.place) / mountain.radius;
        massif += mountain.height * exponential(-1.6F * glm::dot(way, way));
    }
    const float ridges = ridgedNoise(place / 11.0F + 3.3F, period, 5, 1);
    const float hills = fractalNoise(place / 7.0F + 1.7F, period, 5, 11);
    const float land = massif * (0.3F + 0.9F * ridges) + 2.3F * hills - 0.62F;
    if (land > 0.0F) {
        return land;
    }
    // The lake has worn its bed smooth.
    const float bed = 1.8F * fractalNoise(place / 7.0F + 1.7F, period, 2, 11) - 0.75F;
    return std::min(glm::mix(land, bed, softStep(0.0F, -0.35F, land)), -0.001F);
}

float distanceOf(int step)
{
    return kNearest * power(kStepGrowth, static_cast<float>(step));
}

// The heights on every ray that a column of pixels looks along, nearest first. Each second ray is
// taken from its neighbours.
GreyPicture raysOverLand()
{
    GreyPicture coarse(kWidth, kSteps);
    coarse.fill([](int x, int step) {
        const float screenX = static_cast<float>(kFiner * x) * kScreenPerPixel.x;
        return heightOfLand(groundAt(screenX, distanceOf(step)));
    });
    GreyPicture heights(kFineWidth, kSteps);
    heights.fill([&](int x, int step) {
        const int left = x / kFiner;
        const int right = std::min((x + 1) / kFiner, kWidth - 1);
        return 0.5F * (coarse.at(left, step) + coarse.at(right, step));
    });
    return heights;
}

// The land's normal, from the heights beside it and before and behind it on neighbouring rays.
glm::vec3 normalOfLand(const GreyPicture& rays, int x, int step)
{
    const int left = std::max(x - 1, 0);
    const int right = std::min(x + 1, kFineWidth - 1);
    const int before = std::max(step - 1, 0);
    const int behind = std::min(step + 1, kSteps - 1);
    const float distance = distanceOf(step);
    const float across = distance / kFocalLength * kScreenPerPixel.x;
    const float slopeAcross =
        (rays.at(right, step) - rays.at(left, step)) / (across * static_cast<float>(right - left));
    const float along = distanceOf(behind) - distanceOf(before);
    const float aside = (static_cast<float>(x) * kScreenPerPixel.x - kAhead) / kFocalLength;
    const float slopeAlong =
        (rays.at(x, behind) - rays.at(x, before)) / along - slopeAcross * aside;
    return glm::normalize(glm::vec3(-slopeAcross, 1.0F, -slopeAlong));
}

// A step into the distance, on the ray of a column of pixels.
struct Step {
    float distance;
    float height; // of the land
    float row;    // of the picture, on which its surface is seen
};

Step stepOf(const GreyPicture& rays, int x, int step)
{
    const float distance = distanceOf(step);
    const float height = rays.at(x, step);
    const float surface = std::max(height, 0.0F);
    const float screenY = kHorizon - (surface - kEyeHeight) / distance * kFocalLength;
    return {distance, height, screenY / kScreenPerPixel.y};
}

// What row y shows of the surface between two steps, which is taken to be even there.
Sight sightBetween(const Step& before, const Step& here, int y, glm::vec3 normal)
{
    const float way =
        glm::clamp((before.row - static_cast<float>(y)) / (before.row - here.row), 0.0F, 1.0F);
    const float distance = glm::mix(before.distance, here.distance, way);
    const float screenY = static_cast<float>(y) * kScreenPerPixel.y;
    const float seen = (kHorizon - screenY) * distance / kFocalLength + kEyeHeight;
    const float bed = glm::mix(before.height, here.height, way);
    return {distance, here.height > 0.0F ? std::max(seen, 0.001F) : std::min(bed, 0.0F), normal};
}

// Draws a column from near to far; what lies lower than something nearer is hidden.
void lookAlong(const GreyPicture& rays, int x, Sights& sights)
{
    auto highest = static_cast<float>(kFineHeight); // the row that is already hidden
    Step before = stepOf(rays, x, 0);
    before.row = highest;
    for (int i = 0; i < kSteps; ++i) {
        const Step here = stepOf(rays, x, i);
        if (here.row < highest) {
            const glm::vec3 normal = normalOfLand(rays, x, i);
            const int first = std::max(0, static_cast<int>(std::ceil(here.row)));
            const int last = static_cast<int>(std::ceil(highest)) - 1;
            for (int y = first; y <= last; ++y) {
                sights.at(x, y) = sightBetween(before, here, y, normal);
            }
            highest = here.row;
        }
        before = here;
    }
}

} // namespace

glm::vec2 groundAt(float screenX, float distance)
{
    return {(screenX - kAhead) / kFocalLength * distance, distance};
}

Sights lookOverLand()
{
    const GreyPicture rays = raysOverLand();
    Sights sights(kFineWidth, kFineHeight, Sight{});
    for (int x = 0; x < kFineWidth; ++x) {
        lookAlong(rays, x, sights);
    }
    return sights;
}

} // namespace landscape
