// The column's skin: a braid carved from bone between two borders of moons, green with copper in
// its hollows; a thread of bright copper runs through one of its strands. The light from the left
// is part of the picture: the bar that shows it has none.
//
// One row is stretched over a face of the bar. It tiles from top to bottom; left to right it is a
// face with two ends, which both have the colour of a misty night: where the bar leans, its rows
// stand off each other like teeth, and an end that is bright or black would show them.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

constexpr int kSize = 256;
constexpr int kFiner = 2; // drawn this much larger, then averaged
constexpr int kFineSize = kSize * kFiner;
constexpr float kMiddle = 128.0F;

// A face is seen about half as wide as it is here; what should look round is drawn this much wider.
constexpr glm::vec2 kSqueeze(0.5F, 1.0F);

// From an end of the face inward, in pixels.
constexpr float kArris = 16.0F;      // the rounded edge
constexpr float kBorderFrom = 12.0F; // the border with the moons
constexpr float kBorderTo = 42.0F;
constexpr float kPanel = 50.0F; // the sunken panel with the braid

constexpr int kStrands = 3;
constexpr float kBraidPeriod = 128.0F;
constexpr float kBraidReach = 50.0F;
constexpr float kStrandRadius = 9.5F; // on screen
constexpr int kStrandSteps = 40;
constexpr int kThreaded = 1; // the strand with the thread

constexpr int kMoons = 8;
constexpr float kMoonSpacing = static_cast<float>(kSize) / kMoons;
constexpr float kMoonRadius = 6.6F; // on screen
constexpr float kStudsAside = 62.0F;
constexpr float kStudSpacing = kBraidPeriod / kStrands; // one in each gap of the braid
constexpr float kStudRadius = 4.6F;                     // on screen
constexpr float kPanelDepth = 17.0F;

const std::array kBone = {colour(0x070f15), colour(0x1f3640), colour(0x6d7d7b), colour(0xc0bfae),
                          colour(0xf3ebd6)};
const std::array kGreen = {colour(0x09191e), colour(0x123538), colour(0x276b69), colour(0x9ad3c4)};
const std::array kCopper = {colour(0x160e0d), colour(0x5f2e17), colour(0xbd7b42), colour(0xffe3a6)};
const glm::vec3 kNight = colour(0x263c47);

// Heights in pixels, and how much of a place is green or bright copper.
struct Face {
    GreyPicture height{kFineSize, kFineSize};
    GreyPicture green{kFineSize, kFineSize};
    GreyPicture thread{kFineSize, kFineSize};
};

// The strand of the braid that lies on top at a place.
struct Strand {
    float height = 0.0F; // 0 beside the braid
    float across = 0.0F; // 0 in its middle, 1 at its sides
    int number = 0;
};

// One strand at a place: its turn where it is nearest, and how far away it is on screen there, or
// kStrandRadius if it is farther.
struct Approach {
    float distance = kStrandRadius;
    float turn = 0.0F;
};

Approach approachOf(int strand, glm::vec2 place)
{
    Approach nearest;
    for (int i = -kStrandSteps; i <= kStrandSteps; ++i) {
        const float y = place.y + kStrandRadius * static_cast<float>(i) / kStrandSteps;
        const float turn = kFullTurn * (y / kBraidPeriod + static_cast<float>(strand) / kStrands);
        const float x = kMiddle + kBraidReach * sine(turn);
        const float distance = glm::length((place - glm::vec2(x, y)) * kSqueeze);
        if (distance < nearest.distance) {
            nearest = {distance, turn};
        }
    }
    return nearest;
}

Strand braidAt(glm::vec2 place)
{
    Strand top;
    for (int strand = 0; strand < kStrands; ++strand) {
        const auto [distance, turn] = approachOf(strand, place);
        const float across = distance / kStrandRadius;
        const float round = std::sqrt(1.0F - across * across);
        // Of each two strands that cross, one passes over the other, by turns.
        const float height = 10.0F * round + 7.0F + 6.0F * sine(2.0F * turn);
        if (distance < kStrandRadius && height > top.height) {
            top = {height, across, strand};
        }
    }
    return top;
}

// How high an ornament stands out, in pixels, and what it is made of.
struct Relief {
    float height = 0.0F;
    float green = 0.0F;
    float thread = 0.0F;
};

