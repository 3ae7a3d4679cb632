// A still, cold land: mountains with an edge of light stand in layers of fog behind a lake, under
// an eclipse; contour lines run over what is near. The left is calm and dark for type, with a dead
// tree and reeds at its end; the right is dark for the column.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"
#include "art/pictures/landscape/land.h"
#include "art/pictures/landscape/sky.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace landscape {

namespace {

constexpr float kContourInterval = 0.3F; // of the land's finest contours
constexpr float kTilt = 0.36F;           // of the sheets they are counted from, far away
constexpr float kTiltFrom = 14.0F;       // this distance
constexpr int kContourLevels = 4;        // each with twice the interval of the one before
constexpr float kBedInterval = 0.16F;    // of the contours of the lake's bed
constexpr float kRimWidth = 2.2F;        // of the light along a ridge, on the screen
constexpr int kRimSteps = 6;
constexpr unsigned kShoreSeed = 22;
constexpr float kTreeLean = 0.2F; // radians

const std::array kLand = {colour(0x05090d), colour(0x12212b), colour(0x2b4a57), colour(0x5f8792)};
const glm::vec3 kLine = colour(0x9fd6d2);
const glm::vec3 kRim = colour(0xbfd8d6);

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

// The direction in which the eclipse is seen from a place.
glm::vec2 towardMoon(glm::vec2 screen)
{
    return glm::normalize(kMoon - screen);
}

// How much of the corona's light a place gets: less and less of it to the sides.
float coronaLight(glm::vec2 screen)
{
    const float aside = (screen.x - kMoon.x) / 230.0F;
    return 0.3F + 0.7F * exponential(-aside * aside);
}

// The land in clear air. The corona stands behind it and lights what is turned to it.
glm::vec3 bareLandAt(const Sight& sight, glm::vec2 screen)
{
    const glm::vec3 toLight((kMoon.x - screen.x) / 190.0F, 0.55F, 0.35F);
    const float light = glm::max(0.0F, glm::dot(sight.normal, glm::normalize(toLight)));
    return ramp(kLand, 0.02F + 0.85F * light * light * coronaLight(screen));
}

// The edge of light along a ridge: where, on the way to the moon, the land ends or goes on farther
// behind. 0 to 1.
float rimAt(const Sights& sights, int x, int y)
{
    const Sight& here = sights.at(x, y);
    const glm::vec2 way = towardMoon(screenAt(x, y)) / kScreenPerPixel;
    float rim = 0.0F;
    for (int i = 1; i <= kRimSteps; ++i) {
        const float off = kRimWidth * static_cast<float>(i) / kRimSteps; // on the screen
        const int besideX =
            std::clamp(x + static_cast<int>(std::lround(off * way.x)), 0, kFineWidth - 1);
        const int besideY =
            std::clamp(y + static_cast<int>(std::lround(off * way.y)), 0, kFineHeight - 1);
        const Sight& beside = sights.at(besideX, besideY);
        const float gap = beside.distance > 0.0F ? beside.distance / here.distance - 1.0F : 1.0F;
        rim = std::max(rim, softStep(0.05F, 0.3F, gap) * (1.0F - (off - 0.3F) / kRimWidth));
    }
    return rim;
}

// How much fog there is: thin in the distance, thick on the ground, its upper side in slow waves.
float fogAt(const Sight& sight, glm::vec2 screen, float far)
{
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float waves = fractalNoise(ground / 15.0F + 32.0F, period, 3, 31);
    const float depth = glm::max(0.2F, 2.4F + 3.8F * waves);
    const float low =
        exponential(-sight.height / depth) * (1 - exponential(-sight.distance / 28.0F));
    // Banks of it float in front of what is far away, others in front of each mountain.
    const glm::vec2 drift(screen.x / 190.0F + sight.distance / 9.0F, screen.y / 17.0F);
    const float bank = softStep(-0.1F, 0.6F, fractalNoise(drift, period, 3, 51)) *
                       softStep(20.0F, 60.0F, sight.distance) *
                       softStep(kHorizon - 75.0F, kHorizon - 10.0F, screen.y);
    return glm::min(0.97F, far + 0.9F * low * (1 - far) + 0.55F * bank);
}

// The contours belong to what is near and low: distance, height and fog put them out.
float contourLight(const Sight& sight, float fog)
{
    const float clear = 1.0F - fog;
    return exponential(-sight.distance / 30.0F) * exponential(-sight.height / 2.0F) * clear * clear;
}

// How much of the left a place is in, where the mist is thick.
float leftness(glm::vec2 screen)
{
    return softStep(290.0F, 60.0F, screen.x);
}

// Fog far away is pale, and what lies low at the left, so that the mountains there stand on it.
glm::vec3 fogColour(const Sight& sight, glm::vec2 screen, float far)
{
    const float low = leftness(screen) * exponential(-sight.height / 1.6F);
    return ramp(kFog, (airlight(screen) + 0.09F) * (0.36F + 0.46F * far) + 0.34F * low);
}

glm::vec3 landAt(const Sight& sight, float contour, float rim, glm::vec2 screen)
{
    const float far = 1.0F - exponential(-sight.distance / 80.0F);
    const float fog = fogAt(sight, screen, far);
    glm::vec3 pixel = glm::mix(bareLandAt(sight, screen), fogColour(sight, screen, far), fog);
    pixel += kRim * (rim * (0.15F + 0.85F * (1.0F - fog)) * 0.8F * coronaLight(screen));
    return pixel +
           kLine * (1.3F * contour * contourLight(sight, fog) * (0.23F + 0.52F * airlight(screen)));
}

// The sky and the land, upside down on the water. `below` the horizon, in the view's pixels.
glm::vec3 mirroredOn(const Picture& dry, glm::vec2 screen, float below, float ripple)
{
    const float y = (kHorizon - below * (1.0F + 0.25F * ripple)) / kScreenPerPixel.y;
    const float x = screen.x / kScreenPerPixel.x;
    const float grazing = glm::clamp(1.0F - below / 95.0F, 0.0F, 1.0F);
    return glm::vec3(dry.sample(x, glm::max(0.0F, y))) * (0.25F + 0.55F * grazing);
}

// Where the water is far away, there is mist on it, and at the left it comes nearer.
float mistOn(glm::vec2 screen, float below)
{
    const glm::vec2 drift(screen.x / 90.0F + 16.0F, screen.y / 9.0F);
    const float reach = 16.0F + 22.0F * leftness(screen);
    const float mist =
        exponential(-below / reach) * (0.55F + 0.8F * fractalNoise(drift, {64, 64}, 3, 45));
    return glm::clamp(mist, 0.0F, 0.8F);
}

// The lake: a mirror over its bed's contours, with the corona's road on its ripples.
glm::vec3 lakeAt(const Sight& sight, float contour, const Picture& dry, glm::vec2 screen)
{
    const glm::ivec2 period(64, 64);
    const glm::vec2 ground = groundAt(screen.x, sight.distance);
    const float ripple = fractalNoise(ground * glm::vec2(0.9F, 5.0F) + 32.0F, period, 3, 41);
    const float below = screen.y - kHorizon;
    glm::vec3 pixel = mirroredOn(dry, screen, below, ripple) + kLand[1] * 0.25F;
    const float shallow =
        softStep(-0.9F, -0.1F, sight.height) * exponential(-sight.distance / 14.0F);
    pixel += kLine * (contour * shallow * (0.03F + 0.30F * airlight(screen)));

    const float aside = (screen.x - kMoon.x) / (12.0F + 0.42F * below);
    const float glint = softStep(0.0F, 0.36F, ripple + 0.3F * noise(ground * 3.0F, period, 43));
    const float road = (0.12F + 1.1F * glint) * exponential(-aside * aside);
    pixel = glm::mix(pixel, ramp(kFog, 0.12F + 0.52F * airlight(screen) + 0.26F * leftness(screen)),
                     mistOn(screen, below));
    return pixel + kMoonColour * (0.9F * road * (1.0F - 0.5F * mistOn(screen, below)));
}

// A bough of the dead tree and what grows out of it, in strokes that grow thinner.
void drawBough(cairo_t* pen, Random& random, glm::vec2 from, float angle, float length, float width)
{
    constexpr int kPieces = 6;
    for (int i = 0; i < kPieces; ++i) {
        const float along = static_cast<float>(i + 1) / kPieces;
        angle += random.between(-0.2F, 0.2F) + 0.06F * (kTreeLean - angle);
        const glm::vec2 to = from + length / kPieces * glm::vec2(sine(angle), -cosine(angle));
        cairo_set_line_width(pen, width * (1.0F - 0.5F * along));
        cairo_move_to(pen, from.x, from.y);
        cairo_line_to(pen, to.x, to.y);
        cairo_stroke(pen);
        from = to;
        if (width > 0.6F && i > 0) {
            const float side = (i % 2 == 0 ? 1.0F : -1.0F) * random.between(0.45F, 0.95F);
            drawBough(pen, random, from, angle + side, length * random.between(0.36F, 0.6F),
                      0.58F * width * (1.0F - 0.4F * along));
        }
    }
}

void drawReed(cairo_t* pen, Random& random)
{
    const float x = 86.0F * power(random.next(), 1.4F) - 6.0F;
    const float height = random.between(12.0F, 38.0F) * (1.0F - 0.006F * x);
    const float bend = random.between(-7.0F, 10.0F);
    const float top = kScreen.y - height;
    cairo_move_to(pen, x - 0.6F, kScreen.y);
    cairo_curve_to(pen, x - 0.5F, top + 0.5F * height, x, top + 0.2F * height, x + bend, top);
    cairo_curve_to(pen, x + 0.7F, top + 0.2F * height, x + 0.6F, top + 0.5F * height, x + 0.7F,
                   kScreen.y);
    cairo_fill(pen);
}

// The shore that we stand on: at the left a dead tree and reeds. 1 where they are.
GreyPicture shore()
{
    VectorLayer layer(kFineWidth, kFineHeight);
    cairo_t* const pen = layer.pen();
    cairo_scale(pen, 1.0F / kScreenPerPixel.x, 1.0F / kScreenPerPixel.y);
    cairo_set_line_cap(pen, CAIRO_LINE_CAP_ROUND);
    cairo_move_to(pen, -5.0, kScreen.y);
    cairo_line_to(pen, -5.0, kScreen.y - 21.0);
    cairo_curve_to(pen, 24.0, kScreen.y - 22.0, 56.0, kScreen.y - 10.0, 96.0, kScreen.y);
    cairo_fill(pen);
    Random random(kShoreSeed);
    drawBough(pen, random, {27.0F, kScreen.y - 15.0F}, 0.15F, 88.0F, 5.4F);
    for (int i = 0; i < 46; ++i) {
        drawReed(pen, random);
    }
    return layer.coverage();
}

// What stands on our shore is black but for a breath of light at the side of the eclipse.
void setShore(Picture& picture)
{
    const GreyPicture shape = shore();
    picture.fill([&](int x, int y) {
        const float here = shape.at(x, y);
        const float beside = shape.wrapped(std::min(x + 4, kFineWidth - 1), std::max(y - 2, 0));
        const glm::vec3 pixel = kLand[0] * 0.8F + kRim * (0.1F * here * here * (1.0F - beside));
        return glm::mix(picture.at(x, y), glm::vec4(pixel, 1.0F), here);
    });
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
        const glm::vec3 pixel = isLand(sight)
                                    ? landAt(sight, contours.at(x, y), rimAt(sights, x, y), screen)
                                    : skyAt(screen);
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
    setShore(fine);
    const Picture picture = fine.shrunk(kFiner);
    folder.keepStage(picture, "landscape-3-eclipse.tga");
    folder.write(picture, 24, "tokapart_tausta.tga");
}

} // namespace

} // namespace landscape

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, landscape::makeLandscape);
}
