// A dark cut through a strange log: growth rings around two hearts and three knots that all grow
// into each other, torn by radial cracks in which resin has run. It tiles in both directions.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <limits>
#include <vector>

namespace {

constexpr int kSize = 512;

// The tile is shown over 640 x 272 pixels. All geometry is in these, so that rings stay round.
constexpr glm::vec2 kScreen(640.0F, 272.0F);
constexpr glm::vec2 kPixelsPerTexel = kScreen / static_cast<float>(kSize);

// Where rings begin. A narrow heart's rings are close together and it gives way to a wide one.
struct Heart {
    glm::vec2 place;
    float ringWidth;
    float head; // how far its first ring is ahead of the others', in pixels
};
constexpr std::array kHearts = {
    Heart{{196, 118}, 1.0F,  0 }, // the log
    Heart{{492, 196}, 0.82F, 6 }, // a second stem
    Heart{{356, 62},  0.5F,  26}, // knots
    Heart{{300, 232}, 0.42F, 34},
    Heart{{62, 236},  0.46F, 30},
};
constexpr std::size_t kFirstKnot = 2;
constexpr float kMerging = 9.0F;     // how softly rings of two hearts join
constexpr float kRingSpacing = 8.5F; // pixels

struct Crack {
    std::size_t heart;
    float angle;
    float from;
    float to;
    float width;
};

constexpr int kRays = 164; // around a heart

constexpr float kPeak = 0.62F;

const std::array kWood = {colour(0x0e1116), colour(0x1f2226), colour(0x4a3a2c), colour(0x82603c),
                          colour(0xa98256)};
const glm::vec3 kSlateLight = colour(0x354453);
const glm::vec3 kKnotTint(1.05F, 0.84F, 0.7F);
const glm::vec3 kDeep = colour(0x03050a);
const std::array kResin = {colour(0x2a0d02), colour(0x8a3c08), colour(0xe29a2e)};

glm::vec2 noisePlace(glm::vec2 place, glm::ivec2 period)
{
    return place / kScreen * glm::vec2(period);
}

// Bends the wood: slow swellings, and a fine tremble of the fibres.
glm::vec2 bent(glm::vec2 place)
{
    const glm::ivec2 slow(5, 2);
    const glm::ivec2 fine(30, 13);
    const glm::vec2 swelling(fractalNoise(noisePlace(place, slow), slow, 3, 11),
                             fractalNoise(noisePlace(place, slow), slow, 3, 21));
    const glm::vec2 tremble(fractalNoise(noisePlace(place, fine), fine, 2, 31),
                            fractalNoise(noisePlace(place, fine), fine, 2, 41));
    return place + 46.0F * swelling + 3.2F * tremble;
}

// The growth at a place, in pixels of wood since the nearest heart, as a smooth minimum over all
// hearts, so that rings of two of them flow together.
struct Growth {
    float age;
    std::size_t heart; // the nearest one
    glm::vec2 fromHeart;
    float knot; // 1 in a knot, 0 in the stems
};

Growth growthAt(glm::vec2 place)
{
    Growth growth{};
    float sum = 0.0F;
    float knots = 0.0F;
    float nearest = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < kHearts.size(); ++i) {
        const Heart& heart = kHearts[i];
        const glm::vec2 inner = shortestWay(place - heart.place, kScreen);
        for (int copy = 0; copy < 9; ++copy) {
            const glm::vec2 lattice(copy % 3 - 1, copy / 3 - 1);
            const glm::vec2 way = inner + lattice * kScreen;
            const float age = glm::length(way) / heart.ringWidth + heart.head;
            const float weight = exponential(-age / kMerging);
            sum += weight;
            knots += i >= kFirstKnot ? weight : 0.0F;
            if (age < nearest) {
                nearest = age;
                growth.heart = i;
                growth.fromHeart = way;
            }
        }
    }
    growth.age = -kMerging * logarithm(sum);
    growth.knot = knots / sum;
    return growth;
}

std::vector<Crack> makeCracks()
{
    Random random(7);
    std::vector<Crack> cracks;
    for (std::size_t heart = 0; heart < kHearts.size(); ++heart) {
        const int count = heart < kFirstKnot ? 9 : 4;
        const float reach = heart < kFirstKnot ? 128.0F : 22.0F;
        for (int i = 0; i < count; ++i) {
            const float turn =
                (static_cast<float>(i) + random.between(-0.3F, 0.3F)) / static_cast<float>(count);
            const float from = i % 3 == 0 ? 0.0F : random.between(0.1F, 0.45F) * reach;
            cracks.push_back({heart, turn * kFullTurn, from,
                              from + random.between(0.4F, 1.0F) * reach,
                              random.between(0.7F, 2.0F) * (i % 3 == 0 ? 1.5F : 1.0F)});
        }
    }
    return cracks;
}

