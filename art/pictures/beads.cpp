// The tube's skin: glossy beads, orange and gold with some of red and a few black as oil, packed so
// that each touches two others. They are spheres, each mirrors its neighbours and the sky, and the
// larger ones are engraved, each in its own way. It tiles.
//
// The tube draws the picture out along its length where the viewer sees most of it, so the beads
// are packed in a taller room that is then pressed into the picture's height.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <vector>

namespace {

constexpr int kSize = 256;
constexpr int kFiner = 3; // rays to a pixel, each way
constexpr int kSeed = 8;

// The room the beads lie in; one unit is a pixel's width.
constexpr int kRoomHeight = 344;
const glm::vec2 kRoom{kSize, kRoomHeight};

// Radii: a bead is of one of three sizes, and grains fill what is left.
constexpr std::array kRadii = {11.0F, 7.0F, 4.2F, 2.4F};
constexpr float kUneven = 0.10F;  // how far a radius is from its size
constexpr float kSqueeze = 1.05F; // beads press into one another a little
constexpr float kSunken = 0.45F;  // how high a bead's middle lies, in radii
constexpr float kVein = 8.0F;     // how far the lacquer's veins lie apart

// Engravings: how far their rings, cracks and pores lie apart. The rings are two or three of the
// picture's pixels wide, as fine as it can hold.
constexpr float kRing = 3.2F;
constexpr float kCrack = 6.0F;
constexpr float kPore = 3.0F;
constexpr int kPeriod = 64; // of their noise, in cells

constexpr float kEyeHeight = 100.0F;
constexpr float kMirroredOpenness = 0.6F; // of the sky, as beads in a mirror see it
constexpr float kReach = 30.0F;           // how far beads shade and mirror each other

// Up in the picture is toward the viewer, who carries the lamp.
const glm::vec3 kLamp = glm::normalize(glm::vec3(-0.30F, -0.58F, 0.76F));
const glm::vec3 kBounce = glm::normalize(glm::vec3(0.35F, 0.85F, 0.10F));

struct Lacquer {
    glm::vec3 shallow; // where the lamp strikes it
    glm::vec3 deep;    // in its own shade
    float share;
};
const std::array kLacquers = {
    Lacquer{colour(0xffb838), colour(0xc04804), 0.27F},
    Lacquer{colour(0xff8c20), colour(0xb02c04), 0.37F},
    Lacquer{colour(0xff6814), colour(0x981804), 0.23F},
    Lacquer{colour(0xd02808), colour(0x5c0804), 0.09F},
    Lacquer{colour(0x1c1c24), colour(0x08080c), 0.04F},
};
const glm::vec3 kCut(0.22F, 0.34F, 0.40F); // what an engraving swallows of the light
const glm::vec3 kGap = colour(0x0c0306);
const glm::vec3 kSoftbox = colour(0xfff6e6);
const glm::vec3 kColdSky = colour(0xa8b8d8);
const glm::vec3 kDusk = colour(0x5c4644);
const glm::vec3 kEmber = colour(0xff5a14);

enum class Pattern { kRings, kGrain, kCracks, kPores };

struct Engraving {
    Pattern pattern;
    glm::vec3 axis;  // of rings and grain
    glm::vec2 patch; // of the noise, in cells
};

struct Bead {
    glm::vec3 middle;
    float radius;
    Lacquer lacquer;
    Engraving engraving;
};

const Lacquer& pickLacquer(float chance)
{
    for (const Lacquer& lacquer : kLacquers) {
        chance -= lacquer.share;
        if (chance < 0.0F) {
            return lacquer;
        }
    }
    return kLacquers.front();
}

Engraving pickEngraving(Random& random)
{
    const auto pattern = static_cast<Pattern>(4.0F * random.next());
    const float turn = kFullTurn * random.next();
    const float tilt = pattern == Pattern::kRings ? 0.8F : 0.3F;
    const glm::vec3 axis(cosine(turn), sine(turn), tilt);
    return {pattern, glm::normalize(axis),
            glm::vec2(random.between(0.0F, kPeriod), random.between(0.0F, kPeriod))};
}

// How far a place is from the rims of the two beads nearest to it.
struct Gaps {
    float nearest = 1000.0F;
    float second = 1000.0F;

