// The column's skin: a braid carved between two borders of incised signs, in stone with metal set
// into it. The light from the left is part of the picture: the bar that shows it has none.
//
// One row is stretched over a face of the bar, so the left edge is an arris of steel and the right
// one lies in the dark. It tiles from top to bottom; left to right it is a face with two ends.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

constexpr int kSize = 256;
constexpr float kMiddle = 128.0F;

// A face is seen about half as wide as it is here; what should look round is drawn this much wider.
constexpr glm::vec2 kSqueeze(0.5F, 1.0F);

// From an end of the face inward, in pixels.
constexpr float kArris = 8.0F;       // the rounded edge
constexpr float kBorderFrom = 13.0F; // the border with the signs
constexpr float kBorderTo = 43.0F;
constexpr float kPanel = 51.0F; // the sunken panel with the braid

constexpr int kStrands = 3;
constexpr float kBraidPeriod = 128.0F;
constexpr float kBraidReach = 50.0F;
constexpr float kStrandRadius = 9.0F; // on screen
constexpr int kStrandSteps = 60;

constexpr int kSigns = 8;
constexpr float kSignHeight = static_cast<float>(kSize) / kSigns;
constexpr float kStudsAside = 67.0F;
constexpr float kStudSpacing = kBraidPeriod / 6.0F;
constexpr float kStudRadius = 3.6F; // on screen
constexpr float kPanelDepth = 17.0F;

const std::array kStone = {colour(0x070c12), colour(0x1d2c38), colour(0x46616f), colour(0x8fabb3),
                           colour(0xdde9e6)};
const glm::vec3 kSteel = colour(0x6a8691);
const std::array kMetal = {colour(0x03100f), colour(0x0c3836), colour(0x23807a), colour(0x9fe6d8)};

// Heights in pixels, and how much of a place is metal.
struct Face {
    GreyPicture height{kSize, kSize};
    GreyPicture metal{kSize, kSize};
};

// The strand of the braid that lies on top at a place.
struct Strand {
    float height = 0.0F; // 0 beside the braid
    float across = 0.0F; // 0 in its middle, 1 at its sides
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
            top = {height, across};
        }
    }
    return top;
}

// The phases of a moon, one in each square of a border: its ring, and as much of it as is lit.
float signDepth(glm::vec2 place, float middle, bool isWaning)
{
    const float square = std::floor(place.y / kSignHeight);
    glm::vec2 way(place.x - middle, place.y - (square + 0.5F) * kSignHeight);
    const float bar = softStep(1.8F, 0.6F, std::fabs(std::fabs(way.y) - kSignHeight / 2)) *
                      softStep(13.0F, 11.0F, std::fabs(way.x));
    way *= kSqueeze;
    const float radius = glm::length(way) / 6.0F;
    const float ring = softStep(0.22F, 0.1F, std::fabs(radius - 1.05F));
    const float phase = square / static_cast<float>(kSigns) * 2.0F - 1.0F; // of the shadow's way
    const float shadow = glm::length(way + glm::vec2(isWaning ? 9.0F : -9.0F, 0.0F) * phase) / 6.0F;
    const float lit = softStep(0.85F, 0.7F, radius) * softStep(0.9F, 1.1F, shadow);
    return std::max({bar, ring, lit});
}

// How high an ornament stands out, in pixels, and how much of it is metal.
struct Relief {
    float height = 0.0F;
    float metal = 0.0F;
};

// A row of metal studs on each side of the braid.
Relief studAt(glm::vec2 place)
{
    const float side = place.x < kMiddle ? -kStudsAside : kStudsAside;
    const float along = place.y / kStudSpacing;
    const glm::vec2 way(place.x - kMiddle - side,
                        (along - std::floor(along) - 0.5F) * kStudSpacing);
    const float radius = glm::length(way * kSqueeze) / kStudRadius;
    if (radius >= 1.0F) {
        return {};
    }
    return {7.0F * std::sqrt(1.0F - radius * radius), softStep(1.0F, 0.85F, radius)};
}

Relief panelAt(glm::vec2 place)
{
    const Strand strand = braidAt(place);
    if (strand.height == 0.0F) {
        return studAt(place);
    }
    // Two grooves along a strand, with metal between them.
    const float groove = softStep(0.16F, 0.04F, std::fabs(strand.across - 0.42F));
    return {strand.height - 2.6F * groove, softStep(0.34F, 0.26F, strand.across)};
}

Relief borderAt(glm::vec2 place)
{
    const float middle = (kBorderFrom + kBorderTo) / 2;
    const float depth = place.x < kMiddle ? signDepth(place, middle, false)
                                          : signDepth(place, kSize - 1 - middle, true);
    return {-5.0F * depth, depth};
}

// The face without ornaments: rounded edges, a fillet on each side of a border, a sunken panel.
float mouldingAt(float inward)
{
    return 24.0F - 4.0F * softStep(kArris, 0.0F, inward) -
           3.0F * softStep(2.2F, 0.8F, std::fabs(inward - (kBorderFrom - 2.0F))) -
           3.0F * softStep(2.2F, 0.8F, std::fabs(inward - (kBorderTo + 2.0F))) -
           kPanelDepth * softStep(kPanel - 3.0F, kPanel + 2.0F, inward);
}

