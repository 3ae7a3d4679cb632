#include "reference/plain_line_set.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

void addPixel(const PlainCanvas& canvas, long long x, long long y, int c0, int c1, int c2)
{
    std::uint8_t* pixel = canvas.pixels + (y * canvas.width + x) * 4;
    pixel[2] = static_cast<std::uint8_t>(std::min(255, pixel[2] + c0));
    pixel[1] = static_cast<std::uint8_t>(std::min(255, pixel[1] + c1));
    pixel[0] = static_cast<std::uint8_t>(std::min(255, pixel[0] + c2));
    pixel[3] = 0;
}

} // namespace

void plainDrawLine(const PlainCanvas& canvas, float x0, float y0, float x1, float y1, int c0,
                   int c1, int c2, int thickness)
{
    const long long w = canvas.width;
    const long long h = canvas.height;
    float xa = x1;
    float ya = y1;
    float xb = x0;
    float yb = y0;
    if (y1 < y0) {
        std::swap(xa, xb);
        std::swap(ya, yb);
    }
    if (ya < 0 || yb > static_cast<float>(h) || (xa < 0 && xb < 0) ||
        (xa > static_cast<float>(w) && xb > static_cast<float>(w))) {
        return;
    }
    const float dx = xa - xb;
    const float dy = ya - yb;
    if (!(std::fabs(dx) < 0x1p40F) || !(std::fabs(dy) < 0x1p40F)) {
        return; // not finite, or out of every picture
    }
    const auto idx = static_cast<long long>(dx);
    const auto idy = static_cast<long long>(dy);
    const auto xai = static_cast<long long>(xa);
    const auto yai = static_cast<long long>(ya);
    const auto xbi = static_cast<long long>(xb);
    auto ybi = static_cast<long long>(yb);

    if (std::fabs(dx) <= std::fabs(dy)) {
        if (idy < 1) {
            return;
        }
        const float k = dx / dy;
        float x = xb - (dy - static_cast<float>(idy)) * k;
        if (ybi < 0) {
            x = x + static_cast<float>(-ybi) * k;
            ybi = 0;
        }
        auto fx = static_cast<long long>(x * 65536.0F);
        const auto step = static_cast<long long>(k * 65536.0F);
        long long end = yai;
        if (yai + thickness >= h) {
            end = h - thickness - 1;
        }
        for (long long y = ybi; y < end; ++y) {
            const long long column = fx >> 16;
            fx += step;
            if (column >= 0 && column + thickness < w) {
                for (int i = 0; i < thickness; ++i) {
                    addPixel(canvas, column + i, y, c0, c1, c2);
                }
            }
        }
    } else {
        if (idx == 0) {
            return;
        }
        const float m = dy / dx;
        long long xs = xai;
        long long xe = xbi;
        float y = ya - (dx - static_cast<float>(idx)) * m;
        if (xbi <= xai) {
            xs = xbi;
            xe = xai;
            y = yb - (dx - static_cast<float>(idx)) * m;
        }
        if (xs < 0) {
            y = y + static_cast<float>(-xs) * m;
            xs = 0;
        }
        auto fy = static_cast<long long>(y * 65536.0F);
        const auto step = static_cast<long long>(m * 65536.0F);
        if (xe + thickness >= w) {
            xe = w - 1;
        }
        for (long long x = xs; x < xe; ++x) {
            const long long row = fy >> 16;
            fy += step;
            if (row >= 0 && row + thickness < h) {
                for (int i = 0; i < thickness; ++i) {
                    addPixel(canvas, x, row + i, c0, c1, c2);
                }
            }
        }
    }
}

