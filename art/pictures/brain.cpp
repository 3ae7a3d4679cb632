// A brain from the side, made of light. Two substances react and spread inside its lobes until
// they have settled into a labyrinth; its walls are the folds. They are lit like flesh, rose where
// the light falls and violet in the shade, and threaded with fibres; nerves rise from the stem and
// end in sparks. Dozens of copies are added on screen, so one alone is faint, and most of it is
// dark: what is to be seen when the copies scatter has to be thin and bright.
#include "art/pictures/brain_anatomy.h"
#include "art/pictures/brain_folds.h"
#include "art/pictures/brain_nerves.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <span>

namespace brain {
namespace {

constexpr int kSeed = 3;
constexpr int kCells = 128; // of the reaction, across the picture
constexpr int kFine = 2;    // lit twice as large
constexpr int kFineSize = kFine * kSize;

constexpr float kPeak = 0.195F; // what the picture may hold without burning out in its scene

constexpr glm::vec3 kLight{-0.5F, -0.65F, 0.78F};
constexpr float kLobeHeight = 70.0F; // pixels of the fine size
constexpr float kFoldHeight = 10.0F;

constexpr glm::vec3 kIndigo{0.22F, 0.08F, 0.82F};
constexpr glm::vec3 kViolet{0.36F, 0.08F, 1.00F};
constexpr glm::vec3 kRose{1.00F, 0.20F, 0.45F};
constexpr glm::vec3 kHot{1.00F, 0.42F, 0.66F};

GreyPicture filled(std::span<const Point> points)
{
    VectorLayer layer(kSize, kSize);
    addCurve(layer.pen(), points, true);
    cairo_fill(layer.pen());
    return layer.coverage();
}

// A fissure: strokes along it, each of which ends sooner and is wider than the one before.
GreyPicture closing(std::span<const Point> points, double widest)
{
    VectorLayer layer(kSize, kSize);
    cairo_t* pen = layer.pen();
    cairo_set_line_cap(pen, CAIRO_LINE_CAP_ROUND);
    for (std::size_t count = points.size(); count >= 2; --count) {
        const auto share = static_cast<double>(points.size() - count + 1);
        cairo_set_line_width(pen, widest * share / static_cast<double>(points.size() - 1));
        addCurve(pen, points.first(count), false);
        cairo_stroke(pen);
    }
    return layer.coverage();
}

// How high a membrane over an outline stands when it is blown up (Poisson's equation, solved by
// over-relaxation), steepened so that it is upright at the rim. 1 is more than the highest.
GreyPicture swollen(const GreyPicture& outline)
{
    constexpr int kPasses = 500;
    constexpr float kHaste = 1.93F;
    constexpr float kHighest = 62.0F;
    GreyPicture swelling(kSize, kSize);
    for (int pass = 0; pass < kPasses; ++pass) {
        for (int y = 1; y < kSize - 1; ++y) {
            for (int x = 1; x < kSize - 1; ++x) {
                const float around = swelling.at(x - 1, y) + swelling.at(x + 1, y) +
                                     swelling.at(x, y - 1) + swelling.at(x, y + 1);
                float& here = swelling.at(x, y);
                const float next = here + kHaste * (0.25F * (around + 1.0F) - here);
                here = outline.at(x, y) < 0.5F ? 0.0F : next;
            }
        }
    }
    swelling.fill(
        [&](int x, int y) { return std::sqrt(std::max(0.0F, swelling.at(x, y))) / kHighest; });
    return swelling;
}

GreyPicture larger(const GreyPicture& a, const GreyPicture& b)
{
    GreyPicture result(a.width(), a.height());
    result.fill([&](int x, int y) { return std::max(a.at(x, y), b.at(x, y)); });
    return result;
}

// Coverage by the parts of a brain, and the form of the whole.
struct Anatomy {
    GreyPicture cortex; // without the fissures
    GreyPicture cerebellum = filled(kCerebellum);
    GreyPicture stem = filled(kStem);
    GreyPicture swelling;
};

Anatomy drawAnatomy()
{
    const GreyPicture lobes = larger(filled(kUpperLobes), filled(kTemporalLobe));
    const GreyPicture fissures =
        larger(closing(kLateralFissure, 7.0),
               larger(closing(kCentralFissure, 3.5), closing(kBackFissure, 5.0)));
    Anatomy anatomy{.cortex = lobes, .swelling = lobes};
    anatomy.cortex.fill([&](int x, int y) { return lobes.at(x, y) * (1.0F - fissures.at(x, y)); });

    // The fissures part the cortex only half.
    const GreyPicture whole = swollen(lobes);
    const GreyPicture parted = swollen(anatomy.cortex);
    const GreyPicture below = larger(swollen(anatomy.cerebellum), swollen(anatomy.stem));
    anatomy.swelling.fill([&](int x, int y) {
        return std::max(0.5F * (whole.at(x, y) + parted.at(x, y)), below.at(x, y));
    });
    return anatomy;
}

// Folds are broadest where the brain faces the viewer.
Raster<Tissue> tissueOf(const Anatomy& anatomy)
{
    constexpr float kStep = static_cast<float>(kSize) / kCells;
    Raster<Tissue> tissue(kCells, kCells, Tissue());
    tissue.fill([&](int x, int y) {
        const glm::vec2 place = kStep * glm::vec2(x, y) + 0.5F;
        const float swelling = anatomy.swelling.sample(place.x, place.y);
        return Tissue{0.42F + 0.58F * softStep(0.3F, 0.85F, swelling),
                      anatomy.cortex.sample(place.x, place.y)};
    });
    return tissue;
}

// The picture between its pixels, smoother than it is: by cubic B-splines.
float splined(const GreyPicture& picture, float x, float y)
{
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const auto weights = [](float t) {
        const float s = 1.0F - t;
        return std::array{s * s * s / 6.0F, (4.0F - 6.0F * t * t + 3.0F * t * t * t) / 6.0F,
                          (4.0F - 6.0F * s * s + 3.0F * s * s * s) / 6.0F, t * t * t / 6.0F};
    };
    const auto across = weights(x - static_cast<float>(left));
    const auto down = weights(y - static_cast<float>(top));
    float sum = 0.0F;
    for (int i = 0; i < 16; ++i) {
        sum += across[static_cast<std::size_t>(i % 4)] * down[static_cast<std::size_t>(i / 4)] *
               picture.wrapped(left - 1 + i % 4, top - 1 + i / 4);
    }
    return sum;
}

// At the fine size, and bent, since nothing in a body is straight.
GreyPicture enlarged(const GreyPicture& picture)
{
    constexpr int kBends = 13;    // across the picture
    constexpr float kBend = 4.5F; // pixels
    const float step = static_cast<float>(picture.width()) / kSize;
    GreyPicture result(kFineSize, kFineSize);
    result.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFine);
        const glm::ivec2 period(kBends);
        const glm::vec2 where = place * (static_cast<float>(kBends) / kSize);
        const glm::vec2 bend(fractalNoise(where, period, 2, kSeed + 2),
                             fractalNoise(where, period, 2, kSeed + 5));
        const glm::vec2 from = (place + kBend * bend) * step - 0.5F;
        return splined(picture, from.x, from.y);
    });
    return result;
}

