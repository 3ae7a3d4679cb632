#include "art/pictures/dog/features.h"

#include "art/pictures/dog/light.h"
#include "art/pictures/kit/noise.h"

#include <glm/gtc/constants.hpp>
#include <vector>

namespace dog {

namespace {

constexpr int kWhiskerRoots = 24;
constexpr int kWhiskers = 10;
constexpr int kJoints = 6; // of a whisker
constexpr unsigned kSeed = 1957;

float sideOf(int whisker)
{
    return whisker % 2 == 0 ? -1.0F : 1.0F;
}

void drawWhiskerRoots(const View& view, Drawing& drawing)
{
    for (int i = 0; i < kWhiskerRoots; ++i) {
        const int row = i / 2 % 3;
        const int place = i / 6;
        const float along = static_cast<float>(place) + 0.4F * static_cast<float>(row % 2);
        const glm::vec2 root = view.onFace(
            {sideOf(i) * (0.11F + 0.03F * along),
             -0.24F - 0.05F * static_cast<float>(row) + 0.01F * along, 1.0F - 0.045F * along});
        drawing.fillDisc(root, 0.9, 0.5F * kRust, 0.6F);
    }
}

} // namespace

void drawNostril(const View& view, Drawing& drawing, float side)
{
    const glm::vec2 middle = view.onFace({side * 0.058F, -0.145F, 1.09F});
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    cairo_translate(pen, middle.x, middle.y);
    cairo_rotate(pen, kHeadTilt - side * 0.5F);
    cairo_scale(pen, 5.2, 3.3);
    drawing.fillDisc({0, 0}, 1, glm::vec3(0.0F));
    cairo_restore(pen);
}

void drawWhiskers(const View& view, Drawing& drawing)
{
    drawWhiskerRoots(view, drawing);
    Random random(kSeed);
    for (int i = 0; i < kWhiskers; ++i) {
        const float side = sideOf(i);
        const glm::vec3 root{side * random.between(0.14F, 0.24F), random.between(-0.40F, -0.26F),
                             random.between(0.76F, 0.90F)};
        const float length = random.between(0.16F, 0.32F);
        const float rise = random.between(-0.35F, 0.2F);
        std::vector<glm::vec2> joints;
        for (int j = 0; j < kJoints; ++j) {
            const float t = static_cast<float>(j) / (kJoints - 1);
            joints.push_back(view.onFace(
                root + length * glm::vec3(side * t, rise * t - 0.35F * t * t, -0.4F * t)));
        }
        drawing.fillHair(joints, 0.8F, kKeyColour, kKeyColour, random.between(0.2F, 0.4F));
    }
}

} // namespace dog
