// The light inside the tube, looked up by the direction that the wall faces and by how deep it
// lies: a warm lamp and, across from it, a thinner one as cold as steel, with embers in the brown
// darkness between. It multiplies the tube's skin.
//
// Nearly all of it changes from top to bottom only. Where the tube closes, its last strip shows the
// picture's whole width within a few pixels; there, whatever changes from left to right shows as a
// line.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <array>
#include <glm/common.hpp>

namespace {

constexpr int kSize = 256;
constexpr int kSeed = 21;

// Shares of the picture's height.
constexpr float kWarmPlace = 0.215F;
constexpr float kWarmReach = 0.168F;
constexpr float kColdPlace = 0.79F;
constexpr float kColdReach = 0.130F;
constexpr float kEmberPlace = 0.53F;
constexpr float kEmberReach = 0.10F;
constexpr float kSway = 0.006F; // of all of them, from left to right

constexpr float kStreaks = 0.05F; // how much they brighten and darken the lamps

const std::array kWarm = {colour(0x000000), colour(0x341610), colour(0x844422),
                          colour(0xe4a450), colour(0xffdc94), colour(0xfff8e4)};
const std::array kCold = {colour(0x000000), colour(0x0e0e16), colour(0x262738),
                          colour(0x5a5a78), colour(0x9c9cbe), colour(0xccccea)};
const glm::vec3 kEmber = colour(0x64200e);
const glm::vec3 kDarkness = colour(0x32150e);

// How near a place is to a lamp: 1 at it, 0 where it ends.
float nearness(float place, float lamp, float reach)
{
    return softStep(reach, 0.0F, offWhole(place - lamp));
}

glm::vec3 lightAt(glm::vec2 place)
{
    const glm::ivec2 period(2, 12);
    const float streak = kStreaks * noise(place * glm::vec2(period), period, kSeed);
    const float sway = kSway * cosine(kFullTurn * place.x);
    const float warm = nearness(place.y + sway, kWarmPlace, kWarmReach) + streak;
    const float cold = nearness(place.y - sway, kColdPlace, kColdReach) + streak;
    const float ember = nearness(place.y + sway, kEmberPlace, kEmberReach);
    return ramp(kWarm, warm) + ramp(kCold, cold) + kEmber * ember +
           kDarkness * (1.0F - warm) * (1.0F - cold);
}

void makeLight(const OutputFolder& folder)
{
    Picture picture(kSize, kSize);
    picture.fill([](int x, int y) {
        const glm::vec3 light = lightAt(glm::vec2(x, y) / static_cast<float>(kSize));
        return glm::vec4(glm::min(light, 1.0F), 1.0F);
    });
    folder.write(picture, 24, "valo.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLight);
}
