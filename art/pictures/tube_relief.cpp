// How far the tube's wall stands off. Along its length it has three kinds of wall, which run into
// one another: cushions, ribs and flutes. It is narrow at the ribs and wide at the flutes, and a
// groove winds around it, here deep, there shallow. The tube takes a sample every 16 texels, and
// where two neighbours differ much the wall folds over into a ragged edge: slopes are gentle, and
// nothing here is finer than a few samples.
//
// The tube is widest where the map is highest: what bulges toward the viewer is low, and the
// creases in which the bulges meet are high.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace {

constexpr int kSize = 1024;
constexpr int kSeed = 3;

constexpr int kCushions = 4; // across the picture
constexpr float kJitter = 0.8F;
constexpr int kRibs = 4;   // from top to bottom
constexpr int kFlutes = 3; // from left to right
constexpr int kBends = 2;  // of the outlines, across the picture
constexpr float kBend = 0.045F;
constexpr float kGroove = 0.18F;   // half the groove's width; shares of the picture
constexpr int kCreaseRadius = 30;  // texels
constexpr float kSlimness = 1.34F; // narrows the tube as a whole

// A number for each place that changes smoothly, -1 to 1.
float swell(glm::vec2 place, int layer)
{
    return noise(place * static_cast<float>(kBends), glm::ivec2(kBends), kSeed + layer);
}

glm::vec2 bent(int x, int y)
{
    const glm::vec2 place = glm::vec2(x, y) / static_cast<float>(kSize);
    return place + kBend * glm::vec2(swell(place, 1), swell(place, 2));
}

// A row of bulges that meet in creases: 0 on a bulge, 1 in a crease.
float bulges(float place)
{
    const float off = 2.0F * offWhole(place);
    return off * off;
}

// How much of a kind of wall there is at a height of the picture: three kinds share it.
float share(float y, float middle)
{
    return softStep(0.30F, 0.06F, offWhole(y - middle));
}

float wallAt(int x, int y)
{
    const glm::vec2 place = bent(x, y);
    const CellDistance cell =
        cellDistance(place * static_cast<float>(kCushions), glm::ivec2(kCushions), kJitter, kSeed);
    const float cushions = 1.5F * cell.nearest * cell.nearest;
    const float ribs = 0.22F + 0.60F * bulges(place.y * kRibs);
    const float flutes = 0.4F * bulges(place.x * kFlutes + 0.3F * sine(kFullTurn * place.y));

    const float edge = place.y + 0.05F * sine(kFullTurn * place.x);
    const glm::vec3 shares(share(edge, 0.17F), share(edge, 0.50F), share(edge, 0.83F));
    return glm::dot(shares, glm::vec3(cushions, ribs, flutes)) / (shares.x + shares.y + shares.z);
}

// It winds the way in which the tube's cells are cut into triangles; the other way, light breaks
// into teeth along it.
float grooveAt(int x, int y)
{
    const glm::vec2 place = bent(x, y);
    const float depth = 0.09F + 0.11F * softStep(-0.1F, 0.5F, swell(place, 4));
    return depth * softStep(kGroove, 0.0F, offWhole(place.x + place.y));
}

float widthAt(int x, int y)
{
    const glm::vec2 place = glm::vec2(x, y) / static_cast<float>(kSize);
    return 0.15F * cosine(kFullTurn * (place.y - 0.80F)) + 0.15F * swell(place, 3);
}

// Spreads the heights over all that a texel can hold.
void stretch(GreyPicture& heights)
{
    float lowest = heights.at(0, 0);
    float highest = lowest;
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            lowest = glm::min(lowest, heights.at(x, y));
            highest = glm::max(highest, heights.at(x, y));
        }
    }
    heights.fill([&](int x, int y) { return (heights.at(x, y) - lowest) / (highest - lowest); });
}

void makeTubeRelief(const OutputFolder& folder)
{
    GreyPicture walls(kSize, kSize);
    walls.fill(wallAt);
    folder.keepStage(walls, "tube_relief-1-walls.tga");
    GreyPicture groove(kSize, kSize);
    groove.fill(grooveAt);
    folder.keepStage(groove, "tube_relief-2-groove.tga");

    GreyPicture heights(kSize, kSize);
    heights.fill(
        [&](int x, int y) { return 0.26F * walls.at(x, y) + groove.at(x, y) + widthAt(x, y); });
    heights = blurred(heights, kCreaseRadius);
    stretch(heights);
    heights.fill([&](int x, int y) { return power(heights.at(x, y), kSlimness); });
    folder.write(heights, "muljumap.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeTubeRelief);
}
