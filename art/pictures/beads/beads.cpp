// The tube's skin: glossy beads, orange and gold with some of red and many black as oil, packed so
// that each touches two others, around a few large jewels with a cat's eye. They are spheres, each
// mirrors its neighbours and the sky, and many of the larger ones are engraved, each in its own
// way. It tiles.
#include "art/pictures/beads/packing.h"
#include "art/pictures/beads/skin.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"

#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <vector>

namespace beads {

namespace {

constexpr int kFiner = 3; // rays to a pixel, each way
constexpr float kEyeHeight = 100.0F;
constexpr float kMirroredOpenness = 0.6F; // of the sky, as beads in a mirror see it

const glm::vec3 kCut(0.22F, 0.34F, 0.40F); // what an engraving swallows of the light
const glm::vec3 kGap = colour(0x0c0306);
const glm::vec3 kSoftbox = colour(0xfff6e6);
const glm::vec3 kColdSky = colour(0xa8b8d8);

// The first bead that a ray meets, and how far away; null if it meets none. The bead `without` is
// left out: the ray starts on it.
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

// How much is mirrored: little by what is looked at straight, much at a slant (after Schlick).
// Jewels are clear: what they mirror would only veil them.
float shineOf(const Bead& bead, glm::vec3 normal)
{
    const float slant = 1.0F - glm::clamp(normal.z, 0.0F, 1.0F);
    return (bead.isJewel ? 0.35F : 1.0F) * (0.12F + 0.85F * power(slant, 3.5F));
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
    const glm::vec3 heading = down + 2.0F * normal.z * normal;
    const glm::vec3 mirrored = mirroredBy(beads, *hit.bead, place, heading, open);
    const glm::vec3 glossy =
        glm::clamp(lacquer + shineOf(*hit.bead, normal) * mirrored, 0.0F, 1.0F);
    // The smallest beads are left plain.
    const glm::vec3 cut =
        kCut * softStep(3.5F, 6.5F, hit.bead->radius) * engravedAt(*hit.bead, normal);
    return {place.z, lit * matt(normal, kLamp) * 0.7F + open * 0.3F, lacquer,
            glossy * (1.0F - cut)};
}

// What the rays through a pixel see, on average.
Sight lookThrough(const std::vector<Bead>& beads, int x, int y)
{
    constexpr int kRays = kFiner * kFiner;
    constexpr float kShare = 1.0F / kRays;
    const glm::vec2 pixel = kRoom / static_cast<float>(kPixels);
    const glm::vec2 corner = glm::vec2(x, y) * pixel;
    const std::vector<Bead> near = around(beads, corner);
    Sight all{0.0F, 0.0F, glm::vec3(0.0F), glm::vec3(0.0F)};
    for (int i = 0; i < kRays; ++i) {
        const glm::vec2 step = glm::vec2(i % kFiner, i / kFiner) / static_cast<float>(kFiner);
        const Sight sight = look(near, corner + step * pixel);
        all.height += kShare * sight.height / (2.0F * kRadii.front());
        all.light += kShare * sight.light;
        all.lacquer += kShare * sight.lacquer;
        all.finished += kShare * sight.finished;
    }
    return all;
}

void makeBeads(const OutputFolder& folder)
{
    const std::vector<Bead> beads = packBeads();
    GreyPicture heights(kPixels, kPixels);
    GreyPicture light(kPixels, kPixels);
    Picture lacquer(kPixels, kPixels);
    Picture picture(kPixels, kPixels);
    for (int y = 0; y < kPixels; ++y) {
        for (int x = 0; x < kPixels; ++x) {
            const Sight sight = lookThrough(beads, x, y);
            heights.at(x, y) = sight.height;
            light.at(x, y) = sight.light;
            lacquer.at(x, y) = glm::vec4(sight.lacquer, 1.0F);
            picture.at(x, y) = glm::vec4(sight.finished, 1.0F);
        }
    }
    folder.keepStage(heights, "beads-1-heights.tga");
    folder.keepStage(light, "beads-2-light.tga");
    folder.keepStage(lacquer, "beads-3-lacquer.tga");
    folder.write(picture, 24, "oranssipallotexture2.tga");
}

} // namespace

} // namespace beads

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, beads::makeBeads);
}
