// The titles of the column's scene: ivory letters, cut like the column's stone, on black that the
// scene takes out.
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
    double capHeight;
    Weight weight;
};

constexpr std::array kTitles = {
    Title{"the.tga",       "THE",       128, 32,  26,  Weight::kBook},
    Title{"end.tga",       "END",       256, 64,  54,  Weight::kBold},
    Title{"kso.tga",       "KSO",       256, 128, 112, Weight::kBold},
    Title{"by.tga",        "BY",        64,  32,  24,  Weight::kBook},
    Title{"velmorant.tga", "VELMORANT", 512, 64,  54,  Weight::kBold},
};

const glm::vec3 kIvory = colour(0xf4efdf);
const glm::vec3 kEdge = colour(0x04060a); // never pure black, which is taken out

Picture makeTitle(const Title& title)
{
    VectorLayer layer(title.width, title.height);
    const double width = VectorLayer::widthOfType(title.word, title.capHeight, title.weight);
    layer.addType(title.word, (title.width - width) / 2, (title.height + title.capHeight) / 2,
                  title.capHeight, title.weight);
    cairo_fill(layer.pen());
    const GreyPicture inside = layer.coverage();

    Picture picture(title.width, title.height);
    picture.fill([&](int x, int y) {
        const float cover = inside.at(x, y);
        return cover > 0.0F ? glm::vec4(glm::mix(kEdge, kIvory, cover), 1.0F)
                            : glm::vec4(0.0F, 0.0F, 0.0F, 1.0F);
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
