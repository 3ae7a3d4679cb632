// A dog that looks at you. Its solid form is lit first; then hairs are drawn over it, and last
// eyes, nose and whiskers. The scene amplifies what lies under the picture, so this is light, not
// paint: black leaves the ground as it is.
#include "art/pictures/dog/drawing.h"
#include "art/pictures/dog/eye.h"
#include "art/pictures/dog/features.h"
#include "art/pictures/dog/fur.h"
#include "art/pictures/dog/light.h"
#include "art/pictures/dog/view.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/program.h"

#include <glm/common.hpp>

namespace dog {

namespace {

Picture formOf(const View& view)
{
    Picture form(kWidth * kFiner, kHeight * kFiner);
    form.fill([&](int x, int y) {
        const Surface& surface = view.surfaces().at(x, y);
        return glm::vec4(surface.hit ? lightOnForm(surface) : glm::vec3(0.0F), 1.0F);
    });
    return form.shrunk(kFiner);
}

// The lamp behind the dog lights the stone around it, upper left most.
void drawGlow(Drawing& drawing)
{
    const glm::vec3 amber(0.30F, 0.185F, 0.075F);
    constexpr glm::vec2 kLamp{196.0F, 96.0F};
    constexpr glm::vec2 kReach{190.0F, 120.0F};
    for (int y = 0; y < kHeight * kFiner; ++y) {
        for (int x = 0; x < kWidth * kFiner; ++x) {
            const glm::vec2 place = (glm::vec2(x, y) + 0.5F) / static_cast<float>(kFiner);
            const float fromLamp = glm::length((place - kLamp) / kReach);
            const glm::vec2 fromMiddle = glm::abs(place / glm::vec2(kWidth, kHeight) * 2.0F - 1.0F);
            const float outward =
                power(power(fromMiddle.x, 2.6F) + power(fromMiddle.y, 2.6F), 1.0F / 2.6F);
            const float light =
                softStep(0.98F, 0.25F, outward) * (1.0F + 0.9F * exponential(-fromLamp * fromLamp));
            drawing.setColour(light * amber);
            drawing.fillSquare(glm::dvec2(x, y) / double{kFiner}, 1.0 / kFiner);
        }
    }
}

Picture draw(const View& view, const OutputFolder& folder)
{
    Drawing drawing(kWidth, kHeight, 2 * kFiner);
    drawGlow(drawing);
    drawSkin(view, drawing);
    folder.keepStage(drawing.picture(), "dog-3-undercoat.tga");
    drawFur(view, drawing, folder);
    folder.keepStage(drawing.picture(), "dog-5-hairs.tga");
    for (const float side : {-1.0F, 1.0F}) {
        drawNostril(view, drawing, side);
        drawEye(drawing, view.onFace(kEye * glm::vec3(side, 1.0F, 1.0F)), side);
    }
    drawWhiskers(view, drawing);
    return drawing.picture(kFiner);
}

// The ground under the picture has darks of its own, so lit fur is brought close to full light and
// shadows close to black; and since it is blue, colours are made more than warm.
void printHard(Picture& picture)
{
    constexpr float kLift = 2.3F;
    constexpr float kBrightest = 0.95F; // three copies make nearly eight times of full light
    constexpr glm::vec3 kWarmth(0.0F, 0.27F, 0.5F);
    picture.fill([&](int x, int y) {
        const glm::vec3 soft(picture.at(x, y));
        const float bright = glm::max(0.001F, brightest(soft));
        const float lifted = (1.0F - exponential(-kLift * bright)) / (1.0F - exponential(-kLift));
        const float hard = kBrightest * glm::mix(lifted, softStep(0.0F, 1.0F, lifted), 0.45F);
        const glm::vec3 hue = soft / bright;
        const glm::vec3 warm = hue * glm::vec3(power(hue.r, kWarmth.r), power(hue.g, kWarmth.g),
                                               power(hue.b, kWarmth.b));
        const float down = static_cast<float>(y) / static_cast<float>(picture.height());
        const float chest = softStep(0.985F, 0.80F, down); // the view ends below it, at 0.945
        return glm::vec4(warm * hard * chest, 1.0F);
    });
}

void makeDog(const OutputFolder& folder)
{
    const View view;
    folder.keepStage(formOf(view), "dog-1-form.tga");
    folder.keepStage(flowOfFur(view), "dog-2-flow.tga");
    Picture picture = draw(view, folder);
    printHard(picture);
    folder.keepStage(picture.shrunk(kFiner), "dog-6-finished.tga");
    folder.write(picture, 24, "koira.tga");
}

} // namespace

} // namespace dog

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, dog::makeDog);
}
