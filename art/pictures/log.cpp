// A dark cut through a strange log: growth rings around two hearts and three knots that all grow
// into each other, torn by radial cracks in which resin has run. It tiles in both directions.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "base/view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <limits>
#include <span>
#include <vector>

namespace {

constexpr int kSize = 512;

// The tile is shown over the whole view. All geometry is in the view's pixels, so that rings stay
// round.
constexpr glm::vec2 kScreen(kViewWidth, kViewHeight);
constexpr glm::vec2 kPixelsPerTexel = kScreen / static_cast<float>(kSize);
// The tile's corner, which the warp pins to the screen's. So the cut follows no ring, and broad
// years lie where the pictures over this one are.
constexpr glm::vec2 kCorner(280.0F, 59.5F);

// Where rings begin.
struct Heart {
    glm::vec2 place;
    float ringWidth; // as a share of the log's
    float radius;    // of a knot, pixels; 0 for a stem
};
constexpr std::array kHearts = {
    Heart{{188, 112}, 1.0F,  0 }, // the log
    Heart{{486, 212}, 0.9F,  0 }, // a second stem
    Heart{{392, 74},  0.72F, 64}, // knots
    Heart{{312, 226}, 0.66F, 46},
    Heart{{58, 232},  0.68F, 54},
};
constexpr std::size_t kFirstKnot = 2;
constexpr float kMerging = 11.0F; // how softly rings of two hearts join

// Good and bad years come in groups. Nothing is narrower than the warp can shrink: three texels.
constexpr std::array kBroadYears{15.0F, 24.0F}; // pixels
constexpr std::array kNarrowYears{9.5F, 12.0F};

// Along a ray from a heart, in pixels from it.
struct Crack {
    std::size_t heart;
    float angle;
    float from;
    float to;
    float width;
};

constexpr int kRays = 90; // around a heart
constexpr int kFibres = 26;

constexpr float kPeak = 0.62F;

// Charcoal and slate, only a little warm: what lies over the log brings each scene's colour.
const std::array kWood = {glm::vec3(0.079F, 0.067F, 0.065F), glm::vec3(0.117F, 0.096F, 0.087F),
                          glm::vec3(0.208F, 0.169F, 0.149F), glm::vec3(0.43F, 0.355F, 0.31F)};
const glm::vec3 kSlate(0.109F, 0.1F, 0.101F);
const glm::vec3 kKnotTint(0.86F, 0.79F, 0.76F);
const std::array kResin = {glm::vec3(0.056F, 0.045F, 0.045F), glm::vec3(0.075F, 0.041F, 0.038F),
                           glm::vec3(0.125F, 0.052F, 0.044F), glm::vec3(0.19F, 0.08F, 0.062F)};

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
    return place + 46.0F * swelling + 2.6F * tremble;
}

// The growth at a place, in pixels of wood since the nearest heart, as a smooth minimum over all
// hearts, so that rings of two of them flow together.
struct Growth {
    float age;
    std::size_t heart; // the nearest one
    glm::vec2 fromHeart;
    float knot; // 1 in a knot, 0 in the stems
};

