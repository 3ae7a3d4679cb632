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

Picture draw(const View& view, const OutputFolder& folder)
{
    Drawing drawing(kWidth, kHeight, kFiner);
    drawSkin(view, drawing);
    folder.keepStage(drawing.picture(), "dog-3-undercoat.tga");
    drawMouth(view, drawing, 6.0);
    drawFur(view, drawing, folder);
    drawMouth(view, drawing, 3.0); // once more, over the hairs
    folder.keepStage(drawing.picture(), "dog-5-hairs.tga");
    for (const float side : {-1.0F, 1.0F}) {
        drawNostril(view, drawing, side);
        drawEye(drawing, view.onFace(kEye * glm::vec3(side, 1.0F, 1.0F)), side);
    }
    drawWhiskers(view, drawing);
    return drawing.picture();
}

// The ground under the picture has darks of its own, so lit fur is brought close to full light and
// shadows close to black.
void printHard(Picture& picture)
{
    picture.fill([&](int x, int y) {
        const glm::vec3 soft(picture.at(x, y));
        const float bright = brightest(soft);
        const float lifted = (1.0F - exponential(-1.2F * bright)) / (1.0F - exponential(-1.2F));
        const float hard = glm::mix(lifted, softStep(0.0F, 1.0F, lifted), 0.5F);
        return glm::vec4(soft * (hard / glm::max(0.001F, bright)), 1.0F);
    });
}

void makeDog(const OutputFolder& folder)
{
    const View view;
    folder.keepStage(formOf(view), "dog-1-form.tga");
    folder.keepStage(flowOfFur(view), "dog-2-flow.tga");
    Picture picture = draw(view, folder);
    printHard(picture);
    folder.keepStage(picture, "dog-6-finished.tga");
    folder.write(picture, 24, "koira.tga");
}

} // namespace

} // namespace dog

int main(int argc, char** argv)
{
    return runPictureProgram(argc, argv, dog::makeDog);
}
