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

inline constexpr double kEyeSize = 1.5;

// An almond, 30 by 18 or so, with the inner corner low.
inline void addAlmond(Drawing& drawing, double size)
{
    cairo_t* pen = drawing.pen();
    cairo_move_to(pen, -15 * size, 6.5 * size);
    cairo_curve_to(pen, -10 * size, -5 * size, 4 * size, -10.5 * size, 14 * size, -2.5 * size);
    cairo_curve_to(pen, 9 * size, 9 * size, -4 * size, 11.5 * size, -15 * size, 6.5 * size);
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
    constexpr double kRadius = 11.2;
    constexpr int kRings = 24;
    const std::array amber = {colour(0x200a02), colour(0xb85a10), colour(0xff9c28),
                              colour(0xffb648), colour(0xffd884)};
    for (int ring = 0; ring <= kRings; ++ring) {
        const float t = static_cast<float>(ring) / kRings;
        const double lower = 3.4 * static_cast<double>(t); // light falls through, from above
        drawDisc(drawing, middle + glm::dvec2(0.25 * lower, lower),
                 kRadius * (1.0 - 0.9 * static_cast<double>(t)), ramp(amber, t));
    }
    cairo_t* pen = drawing.pen();
    cairo_set_line_width(pen, 0.45);
    for (int i = 0; i < 36; ++i) {
        const float angle = kFullTurn * static_cast<float>(i) / 36.0F;
        const glm::dvec2 way(cosine(angle), sine(angle));
        const double to = i % 3 == 0 ? 0.92 : 0.78;
        cairo_move_to(pen, middle.x + 4.7 * way.x, middle.y + 4.7 * way.y);
        cairo_line_to(pen, middle.x + to * kRadius * way.x, middle.y + to * kRadius * way.y);
        drawing.setColour(i % 2 == 0 ? colour(0x502000) : colour(0xffe0a0), 0.35F);
        cairo_stroke(pen);
    }
    drawDisc(drawing, middle, 4.7, glm::vec3(0.0F));
}

// The wet rim of the lower lid, and the light on both lids' fur, which is what is left of an
// eye when pictures of it are shaken.
inline void drawLids(Drawing& drawing)
{
    drawing.fillHair(
        {
            {14,  1   },
            {11,  5.5 },
            {6,   9   },
            {0,   10.8},
            {-6,  10.8},
            {-12, 9   }
    },
        1.8F, colour(0xd08840), colour(0xffd090));
}

// `side` is -1 for the eye on the viewer's left, 1 for the other one.
inline void drawEye(Drawing& drawing, glm::dvec2 middle, float side)
{
    constexpr glm::dvec2 kGaze{0.6, 0.2};
    cairo_t* pen = drawing.pen();
    cairo_save(pen);
    cairo_translate(pen, middle.x, middle.y);
    cairo_rotate(pen, kHeadTilt + side * 0.20);
    cairo_scale(pen, side * kEyeSize, kEyeSize);
    for (int lid = 0; lid < 6; ++lid) {
        addAlmond(drawing, 1.30 - 0.05 * lid);
        drawing.setColour(0.3F * kLeather, 0.35F);
        cairo_fill(pen);
    }
    addAlmond(drawing, 1.0);
    cairo_save(pen);
    cairo_clip(pen);
    drawDisc(drawing, {0, 0}, 30, colour(0x120703));
    cairo_scale(pen, side, 1);
    drawIris(drawing, kGaze);
    cairo_scale(pen, side, 1);
    // The upper lid's shadow.
    for (int shadow = 0; shadow < 6; ++shadow) {
        cairo_rectangle(pen, -20, -20, 40, 11.0 + 1.3 * shadow);
        drawing.setColour(glm::vec3(0.0F), 0.17F);
        cairo_fill(pen);
    }
    cairo_restore(pen);
    drawLids(drawing);
    cairo_scale(pen, side, 1);
    drawDisc(drawing, {-3.0, -2.4}, 2.7, colour(0xfffaf0));
    drawDisc(drawing, {5.0, 4.6}, 1.1, colour(0xffd89c), 0.8F);
    cairo_restore(pen);
}

} // namespace dog
