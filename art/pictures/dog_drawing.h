#pragma once

#include "art/pictures/kit/arithmetic.h"
#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/picture.h"

#include <algorithm>
#include <cairo.h>
#include <cstddef>
#include <glm/common.hpp>
#include <glm/geometric.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <memory>
#include <vector>

namespace dog {

// An opaque, black sheet that Cairo draws on in colours. Positions are in the picture's pixels from
// its upper left corner; the drawing is finer than that until it is scaled down.
class Drawing {
public:
    Drawing(int width, int height)
        : width_(width), height_(height),
          surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * kFiner, height * kFiner),
                   cairo_surface_destroy),
          pen_(cairo_create(surface_.get()), cairo_destroy)
    {
        cairo_scale(pen_.get(), kFiner, kFiner);
        cairo_set_line_cap(pen_.get(), CAIRO_LINE_CAP_ROUND);
    }

    cairo_t* pen() { return pen_.get(); }

    void setColour(glm::vec3 colour, float cover = 1.0F)
    {
        const glm::vec3 c = colour / glm::max(1.0F, brightest(colour)); // too bright keeps its hue
        cairo_set_source_rgba(pen(), c.r, c.g, c.b, cover);
    }

    void fillPixel(int x, int y)
    {
        cairo_rectangle(pen(), x, y, 1, 1);
        cairo_fill(pen());
    }

    // A line that swells and ends in a point.
    void fillHair(const std::vector<glm::vec2>& joints, float width)
    {
        std::vector<glm::vec2> outline(2 * joints.size()); // out on one side, back on the other
        for (std::size_t i = 0; i < joints.size(); ++i) {
            const std::size_t next = std::min(i + 1, joints.size() - 1);
            const glm::vec2 step = joints[next] - joints[next - 1];
            const float t = static_cast<float>(i) / static_cast<float>(joints.size() - 1);
            const float half =
                0.5F * width * power(1.0F - t, 0.7F) * glm::min(1.0F, 0.45F + 3.0F * t);
            const glm::vec2 aside =
                glm::vec2(-step.y, step.x) * (half / glm::max(0.001F, glm::length(step)));
            outline[i] = joints[i] + aside;
            outline[outline.size() - 1 - i] = joints[i] - aside;
        }
        for (const glm::vec2 point : outline) {
            cairo_line_to(pen(), point.x, point.y);
        }
        cairo_fill(pen());
    }

    // The drawing, scaled down.
    [[nodiscard]] Picture picture() const
    {
        cairo_surface_flush(surface_.get());
        const unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
        const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
        Picture fine(width_ * kFiner, height_ * kFiner);
        fine.fill([&](int x, int y) {
            const unsigned char* pixel = bytes + y * stride + std::ptrdiff_t{x} * 4;
            return glm::vec4(pixel[2], pixel[1], pixel[0], 255); // blue comes first
        });
        Picture picture = fine.shrunk(kFiner);
        picture.fill([&](int x, int y) { return picture.at(x, y) / 255.0F; });
        return picture;
    }

private:
    static constexpr int kFiner = 2; // pixels drawn to one of the picture's, each way

    int width_;
    int height_;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> pen_;
};

} // namespace dog
