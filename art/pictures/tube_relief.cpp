// How far the tube's wall stands off. Seen along its length it has three kinds of wall, which run
// into one another: cushions, ribs and flutes; a deep groove winds around all of them. The tube
// takes a sample every 16 texels, so nothing here is finer than a few of these.
//
// The tube is widest where the map is highest: what bulges toward the viewer is low, and the
// creases in which the bulges meet are high.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <glm/common.hpp>

namespace {

constexpr int kSize = 1024;
constexpr int kSeed = 3;

constexpr int kCushions = 4; // across the picture
constexpr float kJitter = 0.8F;
constexpr int kRibs = 6;   // from top to bottom
constexpr int kFlutes = 3; // from left to right
constexpr int kBends = 3;  // of the outlines, across the picture
constexpr float kBend = 0.045F;
constexpr float kGroove = 0.10F;   // half the groove's width; shares of the picture
constexpr int kCreaseRadius = 18;  // texels
constexpr float kSlimness = 1.18F; // narrows the tube as a whole

// A row of bulges that meet in creases: 0 on a bulge, 1 in a crease.
float bulges(float place)
{
    const float off = 2.0F * offWhole(place);
    return off * off;
}

// How much of a kind of wall there is at a height of the picture: three kinds share it.
float share(float y, float middle)
{
    return softStep(0.24F, 0.11F, offWhole(y - middle));
}

float wallAt(int x, int y)
{
    const glm::vec2 place = glm::vec2(x, y) / static_cast<float>(kSize);
    const glm::ivec2 period(kBends);
    const glm::vec2 bends = place * static_cast<float>(kBends);
    const glm::vec2 bent =
        place + kBend * glm::vec2(noise(bends, period, kSeed + 1), noise(bends, period, kSeed + 2));

    const CellDistance cell =
        cellDistance(bent * static_cast<float>(kCushions), glm::ivec2(kCushions), kJitter, kSeed);
    const float cushions = 1.5F * cell.nearest * cell.nearest;
    const float ribs = 0.22F + 0.78F * bulges(bent.y * kRibs);
    const float flutes = 0.6F * bulges(bent.x * kFlutes + 0.3F * sine(kFullTurn * bent.y));

    const float edge = bent.y + 0.05F * sine(kFullTurn * bent.x);
    const glm::vec3 shares(share(edge, 0.17F), share(edge, 0.50F), share(edge, 0.83F));
    const float wall = (shares.x * cushions + shares.y * ribs + shares.z * flutes) /
                       (shares.x + shares.y + shares.z);

    const float groove = softStep(kGroove, 0.0F, offWhole(bent.x - bent.y));
    const float breath = 0.5F + 0.5F * cosine(kFullTurn * (place.y - 0.80F));
    const float swell = 0.18F * noise(bends, period, kSeed + 3);
    return 0.40F * wall + 0.14F * breath + swell + 0.30F * groove;
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
    GreyPicture heights(kSize, kSize);
    heights.fill(wallAt);
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
