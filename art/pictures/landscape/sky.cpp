#include "art/pictures/landscape/sky.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/landscape/land.h"

#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace landscape {

namespace {

const glm::vec3 kMareColour = colour(0x7d939c);
constexpr float kMoonRadius = 25.0F;
constexpr float kHaloRadius = 96.0F;
constexpr glm::vec2 kTitleMiddle(240.0F, 120.0F); // VELMORANT over bright fog

// Moves the clouds so that a veil of them lies over the moon's lower part.
constexpr glm::vec2 kWind(42.96F, 53.68F);

// How thick the clouds are, 0 to 1. They lie on a level sheet that is seen from below, so they
// grow narrow toward the horizon; one layer of noise bends the other one.
float cloudAt(glm::vec2 screen)
{
    const glm::ivec2 period(16, 16);
    const float height = glm::max(0.0F, kHorizon - screen.y) + 26.0F;
    const glm::vec2 sheet((screen.x - kScreen.x / 2) / height * 2.2F, 420.0F / height);
    const float bend = fractalNoise(sheet * 0.6F + 32.0F, period, 2, 61);
    const glm::vec2 bent = sheet * glm::vec2(1.0F, 1.7F) + glm::vec2(1.1F, 0.5F) * bend;
    return softStep(-0.22F, 0.40F, fractalNoise(bent + kWind, period, 5, 71));
}

// Right of the moon the sky is clear: a few stars over faint lines of equal pressure, the land's
// contours once more.
glm::vec3 clearSkyAt(glm::vec2 screen)
{
    const glm::ivec2 period(64, 64);
    const auto pressure = [&](glm::vec2 place) {
        return fractalNoise(place / glm::vec2(120.0F, 64.0F) + 20.0F, period, 2, 101);
    };
    const float here = pressure(screen);
    const glm::vec2 change(pressure(screen + glm::vec2(0.5F, 0.0F)) - here,
                           pressure(screen + glm::vec2(0.0F, 0.5F)) - here);
    const float line = contour(here, 0.09F, 2.0F * glm::length(change));

    constexpr float kStarCell = 17.0F;
    const CellDistance star = cellDistance(screen / kStarCell, period, 1.0F, 103);
    const float size = unit(star.number) > 0.72F ? 0.45F + 0.5F * unit(star.number << 9U) : 0.0F;
    const float shine = softStep(size + 0.3F, 0.2F, star.nearest * kStarCell) * size;

    const float clear = softStep(390.0F, 480.0F, screen.x) * softStep(140.0F, 70.0F, screen.y);
    return clear * (0.11F * line * kFog[3] + 0.55F * shine * kFog[4]);
}

// The moon's face: dark plains, a few bright craters with rays, a darker limb.
glm::vec3 moonFace(glm::vec2 way)
{
    const glm::ivec2 period(32, 32);
    const glm::vec2 flat = way / kMoonRadius;
    const float facing = std::sqrt(glm::max(0.0F, 1.0F - glm::dot(flat, flat)));
    const glm::vec2 round = flat / (0.55F + 0.45F * facing); // toward the limb places crowd
    const float plains = fractalNoise(round * 1.5F + 18.65F, period, 2, 81);
    const float mare = softStep(-0.06F, 0.20F, plains + 0.10F * flat.x - 0.12F * flat.y);
    const float rough = fractalNoise(round * 5.0F + 8.0F, period, 4, 91);
    glm::vec3 face = glm::mix(kMoonColour, kMareColour, 0.75F * mare);
    face *= 1.0F + 0.22F * rough;
    constexpr std::array kCraters = {glm::vec2(-0.12F, 0.66F), glm::vec2(-0.42F, -0.1F),
                                     glm::vec2(0.45F, 0.25F)};
    for (const glm::vec2 crater : kCraters) {
        const glm::vec2 from = flat - crater;
        const float away = glm::length(from);
        const float rays =
            0.5F +
            0.5F * noise(glm::vec2(angleOf(from.x, from.y) * 2.2F + 16.0F, 0.5F), period, 95);
        face += kMoonColour * (0.30F * rays * exponential(-away / 0.13F));
    }
    return face * (0.57F + 0.23F * facing);
}

// Clear air is dark above and pale at the horizon. `height` is 1 at the top, 0 at the horizon.
glm::vec3 clearAir(float air, float height)
{
    return ramp(kFog, air * (0.95F * exponential(-3.0F * height)) + 0.05F);
}

// Thin cloud shines with what comes through it; thick cloud only hides. `off` is how far away the
// moon's limb is.
glm::vec3 litCloud(float cloud, float air, float height, float off)
{
    const float through = cloud * exponential(-1.9F * cloud) * 2.4F;
    const float behind =
        0.16F * air + 0.75F * exponential(-off / 26.0F) + 0.45F * exponential(-off / 95.0F);
    return ramp(kFog, 0.08F + behind * through + 0.32F * air * (1.0F - height) * (1.0F - height));
}

// The halo's ice floats in front of everything else; its inner edge is the sharp one.
float haloAt(glm::vec2 screen, float away)
{
    const float ring = (away - kHaloRadius) / (away < kHaloRadius ? 2.2F : 12.0F);
    const float ice = 0.55F + 0.9F * fractalNoise(screen / 70.0F + 16.0F, {64, 64}, 2, 97);
    return 0.075F * ice * exponential(-ring * ring);
}

} // namespace

float airlight(glm::vec2 screen)
{
    const float aside = (screen.x - kMoon.x) / (screen.x < kMoon.x ? 95.0F : 130.0F);
    return 0.16F + 0.84F * exponential(-aside * aside);
}

float hush(glm::vec2 screen)
{
    const glm::vec2 way = (screen - kTitleMiddle) / glm::vec2(90.0F, 26.0F);
    return 1.0F - 0.4F * exponential(-glm::dot(way, way));
}

float contour(float value, float interval, float change)
{
    const float off = offWhole(value / interval) * interval;
    const float pixels = off / glm::max(change, 1e-5F);
    return softStep(0.95F, 0.25F, pixels) * softStep(2.0F, 5.0F, interval / change);
}

glm::vec3 skyAt(glm::vec2 screen)
{
    const glm::vec2 way = screen - kMoon;
    const float away = glm::length(way);
    const float height = glm::max(0.0F, (kHorizon - screen.y) / kHorizon);
    const float cloud = cloudAt(screen);
    const float air = airlight(screen);
    glm::vec3 sky = clearAir(air, height);

    // The corona lies close around the moon.
    const float off = glm::max(0.0F, away - kMoonRadius);
    const float corona = 0.55F * exponential(-off / 7.0F) + 0.34F * exponential(-off / 42.0F);
    sky += kFog[3] * (0.55F * corona);

    const float disc = softStep(kMoonRadius + 0.6F, kMoonRadius - 0.6F, away);
    sky = glm::mix(sky, moonFace(way), disc);
    sky = glm::mix(sky, litCloud(cloud, air, height, off),
                   glm::clamp(1.05F * cloud - 0.08F, 0.0F, 0.86F));
    sky += clearSkyAt(screen) * (1.0F - 0.7F * cloud);
    return sky + kFog[3] * haloAt(screen, away);
}

} // namespace landscape
