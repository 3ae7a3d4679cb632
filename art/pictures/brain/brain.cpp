// A brain made of light, hanging in its nerves like a jellyfish, seen from so near that close folds
// are large and far ones small. A lamp behind it catches little but crests on one side; furrows are
// black, the other side is dark with a cold rim. Dozens of copies are added on screen, so one alone
// is faint; light and dark lie in large areas, so that both are still there when the copies
// scatter, and every nerve becomes a comet's tail.
#include "art/pictures/brain/folds.h"
#include "art/pictures/brain/nerves.h"
#include "art/pictures/brain/view.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace brain {

namespace {

constexpr float kPeak = 0.195F; // what the picture may hold without burning out in its scene
constexpr int kFoldSeed = 14;
constexpr int kNerveSeed = 25;
constexpr int kFine = 4; // drawn with this many pixels for one of the scene's
constexpr int kKept = 2; // written with this many
constexpr int kFineSize = kFine * kSize;

constexpr glm::vec3 kKey{-0.60F, 0.78F, 0.12F}; // right, up, toward the viewer
constexpr glm::vec3 kUnder{-0.20F, -0.90F, 0.38F};
constexpr glm::vec3 kCold{0.92F, -0.38F, 0.02F};

constexpr glm::vec3 kDusk{0.55F, 0.20F, 0.90F};
constexpr glm::vec3 kIce{0.14F, 0.36F, 1.00F};
constexpr std::array<glm::vec3, 5> kFlesh{
    {{0.03F, 0.01F, 0.10F},
     {0.27F, 0.06F, 0.50F},
     {0.74F, 0.17F, 0.62F},
     {1.00F, 0.42F, 0.56F},
     {1.00F, 0.82F, 0.74F}}
};
constexpr std::array<glm::vec3, 3> kNerve{
    {{0.08F, 0.18F, 0.75F}, {0.45F, 0.22F, 1.00F}, {1.00F, 0.72F, 0.95F}}
};
constexpr glm::vec3 kEmber{1.00F, 0.52F, 0.16F};

// What shines at a place.
struct Shine {
    float key;   // light on the crests
    float rim;   // cold light from the other side
    float under; // that comes from the nerves
    float nerve;
    float spark;
};

Shine shineOf(const Sight& sight)
{
    const float crest = softStep(0.05F, 0.45F, sight.crest) * sight.open;
    const float large = softStep(-0.25F, 0.75F, glm::dot(sight.form, glm::normalize(kKey)));
    const float lit = power(matt(sight.normal, kKey), 2.2F);
    const float wet = glossy(sight.normal, kKey, 26.0F);
    const float near = 0.30F + 0.70F * sight.near;
    const float key =
        (0.20F + 0.80F * large) * (0.05F * sight.open + crest * (1.75F * lit + 1.1F * wet));
    const float under = crest * power(matt(sight.normal, kUnder), 2.5F) * (1.0F - large);
    const float rim = crest * power(matt(sight.normal, kCold), 1.7F) * (1.0F - 0.6F * large);
    return {.key = near * key, .rim = rim, .under = under, .nerve = 0.0F, .spark = 0.0F};
}

glm::vec3 glow(const Shine& shine)
{
    const glm::vec3 flesh = ramp(kFlesh, shine.key) * softStep(0.0F, 0.08F, shine.key);
    const glm::vec3 shade = 1.25F * kIce * shine.rim + 0.24F * kDusk * shine.under;
    const glm::vec3 nerve = ramp(kNerve, shine.nerve) * shine.nerve;
    return glm::max(flesh + shade, nerve) + kEmber * shine.spark;
}

// Nerves rise behind the brain and hang before it.
Raster<Shine> shinesOf(const Raster<Sight>& sights, const Nerves& nerves)
{
    constexpr float kBehind = 112.0F * kFine; // rows
    constexpr float kBefore = 160.0F * kFine;
    Raster<Shine> shines(kFineSize, kFineSize, Shine());
    shines.fill([&](int x, int y) {
        const Sight& sight = sights.at(x, y);
        const bool isPast = sight.covered == 0.0F;
        const float free = isPast ? 1.0F : softStep(kBehind, kBefore, static_cast<float>(y));
        Shine shine = isPast ? Shine() : shineOf(sight);
        shine.nerve = free * nerves.cold.at(x, y);
        shine.spark = free * nerves.warm.at(x, y);
        return shine;
    });
    return shines;
}

template <typename Function>
void keep(const OutputFolder& folder, const char* name, const Function& valueAt)
{
    GreyPicture stage(kFineSize, kFineSize);
    stage.fill(valueAt);
    folder.keepStage(stage.shrunk(kFine / kKept), name);
}

// The way to the picture, and what a dozen copies of it look like.
void keepStages(const OutputFolder& folder, const Raster<Sight>& sights,
                const Raster<Shine>& shines, const Picture& fine)
{
    keep(folder, "brain-1-form.tga",
         [&](int x, int y) { return sights.at(x, y).covered * matt(sights.at(x, y).form, kKey); });
    keep(folder, "brain-2-folds.tga", [&](int x, int y) { return sights.at(x, y).crest; });
    keep(folder, "brain-3-light.tga", [&](int x, int y) { return shines.at(x, y).key; });
    keep(folder, "brain-4-nerves.tga",
         [&](int x, int y) { return std::max(shines.at(x, y).nerve, shines.at(x, y).rim); });
    Picture bright(kFineSize, kFineSize);
    bright.fill([&](int x, int y) { return 9.0F * fine.at(x, y); });
    folder.keepStage(bright.shrunk(kFine / kKept), "brain-5-finished.tga");
}

void makeBrain(const OutputFolder& folder)
{
    const Raster<Sight> sights = see(Folds(kFoldSeed), kFine);
    const Raster<Shine> shines = shinesOf(sights, drawNerves(kFine, kNerveSeed));
    Picture fine(kFineSize, kFineSize);
    fine.fill([&](int x, int y) {
        return glm::vec4(kPeak * glm::min(glow(shines.at(x, y)), glm::vec3(1.0F)), 1.0F);
    });
    keepStages(folder, sights, shines, fine);
    folder.write(fine.shrunk(kFine / kKept), 24, "additiivinen_aivo.tga");
}

} // namespace

} // namespace brain

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, brain::makeBrain);
}
