// A brain from the side, made of light. Two substances react and spread inside its lobes until
// they have settled into a labyrinth; its walls are the folds. They are lit like flesh, rose where
// the light falls and violet in the shade, and threaded with fibres; nerves rise from the stem and
// end in sparks. Dozens of copies are added on screen, so one alone is faint, and most of it is
// dark: what is to be seen when the copies scatter has to be thin and bright.
#include "art/pictures/brain/anatomy.h"
#include "art/pictures/brain/folds.h"
#include "art/pictures/brain/nerves.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

constexpr float kPeak = 0.195F; // what the picture may hold without burning out in its scene

constexpr glm::vec3 kLight{-0.5F, -0.65F, 0.78F};
constexpr float kLobeHeight = 70.0F; // pixels of the fine size
constexpr float kFoldHeight = 10.0F;

constexpr glm::vec3 kIndigo{0.22F, 0.08F, 0.82F};
constexpr glm::vec3 kViolet{0.36F, 0.08F, 1.00F};
constexpr glm::vec3 kRose{1.00F, 0.20F, 0.45F};
constexpr glm::vec3 kHot{1.00F, 0.42F, 0.66F};

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
using Shines = Raster<Shine>;

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

// The height of everything over the picture's plane, in pixels of the fine size.
GreyPicture reliefOf(const GreyPicture& swelling, const GreyPicture& folds)
{
    GreyPicture relief(kFineSize, kFineSize);
    relief.fill([&](int x, int y) {
        const float round = std::sqrt(softStep(0.05F, 1.1F, folds.at(x, y)));
        return kLobeHeight * swelling.at(x, y) + kFoldHeight * round;
    });
    return relief;
}

Shines shinesOf(const GreyPicture& swelling, const GreyPicture& folds)
{
    const GreyPicture relief = reliefOf(swelling, folds);
    const GreyPicture nerves = drawNerves(kFine, 5);
    Shines shines(kFineSize, kFineSize, Shine());
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
    return shines;
}

template <typename Function>
void keep(const OutputFolder& folder, const char* name, const Function& valueAt)
{
    GreyPicture stage(kFineSize, kFineSize);
    stage.fill(valueAt);
    folder.keepStage(stage, name);
}

// The way to the picture, and what a dozen copies of it look like.
void keepStages(const OutputFolder& folder, const GreyPicture& swelling, const GreyPicture& folds,
                const Shines& shines, const Picture& fine)
{
    keep(folder, "brain-1-lobes.tga", [&](int x, int y) { return 1.5F * swelling.at(x, y); });
    folder.keepStage(folds, "brain-2-folds.tga");
    keep(folder, "brain-3-light.tga",
         [&](int x, int y) { return shines.at(x, y).key * shines.at(x, y).body; });
    keep(folder, "brain-4-threads.tga",
         [&](int x, int y) { return std::max(shines.at(x, y).fibre, shines.at(x, y).nerve); });
    Picture bright(kFineSize, kFineSize);
    bright.fill([&](int x, int y) { return 9.0F * fine.at(x, y); });
    folder.keepStage(bright, "brain-5-finished.tga");
}

void makeBrain(const OutputFolder& folder)
{
    const Anatomy anatomy = drawAnatomy();
    const GreyPicture swelling = enlarged(anatomy.swelling);
    const GreyPicture folds = foldsOf(anatomy);
    const Shines shines = shinesOf(swelling, folds);
    Picture fine(kFineSize, kFineSize);
    fine.fill([&](int x, int y) {
        return glm::vec4(kPeak * glm::min(glow(shines.at(x, y)), glm::vec3(1.0F)), 1.0F);
    });
    keepStages(folder, swelling, folds, shines, fine);
    folder.write(fine.shrunk(kFine), 24, "additiivinen_aivo.tga");
}

} // namespace

} // namespace brain

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, brain::makeBrain);
}
