#include "art/pictures/dog/features.h"

#include "art/pictures/dog/light.h"
#include "art/pictures/kit/noise.h"

#include <array>
#include <glm/gtc/constants.hpp>
#include <vector>

namespace dog {

namespace {

constexpr int kWhiskerRoots = 24;
constexpr int kWhiskers = 22;
constexpr int kJoints = 6; // of a whisker
constexpr unsigned kSeed = 1957;

// A curve's ends and, between them, the points that pull it; in the head's space.
using Curve = std::array<glm::vec3, 4>;

void drawCurve(const View& view, Drawing& drawing, const Curve& curve, double width)
{
    const glm::vec2 start = view.onFace(curve[0]);
    const glm::vec2 first = view.onFace(curve[1]);
    const glm::vec2 second = view.onFace(curve[2]);
    const glm::vec2 end = view.onFace(curve[3]);
    cairo_move_to(drawing.pen(), start.x, start.y);
    cairo_curve_to(drawing.pen(), first.x, first.y, second.x, second.y, end.x, end.y);
    cairo_set_line_width(drawing.pen(), width);
    cairo_stroke(drawing.pen());
}

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
            {sideOf(i) * (0.12F + 0.035F * along),
             -0.24F - 0.05F * static_cast<float>(row) + 0.01F * along, 1.0F - 0.045F * along});
        drawing.fillDisc(root, 0.9, 0.5F * kRust, 0.6F);
    }
}

} // namespace

void drawMouth(const View& view, Drawing& drawing, double width)
{
    constexpr glm::vec3 kUnderNose{0.0F, -0.28F, 1.05F};
    constexpr glm::vec3 kParting{0.0F, -0.37F, 1.0F};
    constexpr glm::vec3 kLip{0.05F, -0.44F, 1.0F};
    constexpr glm::vec3 kCheek{0.15F, -0.47F, 0.90F};
    constexpr glm::vec3 kCorner{0.26F, -0.41F, 0.60F};
    drawing.setColour(0.3F * kLeather, 0.9F);
    drawCurve(view, drawing, {kUnderNose, kUnderNose, kParting, kParting}, width);
    for (const float side : {-1.0F, 1.0F}) {
        const glm::vec3 mirror(side, 1.0F, 1.0F);
        drawCurve(view, drawing, {kParting, kLip * mirror, kCheek * mirror, kCorner * mirror},
                  width);
    }
}

void drawNostril(const View& view, Drawing& drawing, float side)
{
    const glm::vec2 middle = view.onFace({side * 0.075F, -0.17F, 1.10F});
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    cairo_translate(pen, middle.x, middle.y);
    cairo_rotate(pen, kHeadTilt - side * 0.5F);
    cairo_scale(pen, 6.3, 3.8);
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
        drawing.fillHair(joints, 1.1F, kKeyColour, kKeyColour, random.between(0.25F, 0.5F));
    }
}

} // namespace dog
