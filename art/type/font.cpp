#include "art/type/font.h"

#include <cairo-ft.h>
#include <cstddef>
#include <ft2build.h> // has to come before FreeType's other headers
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <stdexcept>

namespace {

constexpr double kUnitsOfAnEm = 1000.0;
constexpr double kCapitalInUnits = 700.0;
static_assert(kCapitalInUnits == kCapitalInEms * kUnitsOfAnEm);

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

// Lives as long as the program: Cairo keeps what it has drawn letters with.
FT_Library freeType()
{
    static FT_Library library = [] {
        FT_Library made = nullptr;
        if (FT_Init_FreeType(&made) != 0) {
            throw std::runtime_error("cannot start FreeType");
        }
        return made;
    }();
    return library;
}

FT_Face openFont(Weight weight)
{
    const std::string path =
        std::string("/usr/share/fonts/opentype/bebas-neue/") + fontFile(weight);
    FT_Face face = nullptr;
    if (FT_New_Face(freeType(), path.c_str(), 0, &face) != 0) {
        throw std::runtime_error("cannot open " + path + " (package fonts-bebas-neue)");
    }
    return face;
}

// A letter in the font's own units, so without any hinting.
FT_GlyphSlotRec& loadLetter(FT_Face face, char character)
{
    const auto code = static_cast<unsigned char>(character);
    if (FT_Load_Char(face, code, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0) {
        throw std::runtime_error(std::string("no letter ") + character);
    }
    return *face->glyph;
}

// How far the second of two letters moves to the right, in the font's units; mostly below 0.
double kerning(FT_Face face, char left, char right)
{
    FT_Vector kerning{};
    FT_Get_Kerning(face, FT_Get_Char_Index(face, static_cast<unsigned char>(left)),
                   FT_Get_Char_Index(face, static_cast<unsigned char>(right)), FT_KERNING_UNSCALED,
                   &kerning);
    return static_cast<double>(kerning.x);
}

// Calls letterAt(letter's outline, its left end in the font's units); returns the line's width.
template <typename Function>
double layOut(FT_Face face, const std::string& text, const Function& letterAt)
{
    double left = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i > 0) {
            left += kTracking * kCapitalInUnits + kerning(face, text[i - 1], text[i]);
        }
        FT_GlyphSlotRec& letter = loadLetter(face, text[i]);
        letterAt(letter.outline, left);
        left += static_cast<double>(letter.metrics.horiAdvance);
    }
    return left;
}

// Hands an outline to Cairo, whose pen knows where it is and in which units.
struct OutlineToPath {
    cairo_t* pen;
    double left;

    void add(FT_Outline& outline)
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

void Font::Close::operator()(FT_FaceRec_* face) const
{
    FT_Done_Face(face);
}

Font::Font(Weight weight) : face_(openFont(weight))
{
}

void Font::addLine(cairo_t* pen, const std::string& text, double x, double baseline,
                   double capHeight) const
{
    cairo_save(pen);
    cairo_translate(pen, x, baseline);
    cairo_scale(pen, capHeight / kCapitalInUnits, capHeight / kCapitalInUnits);
    layOut(face_.get(), text, [pen](FT_Outline& outline, double left) {
        OutlineToPath{pen, left}.add(outline);
    });
    cairo_restore(pen);
}

double Font::widthOfLine(const std::string& text, double capHeight) const
{
    const double units = layOut(face_.get(), text, [](FT_Outline& /*outline*/, double /*left*/) {});
    return units * capHeight / kCapitalInUnits;
}

CairoFont Font::forCairo() const
{
    static const cairo_user_data_key_t kKey{};
    cairo_font_face_t* font =
        cairo_ft_font_face_create_for_ft_face(face_.get(), FT_LOAD_NO_HINTING);
    // Cairo holds on to the font until nothing that it has drawn needs it any more.
    FT_Reference_Face(face_.get());
    cairo_font_face_set_user_data(font, &kKey, face_.get(),
                                  [](void* user) { FT_Done_Face(static_cast<FT_Face>(user)); });
    return {font, &cairo_font_face_destroy};
}