// The folds of the cerebellum: leaves that spread from the stem. From 0 to 1, as the others.
float leafAt(glm::vec2 place)
{
    constexpr float kLeaves = 72.0F; // in a full turn
    const glm::ivec2 period(12);
    const glm::vec2 where = place * (12.0F / kSize);
    const glm::vec2 off = place - glm::vec2(112, 166);
    const float turn =
        angleOf(off.x, off.y) / kFullTurn + 0.012F * fractalNoise(where, period, 2, kSeed + 12);
    return 0.5F + 0.5F * sine(kFullTurn * kLeaves * turn);
}

// The heights of all folds; the cerebellum and the stem stand behind the cortex.
GreyPicture foldsOf(const Anatomy& anatomy)
{
    const GreyPicture grown = enlarged(growFolds(tissueOf(anatomy), kSeed));
    const GreyPicture near = enlarged(blurred(anatomy.cortex, 1));
    const GreyPicture cerebellum = enlarged(anatomy.cerebellum);
    const GreyPicture stem = enlarged(anatomy.stem);
    GreyPicture folds(kFineSize, kFineSize);
    folds.fill([&](int x, int y) {
        const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFine);
        const float behind = softStep(0.2F, 0.0F, near.at(x, y));
        const float leaves = cerebellum.at(x, y) * (0.25F + 0.75F * leafAt(place));
        const float pons = stem.at(x, y) * (0.62F + 0.1F * sine(0.9F * place.y - 0.3F * place.x));
        return std::max(grown.at(x, y), behind * std::max(leaves, pons));
    });
    return folds;
}

// How near a place is to the crest of a fold (1 on it, 0 some pixels away), from how the height
// curves across the fold (the Hessian's lesser eigenvalue): on a crest the slope that way is zero.
float crestAt(const GreyPicture& folds, int x, int y)
{
    constexpr int kReach = 3;
    constexpr float kWidth = 2.0F; // pixels of the fine size
    const auto at = [&](int i, int j) { return folds.wrapped(x + i * kReach, y + j * kReach); };
    const glm::vec2 slope(0.5F * (at(1, 0) - at(-1, 0)), 0.5F * (at(0, 1) - at(0, -1)));
    const float xx = at(1, 0) + at(-1, 0) - 2.0F * at(0, 0);
    const float yy = at(0, 1) + at(0, -1) - 2.0F * at(0, 0);
    const float xy = 0.25F * (at(1, 1) + at(-1, -1) - at(1, -1) - at(-1, 1));
    const float spread = std::sqrt(0.25F * (xx - yy) * (xx - yy) + xy * xy);
    const float curving = std::min(0.5F * (xx + yy) - spread, -0.02F);
    const float across = 0.5F * angleOf(xx - yy, 2.0F * xy) + 0.25F * kFullTurn;
    const float steepness = slope.x * cosine(across) + slope.y * sine(across);
    const float off = kReach * steepness / curving / kWidth;
    return std::min(1.0F, -curving / 0.2F) * exponential(-off * off);
}