// The phases of a moon, one in each square of a border: a hollow, and as much of a ball in it as is
// lit.
Relief moonAt(glm::vec2 place, float middle, bool isWaning)
{
    const float square = std::floor(place.y / kMoonSpacing);
    const glm::vec2 way =
        glm::vec2(place.x - middle, place.y - (square + 0.5F) * kMoonSpacing) * kSqueeze;
    const float radius = glm::length(way) / kMoonRadius;
    const float phase = square / static_cast<float>(kMoons) * 2.0F - 1.0F; // of the shadow's way
    const glm::vec2 shadow(isWaning ? 10.0F : -10.0F, 0.0F);
    const float lit = softStep(0.92F, 0.78F, radius) *
                      softStep(0.82F, 1.12F, glm::length(way + shadow * phase) / kMoonRadius);
    const float ball = 5.0F * std::sqrt(std::max(0.0F, 1.0F - radius * radius));
    const float hollow = softStep(1.06F, 0.86F, radius);
    return {-2.5F * hollow + lit * (2.5F + ball), 0.5F * hollow * (1.0F - lit), 0.0F};
}

// A stud in each gap between the braid and its frame.
Relief studAt(glm::vec2 place)
{
    const bool isLeft = place.x < kMiddle;
    const float along = place.y / kStudSpacing + (isLeft ? 0.75F : 0.25F);
    const glm::vec2 way(place.x - kMiddle + (isLeft ? kStudsAside : -kStudsAside),
                        (along - std::floor(along) - 0.5F) * kStudSpacing);
    const float radius = glm::length(way * kSqueeze) / kStudRadius;
    if (radius >= 1.0F) {
        return {0.0F, 1.0F, 0.0F};
    }
    return {8.0F * std::sqrt(1.0F - radius * radius), softStep(0.8F, 1.0F, radius), 0.0F};
}

// A groove runs along the middle of each strand; in one of them it holds the thread.
Relief panelAt(glm::vec2 place)
{
    const Strand strand = braidAt(place);
    if (strand.height == 0.0F) {
        return studAt(place);
    }
    const float groove = softStep(0.42F, 0.18F, strand.across);
    if (strand.number != kThreaded) {
        return {strand.height - 2.6F * groove, 0.8F * groove, 0.0F};
    }
    const float round = std::max(0.0F, 1.0F - power(strand.across / 0.26F, 2.0F));
    return {strand.height - 1.6F * groove + 2.8F * std::sqrt(round), 0.0F,
            softStep(0.30F, 0.20F, strand.across)};
}

Relief borderAt(glm::vec2 place)
{
    const float middle = (kBorderFrom + kBorderTo) / 2;
    return place.x < kMiddle ? moonAt(place, middle, false)
                             : moonAt(place, kSize - 1 - middle, true);
}

// The face without ornaments: rounded edges, borders, a sunken panel with a fillet around it.
float mouldingAt(float inward)
{
    return 24.0F - 5.0F * softStep(kArris, 0.0F, inward) +
           1.4F * softStep(8.0F, 1.0F, std::fabs(inward - kPanel + 6.0F)) -
           kPanelDepth * softStep(kPanel - 5.0F, kPanel + 5.0F, inward);
}

// What weather has done to the bone: it is no longer quite even.
float weatherAt(glm::vec2 place)
{
    const glm::ivec2 period(12, 16);
    return 1.3F * fractalNoise(place / static_cast<float>(kSize) * glm::vec2(period), period, 2, 7);
}

glm::vec2 placeAt(int x, int y)
{
    return (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFiner) - 0.5F;
}

void carve(Face& face)
{
    for (int y = 0; y < kFineSize; ++y) {
        for (int x = 0; x < kFineSize; ++x) {
            const glm::vec2 place = placeAt(x, y);
            const float inward = std::min(place.x, kSize - 1 - place.x);
            Relief relief;
            if (inward > kBorderFrom && inward < kBorderTo) {
                relief = borderAt(place);
            } else if (inward > kPanel) {
                relief = panelAt(place);
            }
            face.green.at(x, y) = relief.green;
            face.thread.at(x, y) = relief.thread;
            face.height.at(x, y) =
                mouldingAt(inward) + relief.height + (1.0F - relief.thread) * weatherAt(place);
        }
    }
}

