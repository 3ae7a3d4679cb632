// The titles of the column's scene: ivory letters on a narrow night-blue edge of their own, since
// they lie on the landscape and the column. Pure black is what the scene takes out.
//
// BY over VELMORANT and THE over END are one stack, twice: a light line over a bold one, both from
// the same left edge on screen, with the same sizes and the same air between them.
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"
#include "art/pictures/kit/vector_layer.h"
#include "art/type/font.h"

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
};

// The scene puts the pictures at (0, 176), (0, 208), (0, 0), (60, 70) and (80, 80); all stand on a
// left edge at 84, the slanted V and the T's thin arm a little beyond it, so that they look it. The
// closing scene puts KSO at (192, 60) and burns it into the light around (320, 136), which is close
// to the middle of its letters.
constexpr std::array kTitles = {
    Title{"the.tga",       "THE",       128, 32,  83.6, 29,  14, Weight::kRegular},
    Title{"end.tga",       "END",       256, 64,  84,   41,  37, Weight::kBold   },
    Title{"kso.tga",       "KSO",       256, 128, 84,   103, 54, Weight::kBold   },
    Title{"by.tga",        "BY",        64,  32,  24,   20,  14, Weight::kRegular},
    Title{"velmorant.tga", "VELMORANT", 512, 64,  2.8,  54,  37, Weight::kBold   },
};

const glm::vec3 kIvory = colour(0xfdf8ea);
const glm::vec3 kIvoryBelow = colour(0xeeece0);
const glm::vec3 kGround = colour(0x0a1219); // the landscape's night; never pure black
constexpr double kGroundReach = 1.4;        // beyond the letters

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
    const GreyPicture ground = letters(title, kGroundReach);
    const auto top = static_cast<float>(title.baseline - title.capHeight);

    Picture picture(title.width, title.height);
    picture.fill([&](int x, int y) {
        if (ground.at(x, y) == 0.0F && inside.at(x, y) == 0.0F) {
            return glm::vec4(0.0F, 0.0F, 0.0F, 1.0F);
        }
        const float down = (static_cast<float>(y) - top) / static_cast<float>(title.capHeight);
        const glm::vec3 letter = glm::mix(kIvory, kIvoryBelow, softStep(0.2F, 1.0F, down));
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
