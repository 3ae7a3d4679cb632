#include "art/pictures/dog/eye.h"

#include "art/pictures/dog/forms.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <array>
#include <glm/vec3.hpp>
#include <vector>

namespace dog {

namespace {

constexpr double kEyeSize = 1.5;
constexpr double kIrisRadius = 10.8;
constexpr double kPupil = 5.2; // radius
const std::vector<glm::vec2> kUpperLid = {
    {-15.5F, 5.5F },
    {-11.0F, -2.2F},
    {-5.0F,  -6.0F},
    {1.0F,   -6.6F},
    {8.0F,   -4.0F},
    {13.0F,  0.7F },
    {17.0F,  4.6F },
};
const std::vector<glm::vec2> kLowerLid = {
    {14.0F,  2.4F},
    {11.0F,  5.5F},
    {6.0F,   8.6F},
    {0.0F,   9.9F},
    {-6.0F,  9.4F},
    {-12.0F, 6.9F},
};

// An almond, 30 by 18 or so: the inner corner is on the left, the outer one on the right hangs.
void addAlmond(Drawing& drawing, double size)
{
    cairo_t* pen = drawing.pen();
    cairo_move_to(pen, -14.5 * size, 4.5 * size);
    cairo_curve_to(pen, -10 * size, -9.2 * size, 3 * size, -9.8 * size, 14.5 * size, 2.2 * size);
    cairo_curve_to(pen, 9 * size, 10.5 * size, -6 * size, 12 * size, -14.5 * size, 4.5 * size);
    cairo_close_path(pen);
}

// Amber, darker at the rim and above.
void drawAmber(Drawing& drawing, glm::dvec2 middle)
{
    constexpr int kRings = 24;
    const std::array amber = {colour(0x200a02), colour(0xa84c0a), colour(0xf08c20),
                              colour(0xffb448), colour(0xffd880)};
    for (int ring = 0; ring <= kRings; ++ring) {
        const float t = static_cast<float>(ring) / kRings;
        const double lower = 4.0 * static_cast<double>(t); // light falls through, from above
        drawing.fillDisc(middle + glm::dvec2(0.25 * lower, lower),
                         kIrisRadius * (1.0 - 0.9 * static_cast<double>(t)), ramp(amber, t));
    }
}

// Fibres that run to the pupil.
void drawFibres(Drawing& drawing, glm::dvec2 middle)
{
    constexpr int kFibres = 36;
    cairo_t* pen = drawing.pen();
    cairo_set_line_width(pen, 0.45);
    for (int i = 0; i < kFibres; ++i) {
        const float angle = kFullTurn * static_cast<float>(i) / kFibres;
        const glm::dvec2 way(cosine(angle), sine(angle));
        const glm::dvec2 from = middle + kPupil * way;
        const glm::dvec2 to = middle + (i % 3 == 0 ? 0.9 : 0.75) * kIrisRadius * way;
        cairo_move_to(pen, from.x, from.y);
        cairo_line_to(pen, to.x, to.y);
        drawing.setColour(i % 2 == 0 ? colour(0x502000) : colour(0xffe0a0), 0.25F);
        cairo_stroke(pen);
    }
}

// The dark rim around the eye, which fades outward.
void drawRim(Drawing& drawing)
{
    for (int lid = 0; lid < 6; ++lid) {
        addAlmond(drawing, 1.22 - 0.04 * lid);
        drawing.setColour(0.3F * kLeather, 0.35F);
        cairo_fill(drawing.pen());
    }
}

void drawShadowOfUpperLid(Drawing& drawing)
{
    for (int shadow = 0; shadow < 6; ++shadow) {
        cairo_rectangle(drawing.pen(), -20, -20, 40, 13.5 + 1.5 * shadow);
        drawing.setColour(glm::vec3(0.0F), 0.13F);
        cairo_fill(drawing.pen());
    }
}

// An old dog's iris is dark, and its pupil wide: only below does the amber still burn.
void drawDepth(Drawing& drawing, glm::dvec2 middle)
{
    constexpr int kLayers = 9;
    drawing.fillDisc(middle + glm::dvec2(0.6, 2.0), 9.2, colour(0xffc058), 0.75F);
    for (int layer = 0; layer < kLayers; ++layer) {
        const double t = static_cast<double>(layer) / (kLayers - 1);
        drawing.fillDisc(middle - glm::dvec2(0.6, 2.6) * (1.0 - t), 11.5 - 4.7 * t,
                         colour(0x1c0802), 0.09F);
    }
    drawing.fillDisc(middle, 6.2, glm::vec3(0.0F), 0.85F);
}

// What lies between the lids. The iris looks the same way in both eyes, which mirror each other.
void drawEyeball(Drawing& drawing, float side)
{
    constexpr glm::dvec2 kGaze{0.6, -0.6};
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    addAlmond(drawing, 1.0);
    cairo_clip(pen);
    drawing.fillDisc({0, 0}, 30, colour(0x3a1c0e));
    cairo_scale(pen, side, 1);
    drawIris(drawing, kGaze);
    drawDepth(drawing, kGaze);
    cairo_scale(pen, side, 1);
    drawShadowOfUpperLid(drawing);
    cairo_restore(pen);
}

// A dark line along the upper lid, and the wet rim of the lower one.
void drawLids(Drawing& drawing)
{
    drawing.fillHair(kUpperLid, 3.2F, glm::vec3(0.0F), glm::vec3(0.0F), 0.8F);
    drawing.fillHair(kLowerLid, 1.5F, colour(0xb07840), colour(0xf0c890), 0.8F);
}

} // namespace

void drawIris(Drawing& drawing, glm::dvec2 middle)
{
    drawAmber(drawing, middle);
    drawFibres(drawing, middle);
    drawing.fillDisc(middle, kPupil, glm::vec3(0.0F));
}

void drawEye(Drawing& drawing, glm::dvec2 middle, float side)
{
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    cairo_translate(pen, middle.x, middle.y);
    cairo_rotate(pen, kHeadTilt + side * 0.25);
    cairo_scale(pen, side * kEyeSize, kEyeSize);
    drawRim(drawing);
    drawEyeball(drawing, side);
    drawLids(drawing);
    cairo_scale(pen, side, 1);
    drawing.fillDisc({-3.4, -2.6}, 2.2, colour(0xfff4dc)); // the lamp's reflection
    drawing.fillDisc({3.4, 4.4}, 1.0, colour(0xffd890), 0.7F);
    cairo_restore(pen);
}

} // namespace dog
