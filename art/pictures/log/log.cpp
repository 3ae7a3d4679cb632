// A dark cut through a strange log that has turned to stone: growth rings around two hearts and
// three knots that all grow into each other, slate, slightly blue, with the sheen of its fibres;
// broken and healed along veins of quartz. It tiles in both directions.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/log/growth.h"
#include "art/pictures/log/veins.h"

#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <vector>

namespace wood {

namespace {

// The view is wider than high, and so are its texels.
constexpr int kWidth = 1024;
constexpr int kHeight = 512;
constexpr glm::vec2 kPixelsPerTexel = kScreen / glm::vec2(kWidth, kHeight);
// The tile's corner, which the warp pins to the screen's. So the cut follows no ring, and broad
// years lie where the pictures over this one are.
constexpr glm::vec2 kCorner(292.5F, 59.5F);

constexpr int kRays = 60; // around a heart
constexpr int kSheenBlur = 5;

constexpr float kPeak = 0.62F; // of the picture's brightness

// Slate. Its darkest places still carry the light that scenes multiply by them.
const std::array kStone = {glm::vec3(0.071F, 0.083F, 0.100F), glm::vec3(0.115F, 0.133F, 0.157F),
                           glm::vec3(0.176F, 0.203F, 0.236F), glm::vec3(0.34F, 0.39F, 0.44F)};
const glm::vec3 kQuartz(0.43F, 0.49F, 0.55F);
const glm::vec3 kKnotTint(0.84F, 0.88F, 0.94F);

// Bends the wood: slow swellings, and a tremble of the rings.
glm::vec2 bent(glm::vec2 place)
{
    const glm::ivec2 slow(5, 2);
    const glm::ivec2 fine(18, 8);
    const glm::vec2 swelling(fractalNoise(noisePlace(place, slow), slow, 2, 11),
                             fractalNoise(noisePlace(place, slow), slow, 2, 21));
    const glm::vec2 tremble(fractalNoise(noisePlace(place, fine), fine, 2, 31),
                            fractalNoise(noisePlace(place, fine), fine, 2, 41));
    return place + 46.0F * swelling + 2.4F * tremble;
}

// What the light falls on.
struct Stone {
    GreyPicture height{kWidth, kHeight};
    GreyPicture tone{kWidth, kHeight}; // how pale
    GreyPicture age{kWidth, kHeight};  // of the wood, pixels
    GreyPicture quartz{kWidth, kHeight};
    GreyPicture knot{kWidth, kHeight};
};

// How far a place's year has come, and how pale its wood is.
struct Season {
    float late; // 0 in spring to 1 in the dark line at the year's end
    float paleness;
};

// Wood grows pale in spring and ends each year in a dark line, into which the next spring has bled.
Season seasonAt(const std::vector<Year>& years, const Year& year, float age)
{
    const Year& before = yearAt(years, year.start - 0.1F);
    const float within = (age - year.start) / year.width;
    const float spring = softStep(-0.5F, 5.0F, age - year.start); // pixels
    return {glm::mix(1.0F, softStep(0.15F, 1.0F, within), spring),
            glm::mix(before.tone, year.tone, spring)};
}

// Fractal noise over the tile.
float patches(glm::vec2 place, glm::ivec2 period, int octaves, int seed)
{
    return fractalNoise(noisePlace(place, period), period, octaves, seed);
}

void cutLog(Stone& stone)
{
    const std::vector<Year> years = growYears();
    const Ages heads = agesOfHearts();
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const glm::vec2 place = kCorner + glm::vec2(x, y) * kPixelsPerTexel;
            const Fault fault = faultAt(place);
            const Growth growth = growthAt(bent(place + fault.shift), heads);
            const Year& year = yearAt(years, growth.age);
            const auto [late, paleness] = seasonAt(years, year, growth.age);
            const float turn = angleOf(growth.fromHeart.x, growth.fromHeart.y) / kFullTurn;
            const float ray = noise({turn * kRays, growth.age * 0.03F}, {kRays, 256}, 81);
            const float blotch = patches(place, {5, 2}, 3, 91);
            const float grit = patches(place, {90, 38}, 2, 95);
            stone.age.at(x, y) = growth.age;
            stone.quartz.at(x, y) = fault.quartz;
            stone.knot.at(x, y) = growth.knot;
            stone.tone.at(x, y) = 0.44F + paleness + 0.35F * blotch + 0.09F * ray + 0.13F * grit -
                                  0.23F * late * late - 0.1F * growth.knot;
            stone.height.at(x, y) = 1.0F * late * late + 0.3F * ray + 1.6F * fault.quartz;
        }
    }
}