// What weather has done to the stone: a rough grain and a few pits.
float weatherAt(glm::vec2 place)
{
    const glm::ivec2 grain(16, 16);
    const glm::ivec2 pits(32, 32);
    const glm::vec2 cells = place / static_cast<float>(kSize);
    const CellDistance pit = cellDistance(cells * glm::vec2(pits), pits, 1.0F, 3);
    const float size = unit(pit.number) > 0.86F ? 0.5F * unit(pit.number << 9U) : 0.0F;
    const float hole = size > 0.0F ? softStep(size, 0.0F, pit.nearest) : 0.0F;
    return 1.5F * fractalNoise(cells * glm::vec2(grain), grain, 5, 7) - 2.2F * hole;
}

void carve(Face& face)
{
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const glm::vec2 place(x, y);
            const float inward = std::min(place.x, kSize - 1 - place.x);
            Relief relief;
            if (inward > kBorderFrom && inward < kBorderTo) {
                relief = borderAt(place);
            } else if (inward > kPanel) {
                relief = panelAt(place);
            }
            face.metal.at(x, y) = relief.metal;
            face.height.at(x, y) = mouldingAt(inward) + relief.height +
                                   (1.0F - 0.8F * relief.metal) * weatherAt(place);
        }
    }
}

// What a place is made of and how the light falls on it.
struct Lighting {
    glm::vec3 normal;
    float open;  // to the air: 0 in a hollow, 1 on what stands out
    float turn;  // how far the face is turned to the light, from left to right
    float shade; // all of the light
    float metal;
};

const glm::vec3 kToLight(-0.8F, -0.45F, 0.55F);

// The stone, down which copper green has run from the metal into the hollows.
glm::vec3 stoneAt(const Lighting& light, float stain)
{
    const glm::vec3 stone = ramp(kStone, light.shade + 0.16F * stain);
    return glm::mix(stone, ramp(kMetal, light.shade), 0.6F * (1.0F - light.open) * (0.6F + stain));
}

glm::vec3 metalAt(const Lighting& light)
{
    return ramp(kMetal, 0.2F + 0.8F * light.shade) +
           kMetal[3] * (0.8F * light.turn * glossy(light.normal, kToLight, 18.0F));
}

// The two edges that make the bar look square. Where the bar leans, its rows stand off each other
// like teeth; a bright edge would show them.
glm::vec3 withEdges(glm::vec3 pixel, float x)
{
    pixel = glm::mix(pixel, kSteel, 0.85F * softStep(kArris + 2.0F, kArris - 3.0F, x));
    return pixel * (1.0F - 0.8F * softStep(kSize - 16.0F, kSize - 2.0F, x));
}

glm::vec3 pixelAt(const Lighting& light, int x, int y)
{
    const float stain = fractalNoise(glm::vec2(x, y) / 64.0F, {4, 4}, 5, 17);
    glm::vec3 pixel = glm::mix(stoneAt(light, stain), metalAt(light), light.metal);
    pixel += kStone[4] *
             (0.25F * light.turn * glossy(light.normal, kToLight, 30.0F) * (1.0F - light.metal));
    return withEdges(pixel, static_cast<float>(x));
}

Picture light(const Face& face)
{
    const GreyPicture near = blurred(face.height, 2);
    const GreyPicture around = blurred(face.height, 8);
    Picture picture(kSize, kSize);
    picture.fill([&](int x, int y) {
        const float height = face.height.at(x, y);
        const glm::vec3 normal = normalAt(face.height, x, y, 1.0F);
        const float open = softStep(-7.0F, 3.0F, height - around.at(x, y)) *
                           softStep(-3.5F, 0.5F, height - near.at(x, y));
        const float across = static_cast<float>(x) / (kSize - 1);
        const float turn = 1.12F - 0.78F * across;
        const float shade =
            (0.10F + 0.95F * matt(normal, kToLight)) * (0.25F + 0.75F * open) * turn;
        const Lighting lighting{normal, open, turn, shade, face.metal.at(x, y)};
        return glm::vec4(pixelAt(lighting, x, y), 1.0F);
    });
    return picture;
}

// The bar takes every second or third pixel of a row and leaves out those between, so what is finer
// would only flicker.
Picture softenedAcross(const Picture& picture)
{
    constexpr std::array kWeights = {1.0F, 2.0F, 3.0F, 2.0F, 1.0F};
    Picture result(kSize, kSize);
    result.fill([&](int x, int y) {
        glm::vec4 sum(0.0F);
        for (int i = 0; i < 5; ++i) {
            sum += kWeights[static_cast<std::size_t>(i)] *
                   picture.at(std::clamp(x + i - 2, 0, kSize - 1), y);
        }
        return sum / 9.0F;
    });
    return result;
}

void makeColumn(const OutputFolder& folder)
{
    Face face;
    carve(face);
    GreyPicture relief(kSize, kSize);
    relief.fill([&](int x, int y) { return face.height.at(x, y) / 40.0F; });
    folder.keepStage(relief, "column-1-relief.tga");
    folder.keepStage(face.metal, "column-2-metal.tga");
    const Picture picture = softenedAcross(light(face));
    folder.keepStage(picture, "column-3-light.tga");
    folder.write(picture, 24, "texture2.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeColumn);
}