// `heads` are the ages with which the hearts begin.
Growth growthAt(glm::vec2 place, std::span<const float> heads)
{
    Growth growth{};
    float sum = 0.0F;
    float knots = 0.0F;
    float nearest = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < heads.size(); ++i) {
        const Heart& heart = kHearts[i];
        const glm::vec2 inner = shortestWay(place - heart.place, kScreen);
        for (int copy = 0; copy < 9; ++copy) {
            const glm::vec2 lattice(copy % 3 - 1, copy / 3 - 1);
            const glm::vec2 way = inner + lattice * kScreen;
            const float age = glm::length(way) / heart.ringWidth + heads[i];
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

// A knot begins so late that it reaches its radius before the stems' wood closes around it.
std::array<float, kHearts.size()> agesOfHearts()
{
    std::array<float, kHearts.size()> heads{};
    for (std::size_t i = kFirstKnot; i < kHearts.size(); ++i) {
        const Heart& knot = kHearts[i];
        heads[i] = growthAt(knot.place, std::span(heads).first(kFirstKnot)).age -
                   knot.radius / knot.ringWidth;
    }
    return heads;
}

// The years, one after the other.
struct Year {
    float start; // age
    float width;
    float tone; // how pale its wood is
};

std::vector<Year> growYears()
{
    Random random(23);
    std::vector<Year> years;
    float age = -120.0F;
    for (int group = 0; age < 420.0F; ++group) {
        const bool broad = group % 2 == 0;
        const auto& widths = broad ? kBroadYears : kNarrowYears;
        const int count = static_cast<int>(broad ? random.between(2, 5) : random.between(4, 7));
        const float paleness = broad ? random.between(0.08F, 0.2F) : random.between(-0.18F, 0.0F);
        for (int i = 0; i < count; ++i) {
            const float width = random.between(widths[0], widths[1]);
            years.push_back({age, width, paleness + random.between(-0.1F, 0.1F)});
            age += width;
        }
    }
    return years;
}

const Year& yearAt(const std::vector<Year>& years, float age)
{
    const auto next = std::upper_bound(years.begin() + 1, years.end() - 1, age,
                                       [](float a, const Year& year) { return a < year.start; });
    return *(next - 1);
}

std::vector<Crack> makeCracks()
{
    Random random(9);
    std::vector<Crack> cracks;
    for (std::size_t heart = 0; heart < kHearts.size(); ++heart) {
        const bool knot = heart >= kFirstKnot;
        const int count = knot ? 3 : 4;
        const float reach = knot ? 0.9F * kHearts[heart].radius : 95.0F;
        for (int i = 0; i < count; ++i) {
            const float turn =
                (static_cast<float>(i) + random.between(-0.3F, 0.3F)) / static_cast<float>(count);
            const bool fromMiddle = knot || i % 2 == 0;
            const float from = fromMiddle ? -4.0F : random.between(0.25F, 0.5F) * reach;
            cracks.push_back({heart, turn * kFullTurn, from,
                              from + random.between(0.35F, 1.0F) * reach,
                              random.between(0.6F, knot ? 1.4F : 1.9F)});
        }
    }
    return cracks;
}

// How deep a place lies in a crack: 0 on the surface, 1 in the middle.
float crackDepth(const std::vector<Crack>& cracks, const Growth& growth, glm::vec2 place)
{
    const float radius = glm::length(growth.fromHeart);
    const glm::ivec2 period(26, 11);
    const float wander = fractalNoise(noisePlace(place, period), period, 2, 51);
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
        const float width = crack.width * softStep(0.0F, 0.15F, along) * (1.0F - along) + 0.8F;
        const float offset =
            std::fabs(aside + 11.0F * wander * softStep(0.0F, 30.0F, radius)) / width;
        depth = std::max(depth, softStep(1.5F, 0.2F, offset) * softStep(1.0F, 0.7F, along));
    }
    return depth;
}

// Where a year's wood has come off the next one's, resin has gathered: lines along the rings.
float pocketDepth(const Growth& growth, const Year& year, glm::vec2 place)
{
    const glm::ivec2 period(9, 4);
    const float chance = noise(noisePlace(place, period), period, 65);
    const float late = (growth.age - year.start) / year.width;
    const float off = std::fabs(late - 0.86F) * year.width / 1.7F;
    return softStep(0.5F, 0.7F, chance) * softStep(1.0F, 0.2F, off);
}

// What the light falls on.
struct Wood {
    GreyPicture height{kSize, kSize};
    GreyPicture tone{kSize, kSize};  // how pale
    GreyPicture crack{kSize, kSize}; // depth
    GreyPicture resin{kSize, kSize}; // how red it is
    GreyPicture knot{kSize, kSize};
};

void cutWood(Wood& wood)
{
    const std::vector<Year> years = growYears();
    const std::vector<Crack> cracks = makeCracks();
    const auto heads = agesOfHearts();
    const glm::ivec2 blotches(5, 2);
    const glm::ivec2 fine(16, 7);
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const glm::vec2 place = kCorner + glm::vec2(x, y) * kPixelsPerTexel;
            const Growth growth = growthAt(bent(place), heads);
            const Year& year = yearAt(years, growth.age);
            const Year& before = yearAt(years, year.start - 0.1F);

            // Wood grows pale in spring and ends each year in a dark line, at whose end the next
            // spring begins at once.
            const float within = (growth.age - year.start) / year.width;
            const float since = growth.age - year.start;
            const float spring = softStep(-0.2F, 2.6F, since); // pixels
            const float late = glm::mix(0.75F, softStep(0.3F, 1.0F, within), spring);
            const float paleness = glm::mix(before.tone, year.tone, spring);

            const float angle = angleOf(growth.fromHeart.x, growth.fromHeart.y);
            const float ray =
                noise({angle / kFullTurn * kRays, growth.age * 0.02F}, {kRays, 256}, 81);
            const float grain =
                noise({angle / kFullTurn * kFibres, growth.age / 4.5F}, {kFibres, 256}, 83);
            const float blotch = fractalNoise(noisePlace(place, blotches), blotches, 3, 91);
            const float clots = 0.5F + fractalNoise(noisePlace(place, fine), fine, 2, 95);

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

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLog);
}
