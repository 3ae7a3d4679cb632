// The tube's ten greetings, one in each band of the picture: ivory letters with a faint glow of
// embers. Their alpha is not multiplied into their colours, and the glow's colour goes on where
// alpha ends, so a filtered texture has no dark fringe.
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
constexpr double kLargestCaps = 29.0; // pixels
constexpr double kLongestLine = 230.0;
constexpr double kWordSpace = 0.30; // of a capital's height
constexpr int kNearGlow = 1;        // radii, pixels; three times as far it has ended
constexpr int kFarGlow = 3;

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

const glm::vec3 kIvory = colour(0xfbf4e2);
const glm::vec3 kWarmIvory = colour(0xf2d9ac);
const glm::vec3 kEmber = colour(0xb8400c);

double widthOf(const Greeting& greeting, double capHeight)
{
    return VectorLayer::widthOfType(greeting.light, capHeight, Weight::kBook) +
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
    layer.addType(greeting.light, left, baseline, capHeight, Weight::kBook);
    layer.addType(greeting.bold,
                  left + kWordSpace * capHeight +
                      VectorLayer::widthOfType(greeting.light, capHeight, Weight::kBook),
                  baseline, capHeight, Weight::kBold);
    cairo_fill(layer.pen());
    return layer.coverage();
}

glm::vec4 over(glm::vec3 letter, float cover, glm::vec3 glow, float glowCover)
{
    const float behind = glowCover * (1.0F - cover);
    const float alpha = cover + behind;
    return alpha > 0.0F ? glm::vec4((letter * cover + glow * behind) / alpha, alpha)
                        : glm::vec4(glow, 0.0F);
}

void makeGreetings(const OutputFolder& folder)
{
    Picture picture(kWidth, kHeight, glm::vec4(kEmber, 0.0F));
    for (int line = 0; line < static_cast<int>(kGreetings.size()); ++line) {
        const GreyPicture letters = setLine(kGreetings[static_cast<std::size_t>(line)]);
        const GreyPicture near = blurred(letters, kNearGlow);
        const GreyPicture far = blurred(letters, kFarGlow);
        for (int y = 0; y < kBandHeight; ++y) {
            const float down = softStep(0.3F, 0.8F, static_cast<float>(y) / kBandHeight);
            for (int x = 0; x < kWidth; ++x) {
                const float glow = glm::min(1.0F, 0.45F * near.at(x, y) + 0.75F * far.at(x, y));
                picture.at(x, line * kBandHeight + y) =
                    over(glm::mix(kIvory, kWarmIvory, down), letters.at(x, y), kEmber, glow);
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