// The frame of the braid has grown dark, but for the moons on it.
float wornAt(float x, float height)
{
    const float inward = std::min(x, kSize - 1 - x);
    return inward > kPanel + 4.0F ? 1.0F : 0.84F + 0.16F * softStep(25.0F, 28.0F, height);
}

const glm::vec3 kToLight(-0.75F, -0.5F, 0.6F);

// How the light falls on a place.
struct Lighting {
    glm::vec3 normal;
    float open; // to the air: 0 in a hollow, 1 on what stands out
    float turn; // how far the face is turned to the light, from left to right
    float worn; // how bright the bone still is
};

glm::vec3 pixelAt(const Lighting& light, glm::vec2 place, float green, float thread)
{
    const float shade =
        (0.14F + 0.96F * matt(light.normal, kToLight)) * (0.2F + 0.8F * light.open) * light.turn;
    const float stain = fractalNoise(place / 64.0F, {4, 4}, 3, 17);
    const glm::vec3 bone = ramp(kBone, light.worn * shade + 0.08F * stain) +
                           kBone[4] * (0.22F * light.turn * glossy(light.normal, kToLight, 16.0F));
    const glm::vec3 dark = ramp(kGreen, 0.05F + 0.7F * shade);
    // Green has run down the bone into the hollows.
    const float run = glm::clamp(green + 0.55F * (1.0F - light.open) * (0.7F + stain), 0.0F, 1.0F);
    const glm::vec3 copper =
        ramp(kCopper, 0.12F + 0.56F * shade) +
        kCopper[3] * (0.85F * light.turn * glossy(light.normal, kToLight, 18.0F));
    return glm::mix(glm::mix(bone, dark, run), copper, thread);
}

glm::vec3 withEdges(glm::vec3 pixel, float x)
{
    const float night =
        std::max(softStep(kArris, 0.0F, x), softStep(kSize - 22.0F, kSize - 1.0F, x));
    return glm::mix(pixel, kNight, night);
}

Picture light(const Face& face)
{
    const GreyPicture smooth = blurred(face.height, 1);
    const GreyPicture near = blurred(face.height, 2 * kFiner);
    const GreyPicture around = blurred(face.height, 8 * kFiner);
    Picture picture(kFineSize, kFineSize);
    picture.fill([&](int x, int y) {
        const glm::vec2 place = placeAt(x, y);
        const float height = smooth.at(x, y);
        const glm::vec3 normal = normalAt(smooth, x, y, 0.8F * kFiner);
        const float open = softStep(-7.0F, 3.0F, height - around.at(x, y)) *
                           softStep(-3.5F, 0.5F, height - near.at(x, y));
        const float turn = 1.29F - 0.78F * place.x / (kSize - 1);
        const glm::vec3 pixel = pixelAt({normal, open, turn, wornAt(place.x, height)}, place,
                                        face.green.at(x, y), face.thread.at(x, y));
        return glm::vec4(withEdges(pixel, place.x), 1.0F);
    });
    return picture.shrunk(kFiner);
}

// The bar takes every second or third pixel of a row and leaves out those between, so what is finer
// would only flicker.
Picture softenedAcross(const Picture& picture)
{
    constexpr int kReach = 4;
    Picture result(kSize, kSize);
    result.fill([&](int x, int y) {
        glm::vec4 sum(0.0F);
        float weights = 0.0F;
        for (int i = -kReach; i <= kReach; ++i) {
            const auto weight = static_cast<float>(kReach + 1 - std::abs(i));
            sum += weight * picture.at(std::clamp(x + i, 0, kSize - 1), y);
            weights += weight;
        }
        return sum / weights;
    });
    return result;
}

void makeColumn(const OutputFolder& folder)
{
    Face face;
    carve(face);
    GreyPicture relief(kFineSize, kFineSize);
    relief.fill([&](int x, int y) { return face.height.at(x, y) / 40.0F; });
    folder.keepStage(relief.shrunk(kFiner), "column-1-relief.tga");
    folder.keepStage(face.thread.shrunk(kFiner), "column-2-thread.tga");
    const Picture picture = softenedAcross(light(face));
    folder.keepStage(picture, "column-3-light.tga");
    folder.write(picture, 24, "texture2.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeColumn);
}