    void add(float gap)
    {
        second = glm::min(second, glm::max(nearest, gap));
        nearest = glm::min(nearest, gap);
    }
};

// The place where a bead of this radius fits and lies closest to two others; none if x is negative.
glm::ivec2 snuggest(const Raster<Gaps>& gaps, float radius)
{
    glm::ivec2 best(-1);
    float least = 10000.0F;
    for (int y = 0; y < gaps.height(); ++y) {
        for (int x = 0; x < gaps.width(); ++x) {
            const Gaps& here = gaps.at(x, y);
            if (here.nearest >= radius && here.nearest + here.second < least) {
                least = here.nearest + here.second;
                best = glm::ivec2(x, y);
            }
        }
    }
    return best;
}

std::vector<Bead> packBeads()
{
    std::vector<Bead> beads;
    Random random(kSeed);
    Raster<Gaps> gaps(kSize, kRoomHeight, Gaps());
    std::size_t smallest = 0; // of the sizes that may still fit
    while (smallest < kRadii.size()) {
        const float chance = random.next();
        const std::size_t wanted = chance < 0.34F ? 0 : chance < 0.72F ? 1 : 2;
        const std::size_t size = glm::max(wanted, smallest);
        const float radius = kRadii[size] * (1.0F + kUneven * random.between(-1.0F, 1.0F));
        const glm::ivec2 place = snuggest(gaps, radius);
        if (place.x < 0) {
            smallest = size == smallest ? smallest + 1 : smallest;
            continue;
        }
        const float height = radius * (kSunken + random.between(-0.15F, 0.15F));
        beads.push_back(
            {glm::vec3(place, height), radius, pickLacquer(random.next()), pickEngraving(random)});
        for (int y = 0; y < kRoomHeight; ++y) {
            for (int x = 0; x < kSize; ++x) {
                const glm::vec2 way = shortestWay(glm::vec2(x, y) - glm::vec2(place), kRoom);
                gaps.at(x, y).add(glm::length(way) - radius);
            }
        }
    }
    return beads;
}

// The beads as a place sees them: those within reach, brought to its side of the borders.
std::vector<Bead> around(const std::vector<Bead>& beads, glm::vec2 place)
{
    std::vector<Bead> near;
    for (const Bead& bead : beads) {
        const glm::vec2 way = shortestWay(glm::vec2(bead.middle) - place, kRoom);
        if (glm::length(way) - bead.radius < kReach) {
            near.push_back(bead);
            near.back().middle = glm::vec3(place + way, bead.middle.z);
            near.back().radius *= kSqueeze;
        }
    }
    return near;
}

// The first bead that a ray meets, and how far away; null if it meets none.
struct Hit {
    const Bead* bead = nullptr;
    float way = 0.0F;
};

Hit trace(const std::vector<Bead>& beads, glm::vec3 from, glm::vec3 heading, const Bead* without)
{
    Hit hit;
    for (const Bead& bead : beads) {
        const glm::vec3 toMiddle = bead.middle - from;
        const float along = glm::dot(toMiddle, heading);
        const float inside =
            bead.radius * bead.radius - glm::dot(toMiddle, toMiddle) + along * along;
        if (&bead == without || along <= 0.0F || inside <= 0.0F) {
            continue;
        }
        const float way = along - std::sqrt(inside);
        if (hit.bead == nullptr || way < hit.way) {
            hit = {&bead, way};
        }
    }
    return hit;
}

// How much of the sky the neighbours leave open: each takes the share that a sphere takes.
float openness(const std::vector<Bead>& beads, glm::vec3 place, glm::vec3 normal, const Bead* self)
{
    float open = 1.0F;
    for (const Bead& bead : beads) {
        if (&bead != self) {
            const glm::vec3 way = bead.middle - place;
            const float distance = glm::length(way);
            const float share = bead.radius * bead.radius / (distance * distance);
            const float facing = glm::max(0.0F, glm::dot(normal, way / distance));
            open *= 1.0F - 0.85F * glm::min(1.0F, share) * facing;
        }
    }
    return open;
}

// How much of the lamp gets past the neighbours; their shadows' edges soften with distance.
float litness(const std::vector<Bead>& beads, glm::vec3 place, const Bead* self)
{
    float lit = 1.0F;
    for (const Bead& bead : beads) {
        const glm::vec3 way = bead.middle - place;
        const float along = glm::dot(way, kLamp);
        if (&bead != self && along > 0.0F) {
            const float aside = std::sqrt(glm::max(0.0F, glm::dot(way, way) - along * along));
            const float blur = 0.8F + 0.16F * along;
            lit = glm::min(lit, softStep(-blur, blur, aside - bead.radius));
        }
    }
    return lit;
}

// The lacquer without its mirroring.
glm::vec3 bodyAt(const Bead& bead, glm::vec3 normal, float lit, float open)
{
    const float key = glm::max(0.0F, glm::dot(normal, kLamp)) * (0.2F + 0.8F * lit);
    const float glow = power(glm::max(0.0F, glm::dot(normal, kBounce)), 2.0F);
    const float veins = ridgedNoise(glm::vec2(bead.middle + normal * bead.radius) / kVein,
                                    glm::ivec2(kRoom / kVein), 2, kSeed);
    const float depth = softStep(-0.02F, 0.76F, key) - 0.22F * (1.0F - veins);
    const glm::vec3 body =
        glm::mix(bead.lacquer.deep * 0.5F, bead.lacquer.shallow, glm::clamp(depth, 0.0F, 1.0F));
    return body * (0.45F + 0.80F * open) + bead.lacquer.shallow * kEmber * 0.75F * glow * open +
           kDusk * (0.12F + 0.20F * (1.0F - key)) * open;
}

// How deep a bead is engraved: 0 to 1.
float engravedAt(const Bead& bead, glm::vec3 normal)
{
    const auto& [pattern, axis, patch] = bead.engraving;
    const glm::vec2 place = bead.radius * glm::vec2(normal);
    const glm::ivec2 period(kPeriod);
    const float along = bead.radius * glm::dot(normal, axis);
    const float away = std::sqrt(glm::max(0.0F, bead.radius * bead.radius - along * along));
    const float bend = noise(place / (2.0F * kCrack) + patch, period, kSeed + 4);
    switch (pattern) {
    case Pattern::kRings:
        return 0.5F + 0.5F * cosine(kFullTurn * away / kRing);
    case Pattern::kGrain:
        return 0.5F + 0.5F * cosine(kFullTurn * (along / kRing + 0.8F * bend));
    case Pattern::kCracks:
        return softStep(0.55F, 0.95F, ridgedNoise(place / kCrack + patch, period, 1, kSeed + 4));
    case Pattern::kPores:
        break;
    }
    return softStep(0.45F, 0.15F,
                    cellDistance(place / kPore + patch, period, 0.7F, kSeed + 4).nearest);
}

// What lies beyond the beads: a broad lamp with soft edges, a cold light low on the far side.
glm::vec3 skyAt(glm::vec3 heading)
{
    const float toLamp = glm::dot(heading, kLamp);
    const float lamp =
        0.3F * softStep(0.70F, 0.95F, toLamp) + 0.7F * softStep(0.88F, 0.97F, toLamp);
    const float low = softStep(0.85F, 0.40F, heading.z) * softStep(-0.20F, 0.6F, heading.y);
    return kSoftbox * 9.0F * lamp + kColdSky * 3.0F * low + kDusk * 0.8F;
}

// What a ray from above meets, and what becomes of it on the way to the finished colour.
struct Sight {
    float height = 0.0F;
    float light = 0.0F; // of the lamp and the sky together
    glm::vec3 lacquer = kGap;
    glm::vec3 finished = kGap;
};

glm::vec3 mirroredBy(const std::vector<Bead>& beads, const Bead& bead, glm::vec3 place,
                     glm::vec3 heading, float open)
{
    const Hit hit = trace(beads, place, heading, &bead);
    if (hit.bead == nullptr) {
        return skyAt(heading) * open;
    }
    const glm::vec3 there = place + heading * hit.way;
    const glm::vec3 normal = (there - hit.bead->middle) / hit.bead->radius;
    return bodyAt(*hit.bead, normal, litness(beads, there, hit.bead), kMirroredOpenness);
}

Sight look(const std::vector<Bead>& beads, glm::vec2 above)
{
    const glm::vec3 down(0.0F, 0.0F, -1.0F);
    const glm::vec3 eye(above, kEyeHeight);
    const Hit hit = trace(beads, eye, down, nullptr);
    if (hit.bead == nullptr) {
        return {};
    }
    const glm::vec3 place = eye + hit.way * down;
    const glm::vec3 normal = (place - hit.bead->middle) / hit.bead->radius;
    const float lit = litness(beads, place, hit.bead);
    const float open = openness(beads, place, normal, hit.bead);
    const glm::vec3 lacquer = bodyAt(*hit.bead, normal, lit, open);

    // A flat look at the lacquer is mirrored little, a slanting one much (after Schlick).
    const float slant = 1.0F - glm::clamp(normal.z, 0.0F, 1.0F);
    const float shine = 0.12F + 0.85F * power(slant, 3.5F);
    const glm::vec3 heading = down + 2.0F * normal.z * normal;
    const glm::vec3 mirrored = mirroredBy(beads, *hit.bead, place, heading, open);
    const glm::vec3 glossy = glm::clamp(lacquer + shine * mirrored, 0.0F, 1.0F);
    // The smallest beads are left plain.
    const glm::vec3 cut =
        kCut * softStep(3.5F, 6.5F, hit.bead->radius) * engravedAt(*hit.bead, normal);
    return {place.z, lit * matt(normal, kLamp) * 0.7F + open * 0.3F, lacquer,
            glossy * (1.0F - cut)};
}

void makeBeads(const OutputFolder& folder)
{
    const std::vector<Bead> beads = packBeads();
    GreyPicture heights(kSize, kSize);
    GreyPicture light(kSize, kSize);
    Picture lacquer(kSize, kSize);
    Picture picture(kSize, kSize);
    const glm::vec2 pixel = kRoom / static_cast<float>(kSize);
    constexpr int kRays = kFiner * kFiner;
    constexpr float kShare = 1.0F / kRays;
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const glm::vec2 corner = glm::vec2(x, y) * pixel;
            const std::vector<Bead> near = around(beads, corner);
            for (int i = 0; i < kRays; ++i) {
                const glm::vec2 step =
                    glm::vec2(i % kFiner, i / kFiner) / static_cast<float>(kFiner);
                const Sight sight = look(near, corner + step * pixel);
                heights.at(x, y) += kShare * sight.height / (2.0F * kRadii.front());
                light.at(x, y) += kShare * sight.light;
                lacquer.at(x, y) += kShare * glm::vec4(sight.lacquer, 1.0F);
                picture.at(x, y) += kShare * glm::vec4(sight.finished, 1.0F);
            }
        }
    }
    folder.keepStage(heights, "beads-1-heights.tga");
    folder.keepStage(light, "beads-2-light.tga");
    folder.keepStage(lacquer, "beads-3-lacquer.tga");
    folder.write(picture, 24, "oranssipallotexture2.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeBeads);
}
