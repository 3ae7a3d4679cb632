// The tube's ten greetings, one in each band of the picture: heavy ivory letters with embers
// glowing at their edges, in a shadow of their own on a dark plate that fades out before the band
// ends, so that they stand clear of bright beads and of dark ones. Their alpha is not multiplied
// into their colours, and the plate's colour goes on where alpha ends, so a filtered texture has no
// fringe.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"
#include "art/type/font.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <string>

namespace {

constexpr int kWidth = 256;
constexpr int kHeight = 512;
constexpr int kBandHeight = 51;
constexpr double kLargestCaps = 35.0; // pixels
constexpr double kLongestLine = 240.0;
constexpr int kGlow = 1; // radii, pixels; three times as far they have ended
constexpr int kShadow = 2;
constexpr float kShadowDepth = 2.8F; // how much darker than letters blurred
constexpr float kPlate = 0.76F;      // its alpha behind the letters
constexpr float kPlateReach = 7.5F;  // how far from them it has ended, pixels
constexpr float kPlateFade = 14.0F;  // from full to nothing

constexpr std::array kGreetings = {
    "THE NIGHT SHIFT",   "SLOW READERS",       "BELL RINGERS",      "PEOPLE WHO HUM",
    "TUNNEL DIGGERS",    "LATE BLOOMERS",      "MENDERS OF RADIOS", "FRIENDS OF OLD DOGS",
    "THE LAST TO LEAVE", "ALL WHO STAY AWAKE",
};

const glm::vec3 kIvory = colour(0xfff8e8);
const glm::vec3 kWarmIvory = colour(0xffeac4);
const glm::vec3 kEmber = colour(0xc84410);
const glm::vec3 kNight = colour(0x12040c);

// A line of letters in the middle of a band.
struct Line {
    GreyPicture letters; // their coverage
    glm::vec2 reach;     // from the middle to their borders, pixels
};

Line setLine(const std::string& greeting)
{
    const double widthOfOne = Font(Weight::kBold).widthOfLine(greeting, 1.0);
    const double capHeight = std::min(kLargestCaps, kLongestLine / widthOfOne);
    const double width = capHeight * widthOfOne;
    VectorLayer layer(kWidth, kBandHeight);
    layer.addType(greeting, (kWidth - width) / 2, (kBandHeight + capHeight) / 2, capHeight,
                  Weight::kBold);
    cairo_fill(layer.pen());
    return {layer.coverage(), 0.5F * glm::vec2(width, capHeight)};
}

float plateAt(glm::vec2 place, glm::vec2 reach)
{
    const glm::vec2 middle = 0.5F * glm::vec2(kWidth - 1, kBandHeight - 1);
    const glm::vec2 outside =
        glm::max(glm::abs(place - middle) - reach + kPlateFade - kPlateReach, 0.0F);
    return kPlate * softStep(kPlateFade, 0.0F, glm::length(outside));
}

glm::vec4 over(glm::vec3 letter, float cover, glm::vec3 ground, float groundCover)
{
    const float behind = groundCover * (1.0F - cover);
    const float alpha = cover + behind;
    return alpha > 0.0F ? glm::vec4((letter * cover + ground * behind) / alpha, alpha)
                        : glm::vec4(ground, 0.0F);
}

void makeGreetings(const OutputFolder& folder)
{
    Picture picture(kWidth, kHeight, glm::vec4(kNight, 0.0F));
    for (int line = 0; line < static_cast<int>(kGreetings.size()); ++line) {
        const auto [letters, reach] = setLine(kGreetings[static_cast<std::size_t>(line)]);
        const GreyPicture glow = blurred(letters, kGlow);
        const GreyPicture shadow = blurred(letters, kShadow);
        for (int y = 0; y < kBandHeight; ++y) {
            const float down = softStep(0.25F, 0.8F, static_cast<float>(y) / kBandHeight);
            for (int x = 0; x < kWidth; ++x) {
                const glm::vec3 ground = glm::mix(kNight, kEmber, 0.7F * glow.at(x, y));
                const float dark = glm::max(plateAt(glm::vec2(x, y), reach),
                                            glm::min(0.95F, kShadowDepth * shadow.at(x, y)));
                picture.at(x, line * kBandHeight + y) =
                    over(glm::mix(kIvory, kWarmIvory, down), letters.at(x, y), ground, dark);
            }
        }
    }
    folder.write(picture, 32, "greet.tga");
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeGreetings);
}
