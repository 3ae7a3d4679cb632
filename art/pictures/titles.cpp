// The titles of the column's scene: ivory letters on a narrow night-blue edge of their own, since
// they lie on the landscape and the column. Pure black is what the scene takes out.
//
// BY over VELMORANT and THE over END are one stack, twice: a light line over a bold one, both from
// the same left edge on screen, with the same sizes and the same air between them.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/noise.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"

#include <array>
#include <glm/common.hpp>

namespace {

struct Title {
    const char* file;
    const char* word;
    int width;
    int height;
    double left; // of the first letter's ink
    double baseline;
    double capHeight;
    Weight weight;
    double ground;    // how far the dark ground reaches beyond the letters
    double engraving; // how far inside the edge a line is engraved; 0 is none
};

// The scene puts the pictures at (0, 176), (0, 208), (0, 0), (60, 70) and (80, 80); the stacks'
// left edge is at 84. KSO stands in the middle of its picture: the closing scene burns it into the
// middle of the screen.
constexpr std::array kTitles = {
    Title{"the.tga",       "THE",       128, 32,  84, 29,  15,  Weight::kRegular, 1.4, 0  },
    Title{"end.tga",       "END",       256, 64,  84, 47,  42,  Weight::kBold,    1.4, 0  },
    Title{"kso.tga",       "KSO",       256, 128, 36, 117, 106, Weight::kBold,    1.4, 6.5},
    Title{"by.tga",        "BY",        64,  32,  24, 18,  15,  Weight::kRegular, 1.4, 0  },
    Title{"velmorant.tga", "VELMORANT", 512, 64,  4,  58,  42,  Weight::kBold,    1.4, 0  },
};

const glm::vec3 kIvory = colour(0xfdf8ea);
const glm::vec3 kIvoryBelow = colour(0xe6e5d8);
const glm::vec3 kEngraved = colour(0x7f97a0);
const glm::vec3 kGround = colour(0x0a1219); // the landscape's night; never pure black
constexpr double kLineWidth = 1.3;

// The letters' inside, or everything closer to their edge than a distance, on both sides.
GreyPicture letters(const Title& title, double distanceFromEdge)
{
    VectorLayer layer(title.width, title.height);
    // Letters stand off the left end of their line by their own room; the ink is what aligns.
    double inkLeft = 0.0;
    layer.addType(title.word, 0.0, title.baseline, title.capHeight, title.weight);
    cairo_path_extents(layer.pen(), &inkLeft, nullptr, nullptr, nullptr);
    cairo_new_path(layer.pen());
    layer.addType(title.word, title.left - inkLeft, title.baseline, title.capHeight, title.weight);
    if (distanceFromEdge > 0.0) {
        cairo_set_line_width(layer.pen(), 2.0 * distanceFromEdge);
        cairo_set_line_join(layer.pen(), CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(layer.pen());
    } else {
        cairo_fill(layer.pen());
    }
    return layer.coverage();
}

Picture makeTitle(const Title& title)
{
    const GreyPicture inside = letters(title, 0.0);
    const GreyPicture ground = letters(title, title.ground);
    const GreyPicture upToLine = letters(title, title.engraving);
    const GreyPicture pastLine = letters(title, title.engraving + kLineWidth);
    const bool isEngraved = title.engraving > 0.0;
    const glm::vec3 toLight(-0.6F, -0.7F, 0.6F);
    const glm::ivec2 grain(64, 64);

    Picture picture(title.width, title.height);
    picture.fill([&](int x, int y) {
        if (ground.at(x, y) == 0.0F && inside.at(x, y) == 0.0F) {
            return glm::vec4(0.0F, 0.0F, 0.0F, 1.0F);
        }
        const auto top = static_cast<float>(title.baseline - title.capHeight);
        const float down = (static_cast<float>(y) - top) / static_cast<float>(title.capHeight);
        glm::vec3 letter = glm::mix(kIvory, kIvoryBelow, softStep(0.2F, 1.0F, down));
        if (isEngraved) {
            letter *= 1.0F + 0.03F * fractalNoise(glm::vec2(x, y) / 4.0F, grain, 2, 1);
            const float line = glm::max(0.0F, pastLine.at(x, y) - upToLine.at(x, y));
            letter = glm::mix(letter, kEngraved, line);
            // The edge is bevelled a little: bright toward the light, in shade away from it.
            const float facing = matt(normalAt(inside, x, y, 0.7F), toLight) - 0.55F;
            letter *= 1.0F + 0.4F * glm::min(0.0F, facing);
        }
        return glm::vec4(glm::mix(kGround, letter, inside.at(x, y)), 1.0F);
    });
    return picture;
}

void makeTitles(const OutputFolder& folder)
{
    for (const Title& title : kTitles) {
        folder.write(makeTitle(title), 32, title.file);
    }
}

} // namespace

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, makeTitles);
}
