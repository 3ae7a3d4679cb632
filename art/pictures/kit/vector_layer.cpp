#include "art/pictures/kit/vector_layer.h"

#include <ft2build.h> // has to come before FreeType's other headers
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstddef>
#include <stdexcept>

namespace {

// Space added after each letter, in heights of a capital; the same everywhere.
constexpr double kTracking = 0.07;

// The height of a capital in the font's units, of which an em has a thousand.
constexpr double kCapUnits = 700.0;

const char* fontFile(Weight weight)
{
    switch (weight) {
    case Weight::kBook:
        return "BebasNeue-Book.otf";
    case Weight::kRegular:
        return "BebasNeue-Regular.otf";
    case Weight::kBold:
        break;
    }
    return "BebasNeue-Bold.otf";
}

// A font file, opened by its path, so that nobody's font settings change the pixels.
class Font {
public:
    explicit Font(Weight weight)
    {
        const std::string path =
            std::string("/usr/share/fonts/opentype/bebas-neue/") + fontFile(weight);
        if (FT_Init_FreeType(&library_) != 0) {
            throw std::runtime_error("cannot start FreeType");
        }
        if (FT_New_Face(library_, path.c_str(), 0, &face_) != 0) {
            FT_Done_FreeType(library_);
            throw std::runtime_error("cannot open " + path + " (package fonts-bebas-neue)");
        }
    }
    ~Font() { FT_Done_FreeType(library_); } // and its face
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    // Loads a letter in the font's own units, so without any hinting.
    [[nodiscard]] FT_GlyphSlotRec& letter(char character) const
    {
        const auto code = static_cast<unsigned char>(character);
        if (FT_Load_Char(face_, code, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0) {
            throw std::runtime_error(std::string("no letter ") + character);
        }
        return *face_->glyph;
    }

    // How much closer two letters stand than their widths say, in the font's units.
    [[nodiscard]] double kerning(char left, char right) const
    {
        FT_Vector kerning{};
        FT_Get_Kerning(face_, FT_Get_Char_Index(face_, static_cast<unsigned char>(left)),
                       FT_Get_Char_Index(face_, static_cast<unsigned char>(right)),
                       FT_KERNING_UNSCALED, &kerning);
        return static_cast<double>(kerning.x);
    }

private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

// Calls letterAt(letter's outline, its left end in the font's units); returns the line's width.
template <typename Function>
double layOut(const Font& font, const std::string& text, const Function& letterAt)
{
    double left = 0.0;
    double width = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i > 0) {
            left += kTracking * kCapUnits + font.kerning(text[i - 1], text[i]);
        }
        FT_GlyphSlotRec& letter = font.letter(text[i]);
        letterAt(letter.outline, left);
        left += static_cast<double>(letter.metrics.horiAdvance);
        width = left;
    }
    return width;
}

// Hands an outline to Cairo, whose pen knows where it is and in which units.
struct OutlineToPath {
    cairo_t* pen;
    double left;

    void addTo(FT_Outline& outline)
    {
        const FT_Outline_Funcs steps{moveTo, lineTo, conicTo, cubicTo, 0, 0};
        FT_Outline_Decompose(&outline, &steps, this);
        cairo_close_path(pen);
    }

private:
    static OutlineToPath& self(void* user) { return *static_cast<OutlineToPath*>(user); }
    double x(const FT_Vector* point) const { return left + static_cast<double>(point->x); }
    static double y(const FT_Vector* point) { return static_cast<double>(-point->y); }

    static int moveTo(const FT_Vector* to, void* user)
    {
        cairo_close_path(self(user).pen);
        cairo_move_to(self(user).pen, self(user).x(to), y(to));
        return 0;
    }
    static int lineTo(const FT_Vector* to, void* user)
    {
        cairo_line_to(self(user).pen, self(user).x(to), y(to));
        return 0;
    }
    // OpenType's own outlines are cubic only.
    static int conicTo(const FT_Vector* /*by*/, const FT_Vector* /*to*/, void* /*user*/)
    {
        return 1;
    }
    static int cubicTo(const FT_Vector* from, const FT_Vector* by, const FT_Vector* to, void* user)
    {
        const OutlineToPath& path = self(user);
        cairo_curve_to(path.pen, path.x(from), y(from), path.x(by), y(by), path.x(to), y(to));
        return 0;
    }
};

} // namespace

VectorLayer::VectorLayer(int width, int height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), &cairo_surface_destroy),
      pen_(cairo_create(surface_.get()), &cairo_destroy)
{
    cairo_set_antialias(pen(), CAIRO_ANTIALIAS_BEST);
}

void VectorLayer::addType(const std::string& text, double x, double baseline, double capHeight,
                          Weight weight)
{
    const Font font(weight);
    cairo_save(pen());
    cairo_translate(pen(), x, baseline);
    cairo_scale(pen(), capHeight / kCapUnits, capHeight / kCapUnits);
    layOut(font, text, [this](FT_Outline& outline, double left) {
        OutlineToPath{pen(), left}.addTo(outline);
    });
    cairo_restore(pen());
}

double VectorLayer::widthOfType(const std::string& text, double capHeight, Weight weight)
{
    const Font font(weight);
    const double units = layOut(font, text, [](FT_Outline& /*outline*/, double /*left*/) {});
    return units * capHeight / kCapUnits;
}

GreyPicture VectorLayer::coverage() const
{
    cairo_surface_flush(surface_.get());
    const unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
    const int stride = cairo_image_surface_get_stride(surface_.get());
    GreyPicture mask(cairo_image_surface_get_width(surface_.get()),
                     cairo_image_surface_get_height(surface_.get()));
    mask.fill([&](int x, int y) { return static_cast<float>(bytes[y * stride + x]) / 255.0F; });
    return mask;
}
