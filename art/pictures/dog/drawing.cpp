#include "art/pictures/dog/drawing.h"

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"

#include <algorithm>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/gtc/constants.hpp>

namespace dog {

namespace {

// What is too bright turns to a warm white.
glm::vec3 withoutGlare(glm::vec3 light)
{
    const glm::vec3 white(1.0F, 0.86F, 0.58F);
    const float bright = glm::max(1.0F, brightest(light));
    return glm::mix(white, light / bright, 1.0F / bright);
}

// From a joint to the hair's side there.
glm::vec2 sideAt(const std::vector<glm::vec2>& joints, std::size_t i, float width)
{
    const std::size_t next = std::min(i + 1, joints.size() - 1);
    const glm::vec2 step = joints[next] - joints[next - 1];
    const float t = static_cast<float>(i) / static_cast<float>(joints.size() - 1);
    const float half = 0.5F * width * power(1.0F - t, 0.7F) * glm::min(1.0F, 0.45F + 3.0F * t);
    return glm::vec2(-step.y, step.x) * (half / glm::max(0.001F, glm::length(step)));
}

} // namespace

Drawing::Drawing(int width, int height, int finer)
    : width_(width), height_(height), finer_(finer),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * finer, height * finer),
               cairo_surface_destroy),
      pen_(cairo_create(surface_.get()), cairo_destroy)
{
    cairo_scale(pen(), finer, finer);
    cairo_set_line_cap(pen(), CAIRO_LINE_CAP_ROUND);
}

void Drawing::setColour(glm::vec3 colour, float cover)
{
    const glm::vec3 c = withoutGlare(colour);
    cairo_set_source_rgba(pen(), c.r, c.g, c.b, cover);
}

void Drawing::fillSquare(glm::dvec2 corner, double size)
{
    cairo_rectangle(pen(), corner.x, corner.y, size, size);
    cairo_fill(pen());
}

void Drawing::fillDisc(glm::dvec2 middle, double radius, glm::vec3 colour, float cover)
{
    cairo_arc(pen(), middle.x, middle.y, radius, 0, glm::two_pi<double>());
    setColour(colour, cover);
    cairo_fill(pen());
}

void Drawing::fillHair(const std::vector<glm::vec2>& joints, float width, glm::vec3 root,
                       glm::vec3 tip, float cover)
{
    const glm::vec2 from = joints.front();
    const glm::vec2 to = joints.back();
    cairo_pattern_t* colours = cairo_pattern_create_linear(from.x, from.y, to.x, to.y);
    const auto addStop = [&](double place, glm::vec3 c) {
        c = withoutGlare(c);
        cairo_pattern_add_color_stop_rgba(colours, place, c.r, c.g, c.b, cover);
    };
    addStop(0.0, root);
    addStop(0.6, tip);
    cairo_set_source(pen(), colours);
    cairo_pattern_destroy(colours);
    addHair(joints, width);
    cairo_fill(pen());
}

void Drawing::addHair(const std::vector<glm::vec2>& joints, float width)
{
    std::vector<glm::vec2> outline(2 * joints.size()); // out on one side, back on the other
    for (std::size_t i = 0; i < joints.size(); ++i) {
        const glm::vec2 side = sideAt(joints, i, width);
        outline[i] = joints[i] + side;
        outline[outline.size() - 1 - i] = joints[i] - side;
    }
    for (const glm::vec2 point : outline) {
        cairo_line_to(pen(), point.x, point.y);
    }
    cairo_close_path(pen());
}

Picture Drawing::picture(int unit) const
{
    cairo_surface_flush(surface_.get());
    const unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
    Picture fine(width_ * finer_, height_ * finer_);
    fine.fill([&](int x, int y) {
        const unsigned char* pixel = bytes + y * stride + std::ptrdiff_t{x} * 4;
        return glm::vec4(pixel[2], pixel[1], pixel[0], 255); // blue comes first
    });
    Picture picture = fine.shrunk(finer_ / unit);
    picture.fill([&](int x, int y) { return picture.at(x, y) / 255.0F; });
    return picture;
}

} // namespace dog