// Fibres that run along the folds: one on the crest, lit by signals, and lines of equal height.
float fibreAt(const GreyPicture& folds, int x, int y, float signal)
{
    constexpr std::array kLevels{0.3F, 0.55F};
    const float fold = folds.at(x, y);
    const glm::vec2 slope(folds.wrapped(x + 1, y) - folds.wrapped(x - 1, y),
                          folds.wrapped(x, y + 1) - folds.wrapped(x, y - 1));
    float fibre = crestAt(folds, x, y) * softStep(0.12F, 0.6F, fold) * (0.35F + 0.65F * signal);
    for (const float level : kLevels) {
        const float off = (fold - level) / (0.5F * glm::length(slope) + 0.002F);
        fibre = std::max(fibre, 0.35F * exponential(-off * off));
    }
    return fibre;
}

// What shines at a place.
struct Shine {
    float form;   // light on the brain as a whole
    float key;    // on its folds
    float rim;    // that comes from behind
    float body;   // how much of a fold there is, not furrow
    float signal; // travelling along fibres
    float fibre;
    float nerve;
};

glm::vec3 glow(const Shine& shine)
{
    const float large = shine.form * shine.form;
    const float heat = power(shine.key, 2.6F) * (0.2F + large);
    const glm::vec3 flesh = glm::mix(0.34F * kViolet, 0.6F * kRose, softStep(0.1F, 0.9F, heat));
    const glm::vec3 thread =
        glm::mix(kViolet, glm::mix(kRose, kHot, large * shine.signal), softStep(0.1F, 0.6F, heat));
    const glm::vec3 light = flesh * shine.body * (0.07F + 0.93F * heat) +
                            kIndigo * 0.45F * shine.rim * shine.body +
                            thread * shine.fibre * (0.4F + 1.6F * heat);
    const glm::vec3 nerve = glm::mix(kViolet, kRose, softStep(0.35F, 0.9F, shine.nerve));
    return glm::max(light, nerve * shine.nerve);
}

void makeBrain(const OutputFolder& folder)
{
    const Anatomy anatomy = drawAnatomy();
    const GreyPicture swelling = enlarged(anatomy.swelling);
    const GreyPicture folds = foldsOf(anatomy);
    const GreyPicture nerves = drawNerves(kFine, 5);
    GreyPicture relief(kFineSize, kFineSize);
    relief.fill([&](int x, int y) {
        const float round = std::sqrt(softStep(0.05F, 1.1F, folds.at(x, y)));
        return kLobeHeight * swelling.at(x, y) + kFoldHeight * round;
    });

    Raster<Shine> shines(kFineSize, kFineSize, Shine());
    shines.fill([&](int x, int y) {
        const glm::vec3 normal = normalAt(relief, x, y, 1.0F);
        const glm::vec2 place = glm::vec2(x, y) * (20.0F / kFineSize);
        const float signal = softStep(-0.1F, 0.4F, noise(place, glm::ivec2(20), kSeed + 1));
        return Shine{.form = matt(normalAt(swelling, x, y, 90.0F), kLight),
                     .key = matt(normal, kLight),
                     .rim = power(1.0F - normal.z, 2.0F),
                     .body = softStep(0.12F, 0.6F, folds.at(x, y)),
                     .signal = signal,
                     .fibre = fibreAt(folds, x, y, signal),
                     .nerve = nerves.at(x, y)};
    });
    Picture picture(kFineSize, kFineSize);
    picture.fill([&](int x, int y) {
        return glm::vec4(kPeak * glm::min(glow(shines.at(x, y)), glm::vec3(1.0F)), 1.0F);
    });
    folder.write(picture.shrunk(kFine), 24, "additiivinen_aivo.tga");

    // The way there, and what a dozen copies look like.
    const auto keep = [&](const char* name, auto valueAt) {
        GreyPicture stage(kFineSize, kFineSize);
        stage.fill([&](int x, int y) { return valueAt(shines.at(x, y)); });
        folder.keepStage(stage, name);
    };
    relief.fill([&](int x, int y) { return 1.5F * swelling.at(x, y); });
    folder.keepStage(relief, "brain-1-lobes.tga");
    folder.keepStage(folds, "brain-2-folds.tga");
    keep("brain-3-light.tga", [](const Shine& shine) { return shine.key * shine.body; });
    keep("brain-4-threads.tga",
         [](const Shine& shine) { return std::max(shine.fibre, shine.nerve); });
    picture.fill([&](int x, int y) { return 9.0F * picture.at(x, y); });
    folder.keepStage(picture, "brain-5-finished.tga");
}

} // namespace
} // namespace brain

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, brain::makeBrain);
}
