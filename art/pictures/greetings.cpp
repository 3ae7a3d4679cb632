// The tube's ten greetings, one in each band of the picture: heavy ivory letters, each in a shadow
// of its own with embers glowing at its edge, so that they stand clear of bright beads and of dark
// ones. Their alpha is not multiplied into their colours, and the shadow's colour goes on where
// alpha ends, so a filtered texture has no fringe.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <string>

namespace {

constexpr int kWidth = 256;
constexpr int kHeight = 512;
constexpr int kBandHeight = 51;
constexpr double kLargestCaps = 33.0; // pixels
constexpr double kLongestLine = 242.0;
constexpr double kWordSpace = 0.28; // of a capital's height
constexpr int kGlow = 1;            // radii, pixels; three times as far they have ended
constexpr int kShadow = 2;
constexpr float kShadowDepth = 2.8F; // how much darker than letters blurred

// Said lightly, then with weight.
struct Greeting {
    const char* light;
    const char* bold;
};
constexpr auto kGreetings = std::to_array<Greeting>({
    {"THE NIGHT",    "SHIFT"   },
    {"SLOW",         "READERS" },
    {"BELL",         "RINGERS" },
    {"PEOPLE WHO",   "HUM"     },
    {"TUNNEL",       "DIGGERS" },
    {"LATE",         "BLOOMERS"},
    {"MENDERS OF",   "RADIOS"  },
    {"FRIENDS OF",   "OLD DOGS"},
    {"THE LAST",     "TO LEAVE"},
    {"ALL WHO STAY", "AWAKE"   },
});

const glm::vec3 kIvory = colour(0xfff8e8);
const glm::vec3 kWarmIvory = colour(0xffeac4);
const glm::vec3 kEmber = colour(0xc84410);
const glm::vec3 kNight = colour(0x12040c);

double widthOf(const Greeting& greeting, double capHeight)
{
    return VectorLayer::widthOfType(greeting.light, capHeight, Weight::kRegular) +
           kWordSpace * capHeight +
           VectorLayer::widthOfType(greeting.bold, capHeight, Weight::kBold);
}

// The letters' coverage, in the middle of a band.
GreyPicture setLine(const Greeting& greeting)
{
    const double fitting = kLongestLine / widthOf(greeting, 1.0);
    const double capHeight = std::min(kLargestCaps, fitting);
    const double left = (kWidth - widthOf(greeting, capHeight)) / 2;
    const double baseline = (kBandHeight + capHeight) / 2;
    VectorLayer layer(kWidth, kBandHeight);
    layer.addType(greeting.light, left, baseline, capHeight, Weight::kRegular);
    layer.addType(greeting.bold,
                  left + kWordSpace * capHeight +
                      VectorLayer::widthOfType(greeting.light, capHeight, Weight::kRegular),
                  baseline, capHeight, Weight::kBold);
    cairo_fill(layer.pen());
    return layer.coverage();
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
        const GreyPicture letters = setLine(kGreetings[static_cast<std::size_t>(line)]);
        const GreyPicture glow = blurred(letters, kGlow);
        const GreyPicture shadow = blurred(letters, kShadow);
        for (int y = 0; y < kBandHeight; ++y) {
            const float down = softStep(0.25F, 0.8F, static_cast<float>(y) / kBandHeight);
            for (int x = 0; x < kWidth; ++x) {
                const glm::vec3 ground = glm::mix(kNight, kEmber, 0.7F * glow.at(x, y));
                const float dark = glm::min(0.95F, kShadowDepth * shadow.at(x, y));
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
