#pragma once

#include "art/pictures/dog_drawing.h"
#include "art/pictures/dog_form.h"
#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <array>
#include <cairo.h>
#include <glm/gtc/constants.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

// The dog's eyes. They have to be read at once when three copies of them are a few pixels apart, so
// they are large, amber between dark rims, and the lids around them are bright.
namespace dog {

inline constexpr double kEyeSize = 1.7;

// An almond, 30 by 18 or so: the inner corner is on the left, the outer one on the right hangs.
inline void addAlmond(Drawing& drawing, double size)
{
    cairo_t* pen = drawing.pen();
    cairo_move_to(pen, -14.5 * size, 4.5 * size);
    cairo_curve_to(pen, -10 * size, -10.5 * size, 3 * size, -11 * size, 14.5 * size, 1.5 * size);
    cairo_curve_to(pen, 9 * size, 10.5 * size, -6 * size, 12 * size, -14.5 * size, 4.5 * size);
    cairo_close_path(pen);
}

inline void drawDisc(Drawing& drawing, glm::dvec2 middle, double radius, glm::vec3 colour,
                     float cover = 1.0F)
{
    cairo_arc(drawing.pen(), middle.x, middle.y, radius, 0, glm::two_pi<double>());
    drawing.setColour(colour, cover);
    cairo_fill(drawing.pen());
}

// Amber, darker at the rim and above, with fibres that run to the pupil.
inline void drawIris(Drawing& drawing, glm::dvec2 middle)
{
    constexpr double kRadius = 10.8;
    constexpr double kPupil = 5.2;
    constexpr int kRings = 24;
    const std::array amber = {colour(0x200a02), colour(0xa84c0a), colour(0xf08c20),
                              colour(0xffb448), colour(0xffd880)};
    for (int ring = 0; ring <= kRings; ++ring) {
        const float t = static_cast<float>(ring) / kRings;
        const double lower = 4.0 * static_cast<double>(t); // light falls through, from above
        drawDisc(drawing, middle + glm::dvec2(0.25 * lower, lower),
                 kRadius * (1.0 - 0.9 * static_cast<double>(t)), ramp(amber, t));
    }
    cairo_t* pen = drawing.pen();
    cairo_set_line_width(pen, 0.45);
    for (int i = 0; i < 36; ++i) {
        const float angle = kFullTurn * static_cast<float>(i) / 36.0F;
        const glm::dvec2 way(cosine(angle), sine(angle));
        const glm::dvec2 from = middle + kPupil * way;
        const glm::dvec2 to = middle + (i % 3 == 0 ? 0.9 : 0.75) * kRadius * way;
        cairo_move_to(pen, from.x, from.y);
        cairo_line_to(pen, to.x, to.y);
        drawing.setColour(i % 2 == 0 ? colour(0x502000) : colour(0xffe0a0), 0.25F);
        cairo_stroke(pen);
    }
    drawDisc(drawing, middle, kPupil, glm::vec3(0.0F));
}

// A dark line along the upper lid, and the wet rim of the lower one.
inline void drawLids(Drawing& drawing)
{
    drawing.fillHair(
        {
            {-15.5, 5.5 },
            {-11,   -2.2},
            {-5,    -7  },
            {1,     -7.6},
            {8,     -4.6},
            {13,    0.2 },
            {17,    4.6 }
    },
        3.2F, glm::vec3(0.0F), glm::vec3(0.0F));
    drawing.fillHair(
        {
            {14,  2.4},
            {11,  5.5},
            {6,   8.6},
            {0,   9.9},
            {-6,  9.4},
            {-12, 6.9}
    },
        2.2F, colour(0xe8a860), colour(0xffe0b0));
}

// `side` is -1 for the eye on the viewer's left, 1 for the other one.
inline void drawEye(Drawing& drawing, glm::dvec2 middle, float side)
{
    constexpr glm::dvec2 kGaze{0.6, -0.6};
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    cairo_translate(pen, middle.x, middle.y);
    cairo_rotate(pen, kHeadTilt + side * 0.20);
    cairo_scale(pen, side * kEyeSize, kEyeSize);
    for (int lid = 0; lid < 6; ++lid) {
        addAlmond(drawing, 1.22 - 0.035 * lid);
        drawing.setColour(0.3F * kLeather, 0.35F);
        cairo_fill(pen);
    }
    addAlmond(drawing, 1.0);
    cairo_save(pen);
    cairo_clip(pen);
    drawDisc(drawing, {0, 0}, 30, colour(0x3a1c0e));
    cairo_scale(pen, side, 1);
    drawIris(drawing, kGaze);
    cairo_scale(pen, side, 1);
    // The upper lid's shadow.
    for (int shadow = 0; shadow < 6; ++shadow) {
        cairo_rectangle(pen, -20, -20, 40, 12.5 + 1.3 * shadow);
        drawing.setColour(glm::vec3(0.0F), 0.13F);
        cairo_fill(pen);
    }
    cairo_restore(pen);
    drawLids(drawing);
    cairo_scale(pen, side, 1);
    drawDisc(drawing, {-3.6, -3.4}, 2.8, colour(0xfffaf0));
    cairo_restore(pen);
}

} // namespace dog
