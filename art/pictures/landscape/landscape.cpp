// A still, cold land: mountains drawn in contour lines stand in layers of fog behind a lake,
// under a full moon. The left is calm and dark for type, the right dark for the column.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/landscape/land.h"
#include "art/pictures/landscape/sky.h"

#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace landscape {

namespace {

constexpr float kContourInterval = 0.3F; // of the land's finest contours
constexpr float kTilt = 0.36F;           // of the sheets they are counted from, far away
constexpr float kTiltFrom = 14.0F;       // this distance
constexpr int kContourLevels = 4;        // each with twice the interval of the one before
constexpr float kBedInterval = 0.16F;    // of the contours of the lake's bed

const std::array kLand = {colour(0x05090d), colour(0x12212b), colour(0x2b4a57), colour(0x5f8792)};
const glm::vec3 kLine = colour(0x9fd6d2);

bool isLand(const Sight& sight)
{
    return sight.distance > 0.0F && sight.height > 0.0F;
}

bool isLake(const Sight& sight)
{
    return sight.distance > 0.0F && sight.height <= 0.0F;
}

glm::vec2 screenAt(int x, int y)
{
    return glm::vec2(x, y) * kScreenPerPixel;
}

// What the contours count: the depth of the lake's bed, and on land the height over sheets that are
// a little wavy and rise with the distance, so that the lines bend around the mountains as if these
// were seen from above.
float levelAt(const Sight& sight, glm::vec2 screen)
{
    if (!isLand(sight)) {
        return sight.height;
    }
    const float behind = glm::max(0.0F, sight.distance - kTiltFrom);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float wave = noise(ground / 6.0F + 32.0F, {64, 64}, 21);
    return sight.height - kTilt * behind * behind / sight.distance - 0.6F * wave;
}

// The land's contours keep about the same distance on screen: the farther away, the fewer of them.
// Those that many others stand between are the brighter ones.
float contourOfLand(float level, float change, float distance)
{
    float brightest = 0.0F;
    float interval = kContourInterval;
    for (int i = 0; i < kContourLevels; ++i) {
        const float spacing = interval / distance * kFocalLength; // on an upright wall
        const float line = contour(level, interval, change);
        brightest = glm::max(brightest, line * softStep(1.5F, 12.0F, spacing));
        interval *= 2.0F;
    }
    return brightest;
}

// The contours of the land and of the lake's bed, 0 to 1.
GreyPicture contoursOf(const Sights& sights)
{
    GreyPicture levels(kFineWidth, kFineHeight);
    levels.fill([&](int x, int y) { return levelAt(sights.at(x, y), screenAt(x, y)); });
    GreyPicture contours(kFineWidth, kFineHeight);
    contours.fill([&](int x, int y) {
        const Sight& sight = sights.at(x, y);
        const glm::vec2 twice(levels.wrapped(x + 1, y) - levels.wrapped(x - 1, y),
                              levels.wrapped(x, y + 1) - levels.wrapped(x, y - 1));
        const float change = glm::length(twice / (2.0F * kScreenPerPixel)); // per screen pixel
        if (isLand(sight)) {
            return contourOfLand(levels.at(x, y), change, sight.distance);
        }
        return isLake(sight) ? contour(levels.at(x, y), kBedInterval, change) : 0.0F;
    });
    return contours;
}

// The land in clear air, by moonlight.
glm::vec3 bareLandAt(const Sight& sight, glm::vec2 screen)
{
    const float light =
        glm::max(0.0F, glm::dot(sight.normal, glm::normalize(glm::vec3(-0.85F, 0.4F, -0.05F))));
    return ramp(kLand, 0.02F + 1.0F * light * (0.25F + 0.75F * airlight(screen)));
}

// How much fog there is: thin in the distance, thick on the ground, its upper side in slow waves.
float fogAt(const Sight& sight, glm::vec2 screen, float far)
{
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float waves = fractalNoise(ground / 15.0F + 32.0F, period, 3, 31);
    const float depth = glm::max(0.2F, 2.4F + 3.8F * waves);
    const float low =
        exponential(-sight.height / depth) * (1 - exponential(-sight.distance / 22.0F));
    // Banks of it float in front of what is far away, others in front of each mountain.
    const glm::vec2 drift(screen.x / 190.0F + sight.distance / 9.0F, screen.y / 11.0F);
    const float bank = softStep(0.0F, 0.45F, fractalNoise(drift, period, 3, 51)) *
                       softStep(20.0F, 60.0F, sight.distance) *
                       softStep(kHorizon - 75.0F, kHorizon - 10.0F, screen.y);
    return glm::min(0.97F, far + 0.9F * low * (1 - far) + 0.55F * bank);
}

glm::vec3 landAt(const Sight& sight, float contour, glm::vec2 screen)
{
    const float far = 1.0F - exponential(-sight.distance / 95.0F);
    const float fog = fogAt(sight, screen, far);
    const glm::vec3 pixel = glm::mix(bareLandAt(sight, screen),
                                     ramp(kFog, airlight(screen) * (0.44F + 0.55F * far)), fog);

    // The contours shine of their own; the fog only dims them.
    return pixel + kLine * (contour * (1.0F - 0.88F * fog) * (0.17F + 0.55F * airlight(screen)));
}

// The sky and the land, upside down on the water. `below` the horizon, in the view's pixels.
glm::vec3 mirroredOn(const Picture& dry, glm::vec2 screen, float below, float ripple)
{
    const float y = (kHorizon - below * (1.0F + 0.25F * ripple)) / kScreenPerPixel.y;
    const float x = screen.x / kScreenPerPixel.x;
    const float grazing = glm::clamp(1.0F - below / 95.0F, 0.0F, 1.0F);
    return glm::vec3(dry.sample(x, glm::max(0.0F, y))) * (0.25F + 0.55F * grazing);
}

// Where the water is far away, there is mist on it.
float mistOn(glm::vec2 screen, float below)
{
    const glm::vec2 drift(screen.x / 90.0F + 16.0F, screen.y / 9.0F);
    const float mist =
        exponential(-below / 16.0F) * (0.55F + 0.8F * fractalNoise(drift, {64, 64}, 3, 45));
    return glm::clamp(mist, 0.0F, 0.8F);
}

// The lake: a mirror over its bed's contours, with the moon's road on its ripples.
glm::vec3 lakeAt(const Sight& sight, float contour, const Picture& dry, glm::vec2 screen)
{
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float ripple = fractalNoise(ground * glm::vec2(0.9F, 5.0F) + 32.0F, period, 3, 41);
    const float below = screen.y - kHorizon;
    glm::vec3 pixel = mirroredOn(dry, screen, below, ripple) + kLand[1] * 0.25F;
    pixel += kLine * (contour * (0.04F + 0.38F * airlight(screen)));

    const float aside = (screen.x - kMoon.x) / (7.0F + 0.30F * below);
    const float glint = softStep(0.10F, 0.45F, ripple + 0.25F * noise(ground * 3.0F, period, 43));
    pixel += kMoonColour * (0.40F * glint * exponential(-aside * aside));
    return glm::mix(pixel, ramp(kFog, 0.62F * airlight(screen)), mistOn(screen, below));
}

// How far away the land is, and all contours in clear air.
void keepLand(const Sights& sights, const GreyPicture& contours, const OutputFolder& folder)
{
    GreyPicture distances(kFineWidth, kFineHeight);
    Picture bare(kFineWidth, kFineHeight);
    distances.fill([&](int x, int y) {
        const float distance = sights.at(x, y).distance;
        return distance > 0.0F ? exponential(-distance / 40.0F) : 0.0F;
    });
    bare.fill([&](int x, int y) {
        const Sight& sight = sights.at(x, y);
        const glm::vec3 land = isLand(sight) ? bareLandAt(sight, screenAt(x, y)) : glm::vec3(0.0F);
        return glm::vec4(land + 0.7F * contours.at(x, y) * kLine, 1.0F);
    });
    folder.keepStage(distances.shrunk(kFiner), "landscape-1-distance.tga");
    folder.keepStage(bare.shrunk(kFiner), "landscape-2-contours.tga");
}

// Land and sky; the lake is left to what is mirrored in it.
Picture drawDry(const Sights& sights, const GreyPicture& contours)
{
    Picture dry(kFineWidth, kFineHeight);
    dry.fill([&](int x, int y) {
        const Sight& sight = sights.at(x, y);
        const glm::vec2 screen = screenAt(x, y);
        const glm::vec3 pixel =
            isLand(sight) ? landAt(sight, contours.at(x, y), screen) : skyAt(screen);
        return glm::vec4(pixel * hush(screen), 1.0F);
    });
    return dry;
}

void makeLandscape(const OutputFolder& folder)
{
    const Sights sights = lookOverLand();
    const GreyPicture contours = contoursOf(sights);
    keepLand(sights, contours, folder);
    const Picture dry = drawDry(sights, contours);
    Picture fine = dry;
    fine.fill([&](int x, int y) {
        const Sight& sight = sights.at(x, y);
        return isLake(sight)
                   ? glm::vec4(lakeAt(sight, contours.at(x, y), dry, screenAt(x, y)), 1.0F)
                   : dry.at(x, y);
    });
    const Picture picture = fine.shrunk(kFiner);
    folder.keepStage(picture, "landscape-3-moonlight.tga");
    folder.write(picture, 24, "tokapart_tausta.tga");
}

} // namespace

} // namespace landscape

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, landscape::makeLandscape);
}
