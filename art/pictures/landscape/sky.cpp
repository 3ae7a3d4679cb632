#include "art/pictures/landscape/sky.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/landscape/land.h"

#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace landscape {

namespace {

constexpr float kMoonRadius = 45.0F;
constexpr float kHaloRadius = 132.0F;
const glm::vec2 kJewel = glm::normalize(glm::vec2(-0.80F, -0.60F)); // from the moon's middle
const glm::vec3 kCorona = colour(0xb4d2d6);
constexpr glm::vec2 kTitleMiddle(240.0F, 120.0F); // VELMORANT over bright fog

// Moves the clouds so that a veil of them lies over the moon's lower part.
constexpr glm::vec2 kWind(42.96F, 53.68F);

// How thick the clouds are, 0 to 1. They lie on a level sheet that is seen from below, so they
// grow narrow toward the horizon; one layer of noise bends the other one.
float cloudAt(glm::vec2 screen)
{
    const glm::ivec2 period(16, 16);
    const float height = glm::max(0.0F, kHorizon - screen.y) + 26.0F;
    const glm::vec2 sheet((screen.x - kAhead) / height * 2.2F, 420.0F / height);
    const float bend = fractalNoise(sheet * 0.6F + 32.0F, period, 2, 61);
    const glm::vec2 bent = sheet * glm::vec2(1.0F, 1.7F) + glm::vec2(1.1F, 0.5F) * bend;
    return softStep(-0.22F, 0.40F, fractalNoise(bent + kWind, period, 5, 71));
}

// At both sides the sky is clear enough for a few stars.
glm::vec3 starsAt(glm::vec2 screen)
{
    constexpr float kStarCell = 17.0F;
    const CellDistance star = cellDistance(screen / kStarCell, {64, 64}, 1.0F, 103);
    const float size = unit(star.number) > 0.72F ? 0.45F + 0.5F * unit(star.number << 9U) : 0.0F;
    const float shine = softStep(size + 0.3F, 0.2F, star.nearest * kStarCell) * size;
    const float clear =
        softStep(130.0F, 200.0F, std::fabs(screen.x - kMoon.x)) * softStep(120.0F, 40.0F, screen.y);
    return 0.55F * clear * shine * kFog[4];
}

// The moon's night side: the earth's light on its plains, hardly to be seen.
glm::vec3 moonFace(glm::vec2 way)
{
    const glm::ivec2 period(32, 32);
    const glm::vec2 flat = way / kMoonRadius;
    const float facing = std::sqrt(glm::max(0.0F, 1.0F - glm::dot(flat, flat)));
    const glm::vec2 round = flat / (0.55F + 0.45F * facing); // toward the limb places crowd
    const float plains = fractalNoise(round * 1.5F + 18.65F, period, 4, 81);
    return kFog[0] * 0.75F + kFog[2] * (0.13F * softStep(-0.35F, 0.35F, plains));
}

// A streamer of the corona.
struct Streamer {
    glm::vec2 way; // its direction
    float width;   // as a share of a right angle
    float length;  // pixels, in which it fades
    float light;
};
const std::array kStreamers = {
    Streamer{glm::normalize(glm::vec2(-0.95F, -0.30F)), 0.34F, 62.0F, 0.50F},
    Streamer{glm::normalize(glm::vec2(0.90F,  0.44F)),  0.32F, 58.0F, 0.50F},
    Streamer{glm::normalize(glm::vec2(0.80F,  -0.60F)), 0.22F, 46.0F, 0.38F},
    Streamer{glm::normalize(glm::vec2(-0.70F, 0.71F)),  0.24F, 40.0F, 0.36F},
    Streamer{glm::normalize(glm::vec2(-0.15F, -0.99F)), 0.20F, 30.0F, 0.26F},
    Streamer{glm::normalize(glm::vec2(0.25F,  0.97F)),  0.20F, 30.0F, 0.26F},
};

// The corona: a glow, streamers that narrow on their way out, and fine rays in all of it. `off` is
// how far away the moon's limb is.
float coronaAt(glm::vec2 way, float off)
{
    const glm::ivec2 period(90, 64);
    const glm::vec2 out = way / glm::max(1.0F, glm::length(way));
    float light = 0.50F * exponential(-off / 7.0F) + 0.27F * exponential(-off / 34.0F);
    for (const Streamer& streamer : kStreamers) {
        const float aside = (1.0F - glm::dot(out, streamer.way)) /
                            (streamer.width * streamer.width * (0.35F + 6.0F / (off + 9.0F)));
        light += streamer.light * exponential(-aside) * exponential(-off / streamer.length);
    }
    const float turn = angleOf(way.x, way.y) / kFullTurn;
    const float rays = fractalNoise({turn * 90.0F, 0.012F * off}, period, 2, 95);
    return light * (1.0F + 0.55F * rays * softStep(0.0F, 14.0F, off));
}

// The sun's last light, over the moon's edge: a ring, and where the edge is lowest, a jewel.
float ringAt(glm::vec2 way, float away)
{
    const float off = (away - kMoonRadius - 0.6F) / 1.15F;
    const glm::vec2 out = way / glm::max(1.0F, away);
    const float toJewel = 1.0F - glm::dot(out, kJewel);
    const float ring = exponential(-off * off) * (0.34F + 0.9F * exponential(-toJewel / 0.16F));
    const float fromJewel = glm::length(way - (kMoonRadius + 0.8F) * kJewel);
    return ring + 1.3F * exponential(-fromJewel * fromJewel / 14.0F) +
           0.5F * exponential(-fromJewel / 11.0F);
}

// Clear air is dark above and pale at the horizon. `height` is 1 at the top, 0 at the horizon.
glm::vec3 clearAir(float air, float height)
{
    return ramp(kFog, 0.95F * air * exponential(-3.0F * height) +
                          0.15F * exponential(-5.0F * height) + 0.05F);
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
    const float aside = (screen.x - kMoon.x) / (screen.x < kMoon.x ? 105.0F : 115.0F);
    return 0.19F + 0.81F * exponential(-aside * aside);
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

    const float off = glm::max(0.0F, away - kMoonRadius);
    const float disc = softStep(kMoonRadius + 0.7F, kMoonRadius - 0.7F, away);
    sky += kCorona * (coronaAt(way, off) * (1.0F - 0.45F * cloud));
    sky = glm::mix(sky, litCloud(cloud, air, height, off),
                   glm::clamp(1.05F * cloud - 0.08F, 0.0F, 0.86F) * softStep(-4.0F, 60.0F, off));
    sky = glm::mix(sky, moonFace(way), disc) + kMoonColour * ringAt(way, away);
    sky += starsAt(screen) * (1.0F - 0.7F * cloud) * (1.0F - disc);
    return sky + kFog[3] * haloAt(screen, away);
}

} // namespace landscape
