// The show's one family of letters: Bebas Neue, from Debian's package fonts-bebas-neue.
//
// A font is opened by its path, so that no font settings of a machine change a picture, and its
// letters are never hinted. Their size is the height of a capital.
#pragma once

#include <cairo.h>
#include <memory>
#include <string>

enum class Weight { kBook, kRegular, kBold };

// Space between two letters, beside the room that the font gives them; in heights of a capital.
constexpr double kTracking = 0.07;

// The height of a capital, in ems: Cairo's font size is the capital's height divided by this.
constexpr double kCapitalInEms = 0.7;

using CairoFont = std::unique_ptr<cairo_font_face_t, decltype(&cairo_font_face_destroy)>;

class Font {
public:
    // Throws std::runtime_error, which names the file and the package, if the font is not there.
    explicit Font(Weight weight);

    // Appends the outlines of a line of ASCII text to the pen's path: `x` is its left end,
    // `baseline` what the letters stand on, in the pen's units. Throws std::runtime_error for a
    // character that cannot be loaded.
    void addLine(cairo_t* pen, const std::string& text, double x, double baseline,
                 double capHeight) const;

    // How wide addLine's line is: there is no tracking after its last letter.
    [[nodiscard]] double widthOfLine(const std::string& text, double capHeight) const;

    // The font for Cairo's own text calls, which know nothing of the tracking. It may outlive this
    // object.
    [[nodiscard]] CairoFont forCairo() const;

private:
    struct Close {
        void operator()(struct FT_FaceRec_* face) const;
    };
    std::unique_ptr<struct FT_FaceRec_, Close> face_;
};
