#include "art/pictures/brain/nerves.h"

#include "art/pictures/brain/anatomy.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

constexpr int kNerves = 13;

using Curve = std::array<glm::vec2, 4>; // cubic

glm::vec2 along(const Curve& curve, float t)
{
    const float s = 1.0F - t;
    return s * s * s * curve[0] + 3.0F * s * s * t * curve[1] + 3.0F * s * t * t * curve[2] +
           t * t * t * curve[3];
}

// A thread's place at t (0 to 1): it trembles a little about its curve.
glm::vec2 threadAt(const Curve& curve, float t, int seed)
{
    const float wave = t * 12.0F;
    const glm::vec2 tremble(noise({wave, 0.5F}, {64, 8}, seed), noise({wave, 3.5F}, {64, 8}, seed));
    return along(curve, t) + 1.3F * tremble;
}

// One of a thread's ends.
struct End {
    float width;
    float light;
};

// A picture of light, `fine` times as large as the finished one, in whose pixels all places and
// radii are.
class Glow {
public:
    explicit Glow(int fine) : fine_(static_cast<float>(fine)), picture_(fine * kSize, fine * kSize)
    {
    }

    // A dot, kept where nothing brighter is.
    void addDot(glm::vec2 place, float radius, float light)
    {
        const glm::vec2 middle = place * fine_ - 0.5F;
        const float wide = radius * fine_;
        const glm::ivec2 first(glm::floor(middle - 2.5F * wide));
        const glm::ivec2 last(glm::ceil(middle + 2.5F * wide));
        for (int y = std::max(first.y, 0); y <= std::min(last.y, picture_.height() - 1); ++y) {
            for (int x = std::max(first.x, 0); x <= std::min(last.x, picture_.width() - 1); ++x) {
                const glm::vec2 off = (glm::vec2(x, y) - middle) / wide;
                float& here = picture_.at(x, y);
                here = std::max(here, light * exponential(-glm::dot(off, off)));
            }
        }
    }

    // A thread, its width and its light going from one end's to the other's.
    void addThread(const Curve& curve, int seed, End from, End to)
    {
        constexpr int kDots = 600;
        for (int i = 0; i <= kDots; ++i) {
            const float t = static_cast<float>(i) / kDots;
            addDot(threadAt(curve, t, seed), glm::mix(from.width, to.width, t),
                   glm::mix(from.light, to.light, t));
        }
    }

    [[nodiscard]] const GreyPicture& picture() const { return picture_; }

private:
    float fine_;
    GreyPicture picture_;
};

struct Nerve {
    float side; // its place in the bundle, -1 left to 1 right
    float light;
    int seed;

    [[nodiscard]] End dim() const { return {0.55F, 0.32F * light}; }
    [[nodiscard]] glm::vec2 waist() const { return {159.0F + 4.5F * side, 212.0F}; } // of the stem
    [[nodiscard]] glm::vec2 root() const { return {146.0F + 9.0F * side, 170.0F}; }  // of the lobes
};

constexpr glm::vec2 kLean(5.0F, 18.0F); // of the stem

// In the stem, from its waist up to where it enters the lobes.
void drawRise(const Nerve& nerve, Glow& glow)
{
    glow.addThread({nerve.waist(), nerve.waist() - kLean, nerve.root() + kLean, nerve.root()},
                   nerve.seed, nerve.dim(), nerve.dim());
}

// Down to where it has been cut.
void drawCutEnd(const Nerve& nerve, Glow& glow, Random& random)
{
    const float side = nerve.side;
    const float fray = random.between(0, 12);
    const glm::vec2 cut(170.0F + 19.0F * side + random.between(-5, 5),
                        250.0F - 14.0F * side * side - fray);
    const glm::vec2 droop(0.4F * side, 9.0F);
    glow.addThread({nerve.waist(), nerve.waist() + kLean, cut - droop, cut}, nerve.seed,
                   nerve.dim(), {0.45F, 0.15F});
    glow.addDot(cut, 0.8F, 0.45F * nerve.light);
}

// Out into the lobes, to a spark, with a signal on its way.
void drawFan(const Nerve& nerve, Glow& glow, Random& random)
{
    const float side = nerve.side;
    const int seed = nerve.seed + kNerves;
    const float angle = (0.22F - 0.31F * (side + random.between(-0.03F, 0.03F))) * kFullTurn;
    const glm::vec2 outward(cosine(angle), -sine(angle));
    const glm::vec2 spark =
        glm::vec2(132, 112) + outward * glm::vec2(100, 84) * random.between(0.55F, 0.95F);
    const glm::vec2 rise = nerve.root() - glm::vec2(6.0F - 8.0F * side, 46.0F);
    const Curve curve{nerve.root(), rise, spark - 38.0F * outward, spark};
    glow.addThread(curve, seed, nerve.dim(), {0.66F, nerve.light});
    glow.addDot(spark, 2.1F, 1.0F);
    glow.addDot(threadAt(curve, random.between(0.25F, 0.8F), seed), 1.5F, 1.0F);
}

} // namespace

GreyPicture drawNerves(int fine, int seed)
{
    Glow glow(fine);
    Random random(static_cast<unsigned>(seed));
    for (int i = 0; i < kNerves; ++i) {
        const float side = 2.0F * static_cast<float>(i) / (kNerves - 1) - 1.0F;
        const Nerve nerve{side, random.between(0.7F, 1.0F), seed + i};
        drawRise(nerve, glow);
        drawCutEnd(nerve, glow, random);
        drawFan(nerve, glow, random);
    }
    return glow.picture();
}

} // namespace brain
