#pragma once

#include "art/pictures/kit/picture.h"
#include "art/type/font.h"

#include <cairo.h>
#include <memory>
#include <string>

// A mask drawn with paths, strokes and type. Programs shade it as they like.
//
// Positions are in pixels from the upper left corner, unlike those of Raster: the middle of pixel
// (0, 0) is at (0.5, 0.5). A larger layer that is scaled down afterwards has finer edges.
class VectorLayer {
public:
    VectorLayer(int width, int height);

    // For Cairo's own calls: cairo_move_to, cairo_stroke and so on. Borrowed, valid as long as the
    // layer is. Only the source's alpha counts; it starts opaque.
    cairo_t* pen() { return pen_.get(); }

    // Appends a line of letters to the path, as Font::addLine does; the caller fills or strokes it.
    void addType(const std::string& text, double x, double baseline, double capHeight,
                 Weight weight);

    // What was drawn: 0 outside, 1 inside.
    [[nodiscard]] GreyPicture coverage() const;

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> pen_;
};
