// The light inside the tube, looked up by the direction that the wall faces: a warm lamp, a cold
// edge behind it and darkness between. It multiplies the tube's skin.
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"

#include <array>
#include <glm/common.hpp>

namespace {

constexpr int kSize = 256;
constexpr int kSeed = 21;

constexpr glm::vec2 kLamp{0.40F, 0.42F}; // shares of the picture
constexpr int kRipples = 6;              // across the picture

const std::array kWarm = {colour(0x20130f), colour(0x583a24), colour(0xb88850),
                          colour(0xffc468), colour(0xfff0c8), colour(0xffffff)};
const glm::vec3 kCold = colour(0x9cc8ff);

// Closeness to the lamp on a picture that tiles: 1 under it, 0 farthest away.
float closeness(glm::vec2 fromLamp)
{
    return 0.5F + 0.25F * (cosine(kFullTurn * fromLamp.x) + cosine(kFullTurn * fromLamp.y));
}

glm::vec3 lightAt(glm::vec2 place)
{
    const glm::ivec2 period(kRipples);
    const glm::vec2 ripples = place * static_cast<float>(kRipples);
    const glm::vec2 bend(noise(ripples, period, kSeed), noise(ripples, period, kSeed + 1));
    const glm::vec2 fromLamp = place + 0.02F * bend - kLamp;
    const float caustic = power(ridgedNoise(ripples, period, 2, kSeed + 2), 4.0F);
    const float warm = softStep(0.36F, 0.98F, closeness(fromLamp)) * (0.85F + 0.25F * caustic);

    const float offEdge = (closeness(fromLamp) - 0.21F) / 0.085F;
    const float below = 0.5F + 0.5F * sine(kFullTurn * (fromLamp.x + fromLamp.y - 0.12F));
    const float edge = exponential(-offEdge * offEdge) * below;
    return ramp(kWarm, warm) + kCold * edge * (0.95F + 0.4F * caustic);
}

void makeLight(const OutputFolder& folder)
{
    Picture picture(kSize, kSize);
    picture.fill([](int x, int y) {
        return glm::vec4(lightAt(glm::vec2(x, y) / static_cast<float>(kSize)), 1.0F);
    });
    folder.write(picture, 24, "valo.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeLight);
}
