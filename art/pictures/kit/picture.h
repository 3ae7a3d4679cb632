#pragma once

#include "art/pictures/kit/arithmetic.h"

#include <cmath>
#include <cstddef>
#include <glm/vec4.hpp>
#include <vector>

// A picture while it is being made: rows top first, display values from 0 to 1.
//
// Positions are in pixels. Pixel (0, 0) has its middle at (0, 0), and positions outside wrap
// around, so a picture that is sampled or differenced across its border tiles.
template <typename Pixel>
class Raster {
public:
    Raster(int width, int height, Pixel pixel = Pixel(0))
        : width_(width), height_(height),
          pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), pixel)
    {
    }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    // The pixel at a place inside the picture.
    [[nodiscard]] Pixel& at(int x, int y) { return pixels_[index(x, y)]; }
    [[nodiscard]] const Pixel& at(int x, int y) const { return pixels_[index(x, y)]; }

    // The pixel at any place, wrapped around.
    [[nodiscard]] const Pixel& wrapped(int x, int y) const
    {
        return at(wrap(x, width_), wrap(y, height_));
    }

    // The four pixels around a place, weighted bilinearly.
    [[nodiscard]] Pixel sample(float x, float y) const
    {
        const int left = static_cast<int>(std::floor(x));
        const int top = static_cast<int>(std::floor(y));
        const float right = x - static_cast<float>(left);
        const float below = y - static_cast<float>(top);
        const Pixel upper = wrapped(left, top) * (1 - right) + wrapped(left + 1, top) * right;
        const Pixel lower =
            wrapped(left, top + 1) * (1 - right) + wrapped(left + 1, top + 1) * right;
        return upper * (1 - below) + lower * below;
    }

    // Sets every pixel to pixelAt(x, y), row by row.
    template <typename Function>
    void fill(const Function& pixelAt)
    {
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                at(x, y) = pixelAt(x, y);
            }
        }
    }

    // The picture drawn smaller: each pixel is the average of factor x factor of this one's.
    [[nodiscard]] Raster shrunk(int factor) const
    {
        Raster result(width_ / factor, height_ / factor);
        result.fill([&](int x, int y) {
            Pixel sum(0);
            for (int i = 0; i < factor * factor; ++i) {
                sum += at(x * factor + i % factor, y * factor + i / factor);
            }
            return sum / static_cast<float>(factor * factor);
        });
        return result;
    }

private:
    [[nodiscard]] std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

using Picture = Raster<glm::vec4>; // red, green, blue, alpha
using GreyPicture = Raster<float>; // brightness, height or coverage
