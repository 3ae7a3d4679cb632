#include "art/pictures/brain/nerves.h"

#include "art/pictures/brain/view.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

constexpr float kStep = 0.5F; // pixels

// How much of the light is left at a place: all in the middle, nothing at the borders or in the
// corners, whose filaments would show that the picture is square.
float left(glm::vec2 place)
{
    constexpr float kRoundness = 5.0F;
    const glm::vec2 off = glm::abs(place / (0.5F * kSize) - 1.0F);
    const float out = power(power(off.x, kRoundness) + power(off.y, kRoundness), 1.0F / kRoundness);
    return softStep(0.985F, 0.86F, out);
}

// Light, in a picture that is `fine` times as large as the scene shows it, in whose pixels all
// places and radii are.
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

    // A spark: a point, and the light around it.
    void addSpark(glm::vec2 place, float size, float light)
    {
        addDot(place, size, light);
        addDot(place, 2.8F * size, 0.16F * light);
    }

    [[nodiscard]] const GreyPicture& picture() const { return picture_; }

private:
    float fine_;
    GreyPicture picture_;
};

struct Tip {
    glm::vec2 place;
    float angle;
    float aim; // the angle that it turns back to
    float light;
    float width;
    float length; // that is left to grow, pixels
};

class Tree {
public:
    Tree(int fine, int seed) : cold_(fine), warm_(fine), random_(static_cast<unsigned>(seed)) {}

    // Lets a nerve grow: it strays, turns back to its aim, carries signals, branches, and ends in a
    // cell.
    void grow(Tip tip, int branches)
    {
        constexpr float kStray = 0.15F;  // radians a step
        constexpr float kReturn = 0.03F; // share of the way back
        constexpr float kWander = 24.0F; // pixels from bend to bend
        constexpr float kRooted = 22.0F; // pixels in which it comes out of the dark
        const float whole = tip.length;
        const float signal = random_.between(0.15F, 0.95F) * whole;
        const int seed = static_cast<int>(1000.0F * random_.next());
        float next = random_.between(0.25F, 0.45F) * whole;
        for (int i = 0; kStep * static_cast<float>(i) < whole; ++i) {
            const float way = kStep * static_cast<float>(i);
            const glm::vec2 bend = (tip.place + 40.0F) / kWander;
            const float off = std::remainder(tip.aim - tip.angle, kFullTurn);
            tip.angle += (kStray * noise(bend, glm::ivec2(64), seed) + kReturn * off) * kStep;
            tip.place += kStep * glm::vec2(cosine(tip.angle), sine(tip.angle));
            const float t = way / whole;
            const float pulse = exponential(-power((way - signal) / 8.0F, 2.0F));
            const float light = left(tip.place) * softStep(-2.0F, kRooted, way) * tip.light *
                                (0.8F - 0.35F * t + 0.6F * pulse);
            cold_.addDot(tip.place, tip.width * (1.0F - 0.55F * t), light);
            if (branches > 0 && way > next) {
                next = way + random_.between(0.2F, 0.38F) * whole;
                const float angle = random_.between(0.3F, 0.75F);
                const float turn = random_.next() < 0.5F ? -angle : angle;
                grow({tip.place, tip.angle + turn, tip.aim + 0.6F * turn, 0.85F * tip.light,
                      tip.width * (0.85F - 0.45F * t),
                      (whole - way) * random_.between(0.55F, 1.0F)},
                     branches - 1);
            }
        }
        addCell(tip);
    }

    [[nodiscard]] Nerves nerves() const { return {cold_.picture(), warm_.picture()}; }

private:
    // A cell: a spark with a few short feelers. Some are warm.
    void addCell(const Tip& tip)
    {
        constexpr int kFeelers = 5;
        const float light = left(tip.place) * (0.35F + 0.5F * tip.light);
        const float size = random_.between(0.9F, 1.9F);
        const bool isWarm = random_.next() < 0.2F;
        (isWarm ? warm_ : cold_).addSpark(tip.place, isWarm ? 1.15F * size : size, light);
        for (int i = 0; i < kFeelers; ++i) {
            const float turn =
                tip.angle + (static_cast<float>(i) - 2.0F + random_.between(-0.4F, 0.4F)) * 0.9F;
            const float length = random_.between(3.0F, 9.0F);
            for (int j = 0; kStep * static_cast<float>(j) < length; ++j) {
                const float way = kStep * static_cast<float>(j);
                const glm::vec2 place = tip.place + way * glm::vec2(cosine(turn), sine(turn));
                cold_.addDot(place, 0.5F, 0.45F * left(place) * light * (1.0F - way / length));
            }
        }
    }

    Glow cold_;
    Glow warm_;
    Random random_;
};

// Where nerves set out and where to. Angles are clockwise from the right, in degrees.
struct Root {
    glm::vec2 place;
    float angle;
    float aim;
    float light;
    float width;
    float length;
    int branches;
};

// clang-format off
constexpr auto kRoots = std::to_array<Root>({
    // the trunk
    {{118, 158}, 100,  96, 1.00F, 2.8F,  94, 2},
    {{121, 168}, 110, 128, 0.90F, 2.2F, 100, 2},
    {{124, 168},  75,  58, 0.90F, 2.2F, 104, 2},
    {{120, 166}, 120, 150, 0.80F, 1.6F, 106, 2},
    {{126, 166},  60,  36, 0.80F, 1.6F, 116, 2},
    // what hangs from under the lobes
    {{ 30, 118}, 120, 118, 0.80F, 1.3F, 132, 1},
    {{ 46, 134}, 120,  98, 0.90F, 1.5F, 120, 2},
    {{ 66, 146}, 100, 112, 0.60F, 0.9F, 104, 1},
    {{ 84, 150}, 105,  92, 0.75F, 1.2F, 104, 1},
    {{102, 158}, 100, 100, 0.55F, 0.9F,  96, 0},
    {{146, 160},  80,  84, 0.65F, 1.0F, 100, 0},
    {{160, 162},  75,  92, 0.80F, 1.3F,  96, 1},
    {{180, 154},  70,  76, 0.95F, 1.7F, 110, 2},
    {{200, 146},  60,  88, 0.60F, 0.9F, 110, 1},
    {{212, 138},  55,  64, 0.80F, 1.4F, 118, 2},
    {{232, 112},  55,  74, 0.70F, 1.2F, 124, 1},
    // what rises behind it
    {{ 40, 104}, 175, 170, 0.70F, 1.0F,  56, 1},
    {{ 40,  84}, 195, 205, 0.75F, 1.1F,  60, 2},
    {{ 50,  66}, 215, 222, 0.80F, 1.2F,  88, 2},
    {{ 76,  48}, 235, 248, 0.80F, 1.2F,  74, 2},
    {{110,  38}, 255, 262, 0.65F, 1.0F,  52, 1},
    {{146,  36}, 275, 284, 0.75F, 1.1F,  60, 2},
    {{176,  38}, 295, 296, 0.60F, 0.9F,  62, 1},
    {{196,  48}, 305, 316, 0.85F, 1.3F,  92, 2},
    {{222,  70}, 325, 332, 0.70F, 1.1F,  66, 2},
    {{232,  98}, 350,   5, 0.60F, 1.0F,  50, 1},
});
// clang-format on

} // namespace

Nerves drawNerves(int fine, int seed)
{
    constexpr float kDegree = kFullTurn / 360.0F;
    Tree tree(fine, seed);
    for (const auto& [place, angle, aim, light, width, length, branches] : kRoots) {
        tree.grow({place, angle * kDegree, aim * kDegree, light, width, length}, branches);
    }
    return tree.nerves();
}

} // namespace brain
