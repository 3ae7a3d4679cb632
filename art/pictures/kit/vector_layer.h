#pragma once

#include "art/pictures/kit/picture.h"

#include <cairo.h>
#include <memory>
#include <string>

// The show's one family of letters.
enum class Weight { kBook, kRegular, kBold };

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

    // Appends letters to the path; the caller fills or strokes it. `x` is the left end of the line,
    // `baseline` what the letters stand on, `capHeight` the height of a capital.
    // Throws std::runtime_error where the font is missing.
    void addType(const std::string& text, double x, double baseline, double capHeight,
                 Weight weight);

    // How wide addType's line is, without space after its last letter.
    static double widthOfType(const std::string& text, double capHeight, Weight weight);

    // What was drawn: 0 outside, 1 inside.
    [[nodiscard]] GreyPicture coverage() const;

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> pen_;
};
