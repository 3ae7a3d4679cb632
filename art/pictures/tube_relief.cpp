// How far the tube's wall stands off: soft cushions of different heights that meet in creases. The
// tube takes a sample every 16 texels, so nothing here is finer than a few of these.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <glm/common.hpp>

namespace {

constexpr int kSize = 1024;
constexpr int kSeed = 3;
constexpr int kCushions = 6; // across the picture
constexpr float kJitter = 0.85F;
constexpr int kSwells = 3;         // across the picture
constexpr float kSwell = 0.30F;    // how far the cushions rise and sink together
constexpr float kBend = 0.30F;     // of the cushions' outlines, in cushions
constexpr int kCreaseRadius = 8;   // texels
constexpr float kSlimness = 1.08F; // narrows the tube as a whole

// The tube is widest where the map is highest, so a cushion's top is low and its creases are high:
// the square of the way to its middle.
float wallAt(int x, int y)
{
    const glm::vec2 across = glm::vec2(x, y) / static_cast<float>(kSize);
    const glm::ivec2 period(kSwells);
    const glm::vec2 swells = across * static_cast<float>(kSwells);
    const glm::vec2 bend(noise(swells, period, kSeed + 1), noise(swells, period, kSeed + 2));
    const CellDistance cell = cellDistance(across * static_cast<float>(kCushions) + kBend * bend,
                                           glm::ivec2(kCushions), kJitter, kSeed);
    return cell.nearest * cell.nearest + kSwell * noise(swells, period, kSeed + 3);
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