// How much the fibres shine, 0 to 1: those that run across the light do.
GreyPicture sheenOf(const GreyPicture& age)
{
    GreyPicture across(kWidth, kHeight);
    GreyPicture down(kWidth, kHeight);
    across.fill([&](int x, int y) {
        return (age.wrapped(x + 1, y) - age.wrapped(x - 1, y)) / (2.0F * kPixelsPerTexel.x);
    });
    down.fill([&](int x, int y) {
        return (age.wrapped(x, y + 1) - age.wrapped(x, y - 1)) / (2.0F * kPixelsPerTexel.y);
    });
    const GreyPicture softAcross = blurred(across, kSheenBlur);
    const GreyPicture softDown = blurred(down, kSheenBlur);
    const glm::vec2 light = glm::normalize(glm::vec2(0.62F, -0.78F));
    GreyPicture sheen(kWidth, kHeight);
    sheen.fill([&](int x, int y) {
        const glm::vec2 way(softAcross.at(x, y), softDown.at(x, y));
        const float along = glm::dot(way, light);
        const float share = along * along / (glm::dot(way, way) + 0.06F);
        return share * share;
    });
    return sheen;
}

// What is finer than the warped grid can show is smoothed away.
Picture softened(const Picture& picture)
{
    constexpr std::array kWeights = {0.0625F, 0.25F, 0.375F, 0.25F, 0.0625F};
    Picture across(kWidth, kHeight);
    Picture both(kWidth, kHeight);
    across.fill([&](int x, int y) {
        glm::vec4 sum(0.0F);
        for (int i = 0; i < 5; ++i) {
            sum += kWeights[static_cast<std::size_t>(i)] * picture.wrapped(x + i - 2, y);
        }
        return sum;
    });
    both.fill([&](int x, int y) {
        glm::vec4 sum(0.0F);
        for (int i = 0; i < 5; ++i) {
            sum += kWeights[static_cast<std::size_t>(i)] * across.wrapped(x, y + i - 2);
        }
        return sum;
    });
    return both;
}

Picture lightStone(const Stone& stone)
{
    const glm::vec3 toLight(-0.55F, -0.65F, 0.6F);
    const GreyPicture sheen = sheenOf(stone.age);
    Picture picture(kWidth, kHeight);
    picture.fill([&](int x, int y) {
        const glm::vec3 normal = normalAt(stone.height, x, y, 1.2F);
        const float light = matt(normal, toLight);
        const float knot = stone.knot.at(x, y);
        // The rim where the stem's wood has grown around the knot.
        const float rim = softStep(0.2F, 0.5F, knot) * softStep(0.85F, 0.55F, knot);

        const float shine = 0.46F * (sheen.at(x, y) - 0.3F);
        glm::vec3 pixel = ramp(kStone, stone.tone.at(x, y) + shine - 0.15F * rim) *
                          (0.6F + 0.65F * light) * glm::mix(glm::vec3(1.0F), kKnotTint, knot);
        pixel = glm::mix(pixel, kQuartz * (0.5F + 0.8F * light), 0.8F * stone.quartz.at(x, y));
        return glm::vec4(glm::min(pixel, glm::vec3(kPeak)), 1.0F);
    });
    return softened(picture);
}

void makeLog(const OutputFolder& folder)
{
    Stone stone;
    cutLog(stone);
    folder.write(lightStone(stone), 24, "outohalko4_tumma.tga");
}

} // namespace

} // namespace wood

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, wood::makeLog);
}
