#pragma once

#include "art/pictures/kit/picture.h"

#include <cairo.h>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <memory>
#include <vector>

namespace dog {

// An opaque, black sheet that Cairo draws on in colours. Positions are in the picture's pixels from
// its upper left corner; the drawing is `finer` times as large until it is scaled down.
class Drawing {
public:
    Drawing(int width, int height, int finer);

    // For Cairo's own calls. Borrowed, valid as long as the drawing is.
    cairo_t* pen() { return pen_.get(); }

    // The colour of what is drawn next; `cover` is its opacity, 0 to 1.
    void setColour(glm::vec3 colour, float cover = 1.0F);

    void fillSquare(glm::dvec2 corner, double size);

    void fillDisc(glm::dvec2 middle, double radius, glm::vec3 colour, float cover = 1.0F);

    // A line through at least two joints that swells and ends in a point, dark at its root and
    // bright toward its tip.
    void fillHair(const std::vector<glm::vec2>& joints, float width, glm::vec3 root, glm::vec3 tip,
                  float cover = 1.0F);

    // The drawing, scaled down until a unit is this many pixels wide.
    [[nodiscard]] Picture picture(int unit = 1) const;

private:
    void addHair(const std::vector<glm::vec2>& joints, float width);

    int width_;
    int height_;
    int finer_;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> pen_;
};

} // namespace dog