std::vector<PlainVertex> plainCurve(int vertexCount, int style)
{
    using Colour = std::array<float, 3>;
    constexpr std::array kWarm = {
        Colour{7, 32, 63},
        Colour{1, 10, 63},
        Colour{7, 42, 63},
        Colour{2, 63, 63}
    };
    std::vector<PlainVertex> vertices;
    float t = 0.0F;
    for (int i = 0; i < vertexCount / 2; ++i) {
        // A whole number times t is rounded to single precision, a decimal one is not.
        const double fourteen = 14 * t;
        const double eight = 8 * t;
        PlainVertex from = {};
        from.x = static_cast<float>(1.2 * std::cos(fourteen));
        from.y = static_cast<float>(1.6 * std::sin(1.28927348934 * t));
        from.z = static_cast<float>(1.4 * std::sin(42.69 * t));
        PlainVertex to = {};
        to.x = static_cast<float>(-1.2 * std::cos(0.333 * t));
        to.y = static_cast<float>(-1.6 * std::sin(eight));
        to.z = static_cast<float>(-1.4 * std::sin(42.69 * t));

        t = static_cast<float>(t + 0.2);
        const int k = static_cast<int>((std::sin(42.69 * t) * 0.5 + 0.5) * 3.0);
        from.colour = kWarm.at(static_cast<std::size_t>(k));
        if (style == 2) {
            std::swap(from.colour[0], from.colour[2]); // blue for red
        }
        vertices.push_back(from);
        vertices.push_back(to);
    }
    return vertices;
}

PlainFigure::PlainFigure(std::vector<PlainVertex> vertices)
    : vertices_(std::move(vertices)), transformed_(vertices_)
{
}

void PlainFigure::transform(const std::array<float, 3>& angles,
                            const std::array<float, 3>& position)
{
    const double sa = std::sin(static_cast<double>(angles[0]));
    const double ca = std::cos(static_cast<double>(angles[0]));
    const double sb = std::sin(static_cast<double>(angles[1]));
    const double cb = std::cos(static_cast<double>(angles[1]));
    const double sc = std::sin(static_cast<double>(angles[2]));
    const double cc = std::cos(static_cast<double>(angles[2]));
    const std::array row0 = {cb * cc, sa * sb * cc + ca * sc, sa * sc - ca * sb * cc};
    const std::array row1 = {-cb * sc, ca * cc - sa * sb * sc, ca * sb * sc + sa * cc};
    const std::array row2 = {sb, -sa * cb, ca * cb};
    const std::array rows = {row0, row1, row2};
    for (std::size_t i = 0; i < vertices_.size(); ++i) {
        const PlainVertex& v = vertices_[i];
        std::array<float, 3> result{};
        for (std::size_t r = 0; r < 3; ++r) {
            result[r] = static_cast<float>(rows[r][0]) * v.x +
                        static_cast<float>(rows[r][1]) * v.y +
                        static_cast<float>(rows[r][2]) * v.z + position[r];
        }
        transformed_[i] = {result[0], result[1], result[2], v.colour};
    }
}

void PlainFigure::scaleColours(float factor)
{
    for (std::size_t i = 0; i < vertices_.size() / 2; ++i) {
        for (std::size_t c = 0; c < 3; ++c) {
            transformed_[i].colour[c] = vertices_[i].colour[c] * factor;
        }
    }
}

void PlainFigure::draw(const PlainCanvas& canvas, int thickness)
{
    for (PlainVertex& v : transformed_) {
        v.x /= v.z;
        v.y /= v.z;
    }
    const auto hw = std::floor(static_cast<float>(canvas.width) / 2);
    const auto hh = std::floor(static_cast<float>(canvas.height) / 2);
    for (std::size_t i = 0; i + 1 < transformed_.size(); i += 2) {
        const PlainVertex& a = transformed_[i];
        const PlainVertex& b = transformed_[i + 1];
        plainDrawLine(canvas, a.x * hw + hw, a.y * hh + hh, b.x * hw + hw, b.y * hh + hh,
                      static_cast<int>(a.colour[0]), static_cast<int>(a.colour[1]),
                      static_cast<int>(a.colour[2]), thickness);
    }
}
