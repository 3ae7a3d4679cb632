#include "tools/sync_script/pen.h"

#include "base/window_and_view.h"

#include <algorithm>
#include <cairo-svg.h>
#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

// The viewport on a screenshot of the window.
constexpr Box kViewport = {(kWindowWidth - kViewWidth) / 2.0, (kWindowHeight - kViewHeight) / 2.0,
                           kViewWidth, kViewHeight};

double part(unsigned colour, unsigned shift)
{
    return static_cast<double>((colour >> shift) & 0xFFU) / 255.0;
}

void require(cairo_status_t status, const std::string& what)
{
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
    }
}

cairo_surface_t* openSurface(const std::string& file, bool isPng, int width, int height)
{
    if (isPng) {
        return cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    }
    if (!file.ends_with(".svg")) {
        throw std::runtime_error(file + ": the name of the picture ends in .png or .svg");
    }
    return cairo_svg_surface_create(file.c_str(), width, height);
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

// Null where the file is no PNG.
Surface openPicture(const std::string& path)
{
    Surface picture(cairo_image_surface_create_from_png(path.c_str()), &cairo_surface_destroy);
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) {
        picture.reset();
    }
    return picture;
}

// UTF-8's letters, of one byte or more.
std::vector<std::string> letters(const std::string& text)
{
    std::vector<std::string> all;
    for (const char byte : text) {
        const bool goesOn = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
        if (goesOn && !all.empty()) {
            all.back() += byte;
        } else {
            all.emplace_back(1, byte);
        }
    }
    return all;
}

} // namespace

unsigned mixed(unsigned from, unsigned to, double ratio)
{
    unsigned mix = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const double value = part(from, shift) + (part(to, shift) - part(from, shift)) * ratio;
        mix |= static_cast<unsigned>(std::lround(value * 255.0)) << shift;
    }
    return mix;
}

Pen::Pen(std::string file, int width, int height)
    : file_(std::move(file)), isPng_(file_.ends_with(".png")),
      light_(Font(Weight::kBook).forCairo()), bold_(Font(Weight::kBold).forCairo()),
      surface_(openSurface(file_, isPng_, width, height), &cairo_surface_destroy),
      context_(cairo_create(surface_.get()), &cairo_destroy)
{
    require(cairo_status(context_.get()), file_);

    // Letters are as wide as they are, not as whole pixels.
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
}

void Pen::use(Ink ink)
{
    cairo_set_source_rgba(context_.get(), part(ink.colour, 16), part(ink.colour, 8),
                          part(ink.colour, 0), ink.alpha);
}

void Pen::fill(const Box& box, Ink ink)
{
    use(ink);
    cairo_rectangle(context_.get(), box.x, box.y, box.width, box.height);
    cairo_fill(context_.get());
}

void Pen::fillDownward(const Box& box, Ink top, Ink bottom)
{
    fillWith(cairo_pattern_create_linear(0.0, box.y, 0.0, box.bottom()), top, bottom, box);
}

void Pen::fillRightward(const Box& box, Ink left, Ink right)
{
    fillWith(cairo_pattern_create_linear(box.x, 0.0, box.right(), 0.0), left, right, box);
}

// Takes the pattern over.
void Pen::fillWith(cairo_pattern_t* pattern, Ink from, Ink to, const Box& box)
{
    const auto add = [pattern](double at, Ink ink) {
        cairo_pattern_add_color_stop_rgba(pattern, at, part(ink.colour, 16), part(ink.colour, 8),
                                          part(ink.colour, 0), ink.alpha);
    };
    add(0.0, from);
    add(1.0, to);
    cairo_set_source(context_.get(), pattern);
    cairo_rectangle(context_.get(), box.x, box.y, box.width, box.height);
    cairo_fill(context_.get());
    cairo_pattern_destroy(pattern);
}

void Pen::type(const std::string& text, double x, double baseline, const Type& style)
{
    const double width = widthOf(text, style);
    const double shift = style.align == Align::kLeft     ? 0.0
                         : style.align == Align::kMiddle ? width / 2
                                                         : width;
    use(style.ink);
    // As outlines, which stand between pixels too.
    double left = x - shift;
    for (const std::string& one : letters(text)) {
        cairo_text_extents_t extents;
        cairo_text_extents(context_.get(), one.c_str(), &extents);
        cairo_move_to(context_.get(), left, baseline);
        cairo_text_path(context_.get(), one.c_str());
        left += extents.x_advance + kTracking * style.capHeight;
    }
    cairo_fill(context_.get());
}

double Pen::widthOf(const std::string& text, const Type& style)
{
    cairo_set_font_face(context_.get(), style.bold ? bold_.get() : light_.get());
    cairo_set_font_size(context_.get(), style.capHeight / kCapitalInEms);
    cairo_text_extents_t extents;
    cairo_text_extents(context_.get(), text.c_str(), &extents);
    const double gaps = text.empty() ? 0.0 : static_cast<double>(letters(text).size() - 1);
    return extents.x_advance + gaps * kTracking * style.capHeight;
}

bool Pen::screenshot(const std::string& path, const Box& box)
{
    const Surface shot = openPicture(path);
    if (!shot || cairo_image_surface_get_width(shot.get()) != kWindowWidth ||
        cairo_image_surface_get_height(shot.get()) != kWindowHeight) {
        return false;
    }
    fillWithPart(shot.get(), kViewport, box);
    return true;
}

bool Pen::picture(const std::string& path, const Box& box)
{
    const Surface picture = openPicture(path);
    if (!picture) {
        return false;
    }
    const Box whole{0.0, 0.0, static_cast<double>(cairo_image_surface_get_width(picture.get())),
                    static_cast<double>(cairo_image_surface_get_height(picture.get()))};
    fillWithPart(picture.get(), whole, box);
    return true;
}

// Fills the box with the middle of a part of the picture.
void Pen::fillWithPart(cairo_surface_t* picture, const Box& part, const Box& box)
{
    const double scale = std::max(box.width / part.width, box.height / part.height);
    cairo_t* context = context_.get();
    cairo_save(context);
    cairo_rectangle(context, box.x, box.y, box.width, box.height);
    cairo_clip(context);
    cairo_translate(context, box.x + box.width / 2, box.y + box.height / 2);
    cairo_scale(context, scale, scale);
    cairo_set_source_surface(context, picture, -part.x - part.width / 2, -part.y - part.height / 2);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BEST);
    cairo_paint(context);
    cairo_restore(context);
}

void Pen::finish()
{
    require(cairo_status(context_.get()), file_);
    if (isPng_) {
        require(cairo_surface_write_to_png(surface_.get(), file_.c_str()), file_);
    }
    cairo_surface_finish(surface_.get());
    require(cairo_surface_status(surface_.get()), file_);
}
