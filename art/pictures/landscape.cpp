// A still, cold land: mountains engraved with contour lines stand in layers of fog behind a lake,
// under a pale low sun. The left is calm and dark for type, the right dark for the column.
//
// The land is a height field, drawn column by column from near to far.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 512;
constexpr int kFiner = 2; // drawn this much larger, then averaged
constexpr int kFineWidth = kWidth * kFiner;
constexpr int kFineHeight = kHeight * kFiner;

// The picture is shown over 640 x 272 pixels; angles and places on screen are in these.
constexpr glm::vec2 kScreen(640.0F, 272.0F);
constexpr glm::vec2 kScreenPerPixel = kScreen / glm::vec2(kFineWidth, kFineHeight);
constexpr float kFocalLength = 430.0F;
constexpr float kHorizon = 178.0F;
constexpr float kEyeHeight = 3.4F; // over the lake, which is at height 0

constexpr int kSteps = 600; // into the distance
constexpr float kNearest = 3.0F;
constexpr float kStepGrowth = 1.0062F;

constexpr float kContourInterval = 0.3F;
constexpr float kBedInterval = 0.16F; // of the contours of the lake's bed
constexpr glm::vec2 kSun(287.0F, 62.0F);
constexpr float kSunRadius = 27.0F;

const std::array kLand = {colour(0x05090d), colour(0x12212b), colour(0x2b4a57), colour(0x5f8792)};
const std::array kFog = {colour(0x0a1118), colour(0x16242f), colour(0x35525f), colour(0x86a9b0),
                         colour(0xc9dcda)};
const glm::vec3 kLine = colour(0x9fd6d2);
const glm::vec3 kSunColour = colour(0xe9e8da);

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

// The place on the ground that is seen at a distance in a column of the screen.
glm::vec2 groundAt(float screenX, float distance)
{
    return {(screenX - kScreen.x / 2) / kFocalLength * distance, distance};
}

float distanceOf(int step)
{
    return kNearest * power(kStepGrowth, static_cast<float>(step));
}

// What a pixel shows of the land.
struct Sight {
    float distance = 0.0F; // 0 for the sky
    float height = 0.0F;
    glm::vec3 normal{0.0F, 1.0F, 0.0F}; // right, up, into the distance
};
using Sights = Raster<Sight>;

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
    const float aside = (static_cast<float>(x) * kScreenPerPixel.x - kScreen.x / 2) / kFocalLength;
    const float slopeAlong =
        (rays.at(x, behind) - rays.at(x, before)) / along - slopeAcross * aside;
    return glm::normalize(glm::vec3(-slopeAcross, 1.0F, -slopeAlong));
}

Sights lookOverLand()
{
    const GreyPicture rays = raysOverLand();
    Sights sights(kFineWidth, kFineHeight, Sight{});
    for (int x = 0; x < kFineWidth; ++x) {
        auto highest = static_cast<float>(kFineHeight); // the row that is already hidden
        for (int step = 0; step < kSteps; ++step) {
            const float distance = distanceOf(step);
            const float height = rays.at(x, step);
            const float surface = std::max(height, 0.0F);
            const float row =
                (kHorizon - (surface - kEyeHeight) / distance * kFocalLength) / kScreenPerPixel.y;
            if (row >= highest) {
                continue;
            }
            const glm::vec3 normal = normalOfLand(rays, x, step);
            const int first = std::max(0, static_cast<int>(std::ceil(row)));
            const int last = static_cast<int>(std::ceil(highest)) - 1;
            for (int y = first; y <= last; ++y) {
                // Within a step the surface is taken to stand upright.
                const float screenY = static_cast<float>(y) * kScreenPerPixel.y;
                const float seen = (kHorizon - screenY) * distance / kFocalLength + kEyeHeight;
                sights.at(x, y) = {distance, height > 0.0F ? std::max(seen, 0.001F) : height,
                                   normal};
            }
            highest = row;
        }
    }
    return sights;
}

// How much light hangs in the air over a place on screen: near the sun, and hardly at the sides.
float airlight(glm::vec2 screen)
{
    const float aside = (screen.x - kSun.x) / (screen.x < kSun.x ? 95.0F : 130.0F);
    return 0.16F + 0.84F * exponential(-aside * aside);
}

glm::vec3 skyAt(glm::vec2 screen)
{
    const glm::ivec2 period(32, 32);
    const float strata = fractalNoise(screen / glm::vec2(160.0F, 6.5F), period, 4, 21);
    const float height = glm::max(0.0F, (kHorizon - screen.y) / kHorizon);
    const float fromSun = glm::distance(screen, kSun);
    const float glow = exponential(-fromSun / 80.0F);
    const float light = airlight(screen) * (0.85F * exponential(-2.3F * height)) + 0.3F * glow;
    glm::vec3 pixel = ramp(kFog, light * (0.86F + 0.5F * strata));

    // The sun, veiled by the strata, and rings around it like those of a cut tree.
    const float disc = softStep(kSunRadius + 0.8F, kSunRadius - 0.8F, fromSun);
    pixel =
        glm::mix(pixel, kSunColour, disc * glm::clamp(0.72F + 0.5F * strata, 0.0F, 1.0F) * 0.8F);
    const float ring = (fromSun - kSunRadius) / 11.0F;
    const float offRing = std::fabs(ring - std::floor(ring + 0.5F)) * 11.0F;
    const float line = softStep(0.9F, 0.2F, offRing) * softStep(0.5F, 0.8F, ring);
    return pixel + kLine * (0.10F * line * exponential(-0.16F * ring));
}