// How deep a place lies in a crack: 0 on the surface, 1 in the middle.
float crackDepth(const std::vector<Crack>& cracks, const Growth& growth, glm::vec2 place)
{
    const float radius = glm::length(growth.fromHeart);
    const glm::ivec2 period(36, 15);
    const float wander = fractalNoise(noisePlace(place, period), period, 3, 51);
    float depth = 0.0F;
    for (const Crack& crack : cracks) {
        const float along = (radius - crack.from) / (crack.to - crack.from);
        if (crack.heart != growth.heart || along <= 0.0F || along >= 1.0F) {
            continue;
        }
        const glm::vec2 direction(cosine(crack.angle), sine(crack.angle));
        if (glm::dot(direction, growth.fromHeart) <= 0.0F) {
            continue;
        }
        const float aside = direction.x * growth.fromHeart.y - direction.y * growth.fromHeart.x;
        const float width = crack.width * (1.0F - along) * softStep(0.0F, 0.12F, along) + 0.35F;
        const float offset =
            std::fabs(aside + 9.0F * wander * softStep(0.0F, 30.0F, radius)) / width;
        depth = std::max(depth, softStep(1.6F, 0.4F, offset) * softStep(1.0F, 0.85F, along));
    }
    return depth;
}

// What the light falls on.
struct Wood {
    GreyPicture height{kSize, kSize};
    GreyPicture late{kSize, kSize};  // 1 in the dark part of a ring
    GreyPicture tone{kSize, kSize};  // how light this ring and this place are
    GreyPicture crack{kSize, kSize}; // depth
    GreyPicture knot{kSize, kSize};
};

void cutWood(Wood& wood)
{
    const std::vector<Crack> cracks = makeCracks();
    const glm::ivec2 pores(212, 90);
    const glm::ivec2 blotches(6, 3);
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const glm::vec2 place = glm::vec2(x, y) * kPixelsPerTexel;
            const Growth growth = growthAt(bent(place));

            const float rings = growth.age / kRingSpacing;
            const int ring = static_cast<int>(std::floor(rings));
            const float within = rings - static_cast<float>(ring);
            // Wood grows pale in spring and ends each year in a dark line.
            const float late = softStep(0.25F, 0.92F, within) * softStep(1.0F, 0.94F, within);
            const float year = unit(hash(ring, 0, 61));

            // Vessels: pores in the spring wood; rays run outward from the heart.
            const CellDistance pore = cellDistance(noisePlace(place, pores), pores, 0.9F, 71);
            const float hole = softStep(0.34F, 0.16F, pore.nearest) * softStep(0.6F, 0.2F, within) *
                               (unit(pore.number) < 0.6F ? 1 : 0);
            const float angle = angleOf(growth.fromHeart.x, growth.fromHeart.y);
            const float ray =
                noise({angle / kFullTurn * kRays, growth.age * 0.02F}, {kRays, 256}, 81);

            const float crack = crackDepth(cracks, growth, place);
            const float blotch = fractalNoise(noisePlace(place, blotches), blotches, 5, 91);
            wood.late.at(x, y) = late;
            wood.crack.at(x, y) = crack;
            wood.knot.at(x, y) = growth.knot;
            wood.tone.at(x, y) = 0.62F + 0.42F * (year - 0.5F) + 0.9F * blotch + 0.26F * ray;
            wood.height.at(x, y) = 1.2F * late - 1.3F * hole + 0.4F * ray - 7.0F * crack;
        }
    }
}

Picture lightWood(const Wood& wood)
{
    const glm::vec3 toLight(-0.55F, -0.65F, 0.6F);
    const GreyPicture around = blurred(wood.height, 5);
    const GreyPicture nearCrack = blurred(wood.crack, 4);
    Picture picture(kSize, kSize);
    picture.fill([&](int x, int y) {
        const glm::vec3 normal = normalAt(wood.height, x, y, 1.3F);
        const float light = matt(normal, toLight);
        const float hollow = softStep(-3.0F, 1.0F, wood.height.at(x, y) - around.at(x, y));
        const float knot = wood.knot.at(x, y);

        const float tone = wood.tone.at(x, y) - 0.5F * wood.late.at(x, y) - 0.22F * knot;
        glm::vec3 pixel = ramp(kWood, tone) * (0.2F + 1.1F * light) * (0.35F + 0.65F * hollow);
        pixel *= glm::mix(glm::vec3(1.0F), kKnotTint, knot);
        // What turns from the light takes the cold of the sky.
        pixel +=
            kSlateLight * 0.5F * matt(normal, {0.7F, 0.6F, 0.35F}) * (0.3F + 0.7F * (1 - tone));

        // Resin has soaked the wood beside a crack, and stands in the crack, wet.
        const float soaked = nearCrack.at(x, y) * (1.0F - wood.crack.at(x, y));
        pixel = glm::mix(pixel, ramp(kResin, 0.55F * light), 0.55F * glm::min(1.0F, 2 * soaked));
        const float wet = glossy(normal, toLight, 12.0F);
        const glm::vec3 filling = glm::mix(kDeep, ramp(kResin, 0.12F + 1.2F * wet), 0.85F);
        pixel = glm::mix(pixel, filling, wood.crack.at(x, y));
        return glm::vec4(glm::min(pixel, glm::vec3(kPeak)), 1.0F);
    });
    return picture;
}

void makeLog(const OutputFolder& folder)
{
    Wood wood;
    cutWood(wood);
    folder.write(lightWood(wood), 24, "outohalko4_tumma.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLog);
}
