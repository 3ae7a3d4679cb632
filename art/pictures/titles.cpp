// The titles of the column's scene: ivory letters with a line engraved along the inside of their
// edges, on a narrow dark ground of their own, since they lie on the landscape, the column and each
// other. Pure black is what the scene takes out.
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
    double left; // of the letters; together they keep to one left edge and share base lines
    double baseline;
    double capHeight;
    Weight weight;
    double ground;    // how far the dark ground reaches beyond the letters
    double engraving; // how far inside the edge the line lies; 0 is none
};

constexpr std::array kTitles = {
    Title{"the.tga",       "THE",       128, 32,  34,  28,  24,  Weight::kBook,    2,   0  },
    Title{"end.tga",       "END",       256, 64,  34,  58,  54,  Weight::kBold,    2.5, 3.6},
    Title{"kso.tga",       "KSO",       256, 128, 31,  123, 112, Weight::kBold,    2.5, 6.5},
    Title{"by.tga",        "BY",        64,  32,  22,  26,  20,  Weight::kRegular, 4,   0  },
    Title{"velmorant.tga", "VELMORANT", 512, 64,  164, 43,  38,  Weight::kBold,    3,   0  },
};

const glm::vec3 kIvory = colour(0xfbf6e8);
const glm::vec3 kIvoryBelow = colour(0xdfe1d6);
const glm::vec3 kEngraved = colour(0x7f97a0);
const glm::vec3 kGround = colour(0x04070c); // never pure black
constexpr double kLineWidth = 1.3;

// The letters' inside, or everything closer to their edge than a distance, on both sides.
GreyPicture letters(const Title& title, double distanceFromEdge)
{
    VectorLayer layer(title.width, title.height);
    layer.addType(title.word, title.left, title.baseline, title.capHeight, title.weight);
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