// 1 on the lines where a value passes a multiple of the interval, about one screen pixel wide.
// `change` is the value's change from one screen pixel to the next; crowded lines fade away.
float contour(float value, float interval, float change)
{
    const float lines = value / interval;
    const float off = std::fabs(lines - std::floor(lines + 0.5F)) * interval;
    const float pixels = off / glm::max(change, 1e-5F);
    return softStep(0.95F, 0.25F, pixels) * softStep(2.0F, 6.0F, interval / change);
}

float changeOfHeight(const Sights& sights, int x, int y)
{
    const auto height = [&](int atX, int atY) {
        return sights.at(std::clamp(atX, 0, kFineWidth - 1), std::clamp(atY, 0, kFineHeight - 1))
            .height;
    };
    const glm::vec2 change(height(x + 1, y) - height(x - 1, y),
                           height(x, y + 1) - height(x, y - 1));
    return glm::length(change / (2.0F * kScreenPerPixel));
}

glm::vec3 landAt(const Sights& sights, int x, int y, glm::vec2 screen)
{
    const Sight& sight = sights.at(x, y);
    const float change = changeOfHeight(sights, x, y);
    const float light =
        glm::max(0.0F, glm::dot(sight.normal, glm::normalize(glm::vec3(-0.85F, 0.4F, -0.05F))));
    const float air = airlight(screen);
    glm::vec3 pixel = ramp(kLand, 0.02F + 1.0F * light * (0.25F + 0.75F * air));

    const bool isIndex = std::fmod(std::floor(sight.height / kContourInterval + 0.5F), 5.0F) < 0.5F;
    const float line = contour(sight.height, kContourInterval, change);
    pixel += kLine * (line * (isIndex ? 0.75F : 0.36F) * (0.25F + 0.75F * air) *
                      softStep(0.15F, 0.85F, sight.normal.y));

    // Fog: thin in the distance, thick on the ground, its upper side in slow waves.
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float waves = fractalNoise(ground / 15.0F + 32.0F, period, 3, 31);
    const float depth = glm::max(0.2F, 2.4F + 3.8F * waves);
    const float low =
        exponential(-sight.height / depth) * (1 - exponential(-sight.distance / 22.0F));
    const float far = 1.0F - exponential(-sight.distance / 95.0F);
    // Banks of it float before what is far away, others before each mountain.
    const glm::vec2 drift(screen.x / 190.0F + sight.distance / 9.0F, screen.y / 11.0F);
    const float bank = softStep(0.0F, 0.45F, fractalNoise(drift, period, 3, 51)) *
                       softStep(20.0F, 60.0F, sight.distance) *
                       softStep(kHorizon - 75.0F, kHorizon - 10.0F, screen.y);
    const float fog = glm::min(0.97F, far + 0.9F * low * (1 - far) + 0.42F * bank);
    return glm::mix(pixel, ramp(kFog, air * (0.44F + 0.55F * far)), fog);
}

// The lake shows the sky and the land upside down, and its bed's contours.
glm::vec3 lakeAt(const Sights& sights, const Picture& dry, int x, int y, glm::vec2 screen)
{
    const Sight& sight = sights.at(x, y);
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float ripple = fractalNoise(ground * glm::vec2(0.9F, 5.0F) + 32.0F, period, 3, 41);
    const float below = screen.y - kHorizon;
    const float mirroredY = (kHorizon - below * (1.0F + 0.25F * ripple)) / kScreenPerPixel.y;
    const glm::vec3 mirrored(dry.sample(static_cast<float>(x), glm::max(0.0F, mirroredY)));
    const float grazing = glm::clamp(1.0F - below / 95.0F, 0.0F, 1.0F);
    glm::vec3 pixel = mirrored * (0.25F + 0.55F * grazing) + kLand[1] * 0.25F;

    const float line = contour(sight.height, kBedInterval, changeOfHeight(sights, x, y));
    pixel += kLine * (0.24F * line * airlight(screen));
    return pixel;
}

void makeLandscape(const OutputFolder& folder)
{
    const Sights sights = lookOverLand();
    const auto screenAt = [](int x, int y) { return glm::vec2(x, y) * kScreenPerPixel; };
    Picture fine(kFineWidth, kFineHeight);
    fine.fill([&](int x, int y) {
        const bool isLand = sights.at(x, y).distance > 0.0F && sights.at(x, y).height > 0.0F;
        return glm::vec4(isLand ? landAt(sights, x, y, screenAt(x, y)) : skyAt(screenAt(x, y)),
                         1.0F);
    });
    const Picture dry = fine;
    for (int y = 0; y < kFineHeight; ++y) {
        for (int x = 0; x < kFineWidth; ++x) {
            if (sights.at(x, y).distance > 0.0F && sights.at(x, y).height <= 0.0F) {
                fine.at(x, y) = glm::vec4(lakeAt(sights, dry, x, y, screenAt(x, y)), 1.0F);
            }
        }
    }
    Picture picture(kWidth, kHeight);
    picture.fill([&](int x, int y) {
        return 0.25F * (fine.at(2 * x, 2 * y) + fine.at(2 * x + 1, 2 * y) +
                        fine.at(2 * x, 2 * y + 1) + fine.at(2 * x + 1, 2 * y + 1));
    });
    folder.write(picture, 24, "tokapart_tausta.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLandscape);
}
