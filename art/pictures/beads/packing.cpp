#include "art/pictures/beads/packing.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/picture.h"

#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace beads {

namespace {

constexpr float kUneven = 0.10F;  // how far a radius is from its size
constexpr float kSqueeze = 1.05F; // beads press into one another a little
constexpr float kSunken = 0.45F;  // how high a bead's middle lies, in radii
constexpr float kSunkenJewel = 0.1F;
constexpr float kReach = 30.0F; // how far beads shade and mirror each other

// Amber, and black opal. Their shares are those of the light that they gather.
const std::array kStones = {
    Lacquer{colour(0xffa81c), colour(0x8c2400), 1.0F},
    Lacquer{colour(0xff5a10), colour(0x0a080c), 0.5F},
};
const std::array kLacquers = {
    Lacquer{colour(0xffb838), colour(0xc04804), 0.22F},
    Lacquer{colour(0xff8c20), colour(0xb02c04), 0.30F},
    Lacquer{colour(0xff6814), colour(0x981804), 0.19F},
    Lacquer{colour(0xd02808), colour(0x5c0804), 0.10F},
    Lacquer{colour(0x16161c), colour(0x060608), 0.19F},
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
    const float y = random.between(0.0F, kPeriod);
    return {pattern, glm::normalize(axis), glm::vec2(random.between(0.0F, kPeriod), y)};
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

// The place where a bead of this radius fits and lies closest to two others; x is -1 if it fits
// nowhere.
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

// Of some places, the one that lies farthest from all beads: apart, but in no order.
glm::ivec2 lonely(const Raster<Gaps>& gaps, Random& random)
{
    constexpr int kPlaces = 9;
    glm::ivec2 best(0);
    for (int i = 0; i < kPlaces; ++i) {
        const float y = random.next() * kRoomHeight;
        const glm::ivec2 place(glm::vec2(random.next() * kRoomWidth, y));
        if (gaps.at(place.x, place.y).nearest >= gaps.at(best.x, best.y).nearest) {
            best = place;
        }
    }
    return best;
}

// The size of the next bead, as an index into kRadii: of those that may still fit.
std::size_t pickSize(std::size_t smallest, Random& random)
{
    const float chance = random.next();
    const std::size_t wanted = chance < 0.34F ? 0 : chance < 0.72F ? 1 : 2;
    return glm::max(wanted, smallest);
}

Bead makeBead(glm::vec2 place, float radius, Random& random)
{
    const float height = radius * (kSunken + random.between(-0.15F, 0.15F));
    const Lacquer& lacquer = pickLacquer(random.next());
    return {glm::vec3(place, height), radius, lacquer, false, pickEngraving(random)};
}

Bead makeJewel(glm::vec2 place, std::size_t number, Random& random)
{
    const float radius = kJewel * random.between(0.8F, 1.0F);
    const float turn = kFullTurn * random.next();
    const float y = random.between(0.0F, kPeriod);
    const Engraving fibres{Pattern::kFibres, glm::vec3(cosine(turn), sine(turn), 0.0F),
                           glm::vec2(random.between(0.0F, kPeriod), y)};
    return {glm::vec3(place, radius * kSunkenJewel), radius, kStones[number % kStones.size()], true,
            fibres};
}

void addTo(Raster<Gaps>& gaps, const Bead& bead)
{
    for (int y = 0; y < kRoomHeight; ++y) {
        for (int x = 0; x < kRoomWidth; ++x) {
            const glm::vec2 way = shortestWay(glm::vec2(x, y) - glm::vec2(bead.middle), kRoom);
            gaps.at(x, y).add(glm::length(way) - bead.radius);
        }
    }
}

} // namespace

std::vector<Bead> packBeads()
{
    std::vector<Bead> beads;
    Random random(kSeed);
    Raster<Gaps> gaps(kRoomWidth, kRoomHeight, Gaps());
    for (std::size_t i = 0; i < kJewels; ++i) {
        beads.push_back(makeJewel(lonely(gaps, random), i, random));
        addTo(gaps, beads.back());
    }
    std::size_t smallest = 0; // of the sizes that may still fit
    while (smallest < kRadii.size()) {
        const std::size_t size = pickSize(smallest, random);
        const float radius = kRadii[size] * (1.0F + kUneven * random.between(-1.0F, 1.0F));
        const glm::ivec2 place = snuggest(gaps, radius);
        if (place.x < 0) {
            smallest = size == smallest ? smallest + 1 : smallest;
            continue;
        }
        beads.push_back(makeBead(place, radius, random));
        addTo(gaps, beads.back());
    }
    return beads;
}

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

} // namespace beads
