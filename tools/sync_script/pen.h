// Draws into a PNG or an SVG file, with the show's letters.
//
// Positions are in pixels from the upper left corner, colours are 0xRRGGBB.
#pragma once

#include "art/type/font.h"

#include <cairo.h>
#include <memory>
#include <string>

struct Box {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
};

struct Ink {
    unsigned colour = 0xFFFFFF;
    double alpha = 1.0;
};

// The colour between two, at `ratio` of the way, 0 to 1.
unsigned mixed(unsigned from, unsigned to, double ratio);

enum class Align { kLeft, kMiddle, kRight };

struct Type {
    double capHeight = 12.0;
    Ink ink;
    Align align = Align::kLeft;
    bool bold = false;
};

class Pen {
public:
    // The name's ending, .png or .svg, says what the file becomes. Throws std::runtime_error for
    // another ending and where a font is missing.
    Pen(std::string file, int width, int height);

    void fill(const Box& box, Ink ink);
    void fillDownward(const Box& box, Ink top, Ink bottom);
    void fillRightward(const Box& box, Ink left, Ink right);

    // `x` is the left end, the middle or the right end of the line.
    void type(const std::string& text, double x, double baseline, const Type& style);
    double widthOf(const std::string& text, const Type& style);

    // Fills the box with the middle of what a screenshot shows in the show's viewport. False where
    // the file is no picture.
    bool screenshot(const std::string& path, const Box& box);

    // Fills the box with the middle of a PNG file's picture. False where the file is no picture.
    bool picture(const std::string& path, const Box& box);

    // Writes the file; nothing can be drawn afterwards. Throws std::runtime_error.
    void finish();

private:
    void use(Ink ink);
    void fillWithPart(cairo_surface_t* picture, const Box& part, const Box& box);
    void fillWith(cairo_pattern_t* pattern, Ink from, Ink to, const Box& box);

    std::string file_;
    bool isPng_;
    CairoFont light_;
    CairoFont bold_;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};
