// A dark cut through a strange log: growth rings around two hearts and three knots that all grow
// into each other, torn by radial cracks in which resin has run. It tiles in both directions.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/log/cracks.h"
#include "art/pictures/log/growth.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <vector>

namespace wood {

namespace {

constexpr int kSize = 512;
constexpr glm::vec2 kPixelsPerTexel = kScreen / static_cast<float>(kSize);
// The tile's corner, which the warp pins to the screen's. So the cut follows no ring, and broad
// years lie where the pictures over this one are.
constexpr glm::vec2 kCorner(280.0F, 59.5F);

constexpr int kRays = 90; // around a heart
constexpr int kFibres = 26;

constexpr float kPeak = 0.62F; // of the picture's brightness

// Charcoal and slate, only a little warm: what lies over the log brings each scene's colour.
const std::array kWood = {glm::vec3(0.079F, 0.067F, 0.065F), glm::vec3(0.117F, 0.096F, 0.087F),
                          glm::vec3(0.208F, 0.169F, 0.149F), glm::vec3(0.43F, 0.355F, 0.31F)};
const glm::vec3 kSlate(0.109F, 0.1F, 0.101F);
const glm::vec3 kKnotTint(0.86F, 0.79F, 0.76F);
const std::array kResin = {glm::vec3(0.056F, 0.045F, 0.045F), glm::vec3(0.075F, 0.041F, 0.038F),
                           glm::vec3(0.125F, 0.052F, 0.044F), glm::vec3(0.19F, 0.08F, 0.062F)};

// Bends the wood: slow swellings, and a fine tremble of the fibres.
glm::vec2 bent(glm::vec2 place)
{
    const glm::ivec2 slow(5, 2);
    const glm::ivec2 fine(30, 13);
    const glm::vec2 swelling(fractalNoise(noisePlace(place, slow), slow, 3, 11),
                             fractalNoise(noisePlace(place, slow), slow, 3, 21));
    const glm::vec2 tremble(fractalNoise(noisePlace(place, fine), fine, 2, 31),
                            fractalNoise(noisePlace(place, fine), fine, 2, 41));
    return place + 46.0F * swelling + 2.6F * tremble;
}

// What the light falls on.
struct Wood {
    GreyPicture height{kSize, kSize};
    GreyPicture tone{kSize, kSize};  // how pale
    GreyPicture crack{kSize, kSize}; // depth
    GreyPicture resin{kSize, kSize}; // how red it is
    GreyPicture knot{kSize, kSize};
};

// What runs through all wood: rays out from the hearts, and the grain along the rings. -1 to 1.
struct Texture {
    float ray;
    float grain;
};

Texture textureAt(const Growth& growth)
{
    const float turn = angleOf(growth.fromHeart.x, growth.fromHeart.y) / kFullTurn;
    return {noise({turn * kRays, growth.age * 0.02F}, {kRays, 256}, 81),
            noise({turn * kFibres, growth.age / 4.5F}, {kFibres, 256}, 83)};
}

// How far a place's year has come, and how pale its wood is.
struct Season {
    float late; // 0 in spring to 1 in the dark line at the year's end
    float paleness;
};

// Wood grows pale in spring and ends each year in a dark line, at whose end the next spring begins
// at once.
Season seasonAt(const std::vector<Year>& years, const Year& year, float age)
{
    const Year& before = yearAt(years, year.start - 0.1F);
    const float within = (age - year.start) / year.width;
    const float spring = softStep(-0.2F, 2.6F, age - year.start); // pixels
    return {glm::mix(0.75F, softStep(0.3F, 1.0F, within), spring),
            glm::mix(before.tone, year.tone, spring)};
}

// Fractal noise over the tile.
float patches(glm::vec2 place, glm::ivec2 period, int octaves, int seed)
{
    return fractalNoise(noisePlace(place, period), period, octaves, seed);
}

void cutWood(Wood& wood)
{
    const std::vector<Year> years = growYears();
    const std::vector<Crack> cracks = makeCracks();
    const Ages heads = agesOfHearts();
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const glm::vec2 place = kCorner + glm::vec2(x, y) * kPixelsPerTexel;
            const Growth growth = growthAt(bent(place), heads);
            const Year& year = yearAt(years, growth.age);
            const auto [late, paleness] = seasonAt(years, year, growth.age);
            const auto [ray, grain] = textureAt(growth);
            const float blotch = patches(place, {5, 2}, 3, 91);
            const float clots = 0.5F + patches(place, {16, 7}, 2, 95);
            const float crack =
                std::max(crackDepth(cracks, growth, place), pocketDepth(growth, year, place));
            wood.crack.at(x, y) = crack;
            wood.resin.at(x, y) = crack * crack * glm::clamp(clots + 0.3F, 0.0F, 1.0F);
            wood.knot.at(x, y) = growth.knot;
            wood.tone.at(x, y) = 0.52F + paleness + 0.55F * blotch + 0.12F * ray + 0.1F * grain -
                                 0.42F * late - 0.2F * growth.knot;
            wood.height.at(x, y) = 2.2F * late * late + 0.6F * ray + 0.5F * grain - 5.0F * crack;
        }
    }
}

// What is finer than the warped grid can show is smoothed away; it shows 272 rows of 512.
template <typename Pixel>
Raster<Pixel> softened(const Raster<Pixel>& picture)
{
    Raster<Pixel> result(kSize, kSize);
    result.fill([&](int x, int y) {
        return 0.3F * picture.at(x, y) +
               0.23F * (picture.wrapped(x, y - 1) + picture.wrapped(x, y + 1)) +
               0.1F * (picture.wrapped(x, y - 2) + picture.wrapped(x, y + 2)) +
               0.02F * (picture.wrapped(x, y - 3) + picture.wrapped(x, y + 3));
    });
    return result;
}

Picture lightWood(const Wood& wood)
{
    const glm::vec3 toLight(-0.55F, -0.65F, 0.6F);
    Picture picture(kSize, kSize);
    picture.fill([&](int x, int y) {
        const glm::vec3 normal = normalAt(wood.height, x, y, 1.2F);
        const float light = matt(normal, toLight);
        const float knot = wood.knot.at(x, y);
        // The rim where the stem's wood has grown around the knot.
        const float rim = softStep(0.2F, 0.5F, knot) * softStep(0.85F, 0.55F, knot);

        glm::vec3 pixel = ramp(kWood, wood.tone.at(x, y) - 0.25F * rim) * (0.55F + 0.75F * light);
        pixel *= glm::mix(glm::vec3(1.0F), kKnotTint, knot);
        // What turns from the light takes the grey of the sky.
        pixel += kSlate * (0.25F + 1.1F * matt(normal, {0.7F, 0.6F, 0.35F})) * (1.0F - light);
        pixel = glm::mix(pixel, ramp(kResin, wood.resin.at(x, y)),
                         softStep(0.1F, 0.6F, wood.crack.at(x, y)));
        return glm::vec4(glm::min(pixel, glm::vec3(kPeak)), 1.0F);
    });
    return softened(picture);
}

void makeLog(const OutputFolder& folder)
{
    Wood wood;
    cutWood(wood);
    folder.write(lightWood(wood), 24, "outohalko4_tumma.tga");
}

} // namespace

} // namespace wood

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, wood::makeLog);
}
