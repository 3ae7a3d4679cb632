// A still, cold land: mountains engraved with contour lines stand in layers of fog behind a lake,
// under a full moon. The left is calm and dark for type, the right dark for the column.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/landscape_land.h"
#include "art/pictures/landscape_sky.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

using namespace landscape;

constexpr float kContourInterval = 0.3F;
constexpr float kBedInterval = 0.16F; // of the contours of the lake's bed

const std::array kLand = {colour(0x05090d), colour(0x12212b), colour(0x2b4a57), colour(0x5f8792)};
const glm::vec3 kLine = colour(0x9fd6d2);

// 1 on the lines where a value passes a multiple of the interval, about one screen pixel wide.
// `change` is the value's change from one screen pixel to the next; crowded lines fade away.
float contour(float value, float interval, float change)
{
    const float off = offWhole(value / interval) * interval;
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

// The land in clear air: moonlight and contour lines.
glm::vec3 bareLandAt(const Sights& sights, int x, int y, glm::vec2 screen)
{
    const Sight& sight = sights.at(x, y);
    const float change = changeOfHeight(sights, x, y);
    const float light =
        glm::max(0.0F, glm::dot(sight.normal, glm::normalize(glm::vec3(-0.85F, 0.4F, -0.05F))));
    const float air = airlight(screen);
    glm::vec3 pixel = ramp(kLand, 0.02F + 1.0F * light * (0.25F + 0.75F * air));

    const bool isIndex = std::fmod(std::floor(sight.height / kContourInterval + 0.5F), 5.0F) < 0.5F;
    const float line = contour(sight.height, kContourInterval, change);
    return pixel + kLine * (line * (isIndex ? 0.75F : 0.36F) * (0.25F + 0.75F * air) *
                            softStep(0.15F, 0.85F, sight.normal.y));
}

glm::vec3 landAt(const Sights& sights, int x, int y, glm::vec2 screen)
{
    const Sight& sight = sights.at(x, y);
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
    const float fog = glm::min(0.97F, far + 0.9F * low * (1 - far) + 0.55F * bank);
    return glm::mix(bareLandAt(sights, x, y, screen),
                    ramp(kFog, airlight(screen) * (0.44F + 0.55F * far)), fog);
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

    // The moon's road over the ripples, and mist where the water is far away.
    const float aside = (screen.x - kMoon.x) / (7.0F + 0.30F * below);
    const float glint = softStep(0.10F, 0.45F, ripple + 0.25F * noise(ground * 3.0F, period, 43));
    pixel += kMoonColour * (0.40F * glint * exponential(-aside * aside));
    const glm::vec2 drift(screen.x / 90.0F + 16.0F, screen.y / 9.0F);
    const float mist =
        exponential(-below / 16.0F) * (0.55F + 0.8F * fractalNoise(drift, period, 3, 45));
    return glm::mix(pixel, ramp(kFog, 0.62F * airlight(screen)), glm::clamp(mist, 0.0F, 0.8F));
}

glm::vec2 screenAt(int x, int y)
{
    return glm::vec2(x, y) * kScreenPerPixel;
}

// How far away the land is, and the land without air.
void keepLand(const Sights& sights, const OutputFolder& folder)
{
    GreyPicture distances(kFineWidth, kFineHeight);
    Picture bare(kFineWidth, kFineHeight);
    distances.fill([&](int x, int y) {
        const float distance = sights.at(x, y).distance;
        return distance > 0.0F ? exponential(-distance / 40.0F) : 0.0F;
    });
    bare.fill([&](int x, int y) {
        const bool isLand = sights.at(x, y).distance > 0.0F && sights.at(x, y).height > 0.0F;
        return glm::vec4(isLand ? bareLandAt(sights, x, y, screenAt(x, y)) : glm::vec3(0.0F), 1.0F);
    });
    folder.keepStage(distances.shrunk(kFiner), "landscape-1-distance.tga");
    folder.keepStage(bare.shrunk(kFiner), "landscape-2-contours.tga");
}

void makeLandscape(const OutputFolder& folder)
{
    const Sights sights = lookOverLand();
    keepLand(sights, folder);
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
    const Picture picture = fine.shrunk(kFiner);
    folder.keepStage(picture, "landscape-3-moonlight.tga");
    folder.write(picture, 24, "tokapart_tausta.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLandscape);
}
