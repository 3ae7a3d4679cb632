// The tube's skin: glossy orange beads, packed so that smaller ones fill the gaps between larger
// ones. It tiles.
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
constexpr int kFiner = 3; // pixels computed to one of the picture's, each way
constexpr int kFineSize = kSize * kFiner;
constexpr int kSeed = 5;

// Radii, in the picture's pixels.
constexpr float kLargest = 10.5F;
constexpr float kSmallest = 1.6F;
constexpr float kSqueeze = 1.05F; // beads press into one another a little

constexpr glm::vec3 kLamp{-0.45F, -0.62F, 0.64F};
constexpr glm::vec3 kBounce{0.5F, 0.7F, 0.25F};
constexpr int kLongestShadow = 12;

const std::array kLacquers = {colour(0xf06a10), colour(0xff8a18), colour(0xe04e0c),
                              colour(0xffa428), colour(0xf47612), colour(0xc83c0a)};
const glm::vec3 kGap = colour(0x120402);
const glm::vec3 kGlint = colour(0xfff0d8);
const glm::vec3 kSky = colour(0xe8d8d8);
const glm::vec3 kWarmBounce = colour(0xff9030);

struct Bead {
    glm::vec2 centre;
    float radius;
    glm::vec3 lacquer;
};

glm::vec2 wayTo(glm::vec2 to, glm::vec2 from)
{
    return shortestWay(to - from, glm::vec2(kSize));
}

// Puts a bead into the largest gap there is, until the gaps are too small.
std::vector<Bead> packBeads()
{
    std::vector<Bead> beads;
    Random random(kSeed);
    GreyPicture room(kSize, kSize);
    room.fill([&](int /*x*/, int /*y*/) { return kLargest + random.between(0.0F, 1.0F); });
    for (;;) {
        Bead bead{
            {0.0F, 0.0F},
            0.0F, kLacquers[beads.size() % kLacquers.size()]
        };
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                if (room.at(x, y) > bead.radius) {
                    bead.centre = glm::vec2(x, y);
                    bead.radius = room.at(x, y);
                }
            }
        }
        if (bead.radius < kSmallest) {
            return beads;
        }
        bead.radius = glm::min(bead.radius, kLargest * random.between(0.62F, 1.0F));
        room.fill([&](int x, int y) {
            const float away = glm::length(wayTo(glm::vec2(x, y), bead.centre)) - bead.radius;
            return glm::min(room.at(x, y), away);
        });
        beads.push_back(bead);
    }
}

// What the viewer sees at a fine pixel: how high it lies and which bead it is.
struct Top {
    float height = 0.0F; // in the picture's pixels; 0 between the beads
    int bead = -1;
};

Raster<Top> pileUp(const std::vector<Bead>& beads)
{
    Raster<Top> tops(kFineSize, kFineSize, Top());
    for (int i = 0; i < static_cast<int>(beads.size()); ++i) {
        const Bead& bead = beads[static_cast<std::size_t>(i)];
        const glm::ivec2 middle(bead.centre * static_cast<float>(kFiner));
        const int reach = static_cast<int>(bead.radius * kSqueeze * kFiner) + 1;
        for (int aside = -reach; aside <= reach; ++aside) {
            for (int above = -reach; above <= reach; ++above) {
                const glm::vec2 off = glm::vec2(aside, above) / (bead.radius * kSqueeze * kFiner);
                const float height =
                    bead.radius * std::sqrt(glm::max(0.0F, 1.0F - glm::dot(off, off)));
                Top& top =
                    tops.at(wrap(middle.x + aside, kFineSize), wrap(middle.y + above, kFineSize));
                top = height > top.height ? Top{height, i} : top;
            }
        }
    }
    return tops;
}

// How much of the lamp reaches a place: beads that stand higher on the way there take it.
float litness(const Raster<Top>& tops, int x, int y)
{
    const glm::vec3 toLamp = glm::normalize(kLamp);
    const float rise = toLamp.z / glm::length(glm::vec2(toLamp));
    const glm::vec2 heading = glm::normalize(glm::vec2(toLamp));
    float lit = 1.0F;
    for (int i = 1; i < kLongestShadow; ++i) {
        const auto way = static_cast<float>(i);
        const glm::ivec2 step(glm::round(heading * way * static_cast<float>(kFiner)));
        const float above = tops.wrapped(x + step.x, y + step.y).height;
        const float over = above - tops.at(x, y).height - way * rise;
        lit = glm::min(lit, 1.0F - glm::clamp(over / 3.0F, 0.0F, 1.0F));
    }
    return lit;
}

glm::vec3 shadeBead(const Bead& bead, glm::vec2 off, float lit)
{
    const glm::vec3 normal(off, std::sqrt(glm::max(0.0F, 1.0F - glm::dot(off, off))));
    const float key = matt(normal, kLamp) * (0.25F + 0.75F * lit);
    const float bounce = power(matt(normal, kBounce), 1.5F);
    const float edge = power(1.0F - normal.z, 3.0F);
    const float contact = softStep(0.0F, 0.45F, normal.z);
    const float glint = softStep(0.45F, 0.90F, glossy(normal, kLamp, 26.0F)) * lit;
    const float sheen = 0.35F * glossy(normal, kLamp, 7.0F) * lit;
    const glm::vec3 depth = bead.lacquer * bead.lacquer; // lacquer is redder where it is darker
    const glm::vec3 body = glm::mix(depth * 0.35F, bead.lacquer, key) * contact;
    return body + bead.lacquer * sheen + kWarmBounce * 0.30F * bounce * contact +
           kSky * 0.30F * edge * contact + kGlint * glint;
}

void makeBeads(const OutputFolder& folder)
{
    const std::vector<Bead> beads = packBeads();
    const Raster<Top> tops = pileUp(beads);
    Picture fine(kFineSize, kFineSize);
    fine.fill([&](int x, int y) {
        const Top& top = tops.at(x, y);
        if (top.bead < 0) {
            return glm::vec4(kGap, 1.0F);
        }
        const Bead& bead = beads[static_cast<std::size_t>(top.bead)];
        const glm::vec2 place = glm::vec2(x, y) / static_cast<float>(kFiner);
        const glm::vec2 off = wayTo(place, bead.centre) / (bead.radius * kSqueeze);
        const glm::vec3 shaded = shadeBead(bead, off, litness(tops, x, y));
        return glm::vec4(glm::clamp(shaded, 0.0F, 1.0F), 1.0F);
    });
    folder.write(fine.shrunk(kFiner), 24, "oranssipallotexture2.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeBeads);
}
