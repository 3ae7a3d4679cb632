// The tube's ten greetings, one in each band of the picture, all of one height: heavy letters,
// ivory above and gold below, in a glow that ends well before the band does.
//
// The scene lets a line fade for seconds, and what is left of it must not look like dirt. So the
// glow has the tube's own middle colour: over dark beads it is light and over bright ones shade,
// but once it is thin it can no longer be told from them. Alpha is not multiplied into the colours,
// and the glow's colour goes on where alpha ends, so a filtered texture has no fringe.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"
#include "art/type/font.h"

#include <algorithm>
#include <array>
#include <glm/common.hpp>
#include <string>

namespace {

// The scene shows a band on 256 x 51 pixels, this many of the picture's to each.
constexpr int kFiner = 2;
constexpr int kWidth = 256 * kFiner;
constexpr int kHeight = 512 * kFiner;
constexpr int kBandHeight = 51 * kFiner;
constexpr double kLongestLine = 240.0 * kFiner;
constexpr double kNarrowest = 0.86; // that a long line may be drawn, as a share of its width

// Radii; three times as far away a glow has ended.
constexpr int kRim = 1 * kFiner;
constexpr int kGlow = 2 * kFiner + 1;
constexpr float kGlowDepth = 2.3F; // how much denser than letters blurred
constexpr float kDensest = 0.8F;

constexpr std::array kGreetings = {
    "THE NIGHT SHIFT",   "SLOW READERS",       "BELL RINGERS",      "PEOPLE WHO HUM",
    "TUNNEL DIGGERS",    "LATE BLOOMERS",      "MENDERS OF RADIOS", "FRIENDS OF OLD DOGS",
    "THE LAST TO LEAVE", "ALL WHO STAY AWAKE",
};

const glm::vec3 kIvory = colour(0xfff4d6);
const glm::vec3 kGold = colour(0xffd592);
const glm::vec3 kEmber = colour(0xc8480e);
const glm::vec3 kTubesOwn = colour(0x481806);

// The height at which the longest greeting just fits.
double capHeightOfAll()
{
    const Font font(Weight::kBold);
    double longest = 0.0;
    for (const char* greeting : kGreetings) {
        longest = std::max(longest, font.widthOfLine(greeting, 1.0));
    }
    return kLongestLine / (kNarrowest * longest);
}

// The coverage of a line of letters in the middle of a band.
GreyPicture setLine(const std::string& greeting, double capHeight)
{
    const double width = Font(Weight::kBold).widthOfLine(greeting, capHeight);
    VectorLayer layer(kWidth, kBandHeight);
    cairo_translate(layer.pen(), kWidth / 2.0, (kBandHeight + capHeight) / 2);
    cairo_scale(layer.pen(), std::min(1.0, kLongestLine / width), 1.0);
    layer.addType(greeting, -width / 2, 0.0, capHeight, Weight::kBold);
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
    const double capHeight = capHeightOfAll();
    const auto top = static_cast<float>((kBandHeight - capHeight) / 2);
    const float bottom = top + static_cast<float>(capHeight);
    Picture picture(kWidth, kHeight, glm::vec4(kTubesOwn, 0.0F));
    for (int line = 0; line < static_cast<int>(kGreetings.size()); ++line) {
        const GreyPicture letters = setLine(kGreetings[static_cast<std::size_t>(line)], capHeight);
        const GreyPicture rim = blurred(letters, kRim);
        const GreyPicture glow = blurred(letters, kGlow);
        for (int y = 0; y < kBandHeight; ++y) {
            const glm::vec3 letter =
                glm::mix(kIvory, kGold, softStep(top, bottom, static_cast<float>(y)));
            for (int x = 0; x < kWidth; ++x) {
                const glm::vec3 ground = glm::mix(kTubesOwn, kEmber, 0.55F * rim.at(x, y));
                const float density = glm::min(kDensest, kGlowDepth * glow.at(x, y));
                picture.at(x, line * kBandHeight + y) =
                    over(letter, letters.at(x, y), ground, density);
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
