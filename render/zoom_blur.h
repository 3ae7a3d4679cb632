#pragma once

#include "render/arrays.h"

#include <cstddef>
#include <cstdint>

// Smears a 32-bit image along the rays from its centre: every pixel becomes the average of the
// source pixels at 1.0, 1.1, 1.2 ... times its own distance from the centre, up to a given number
// of them and as far as they lie inside the image. Bright shapes throw streaks toward the centre.
//
// The positions of all samples are computed once; a frame looks them up, adds and divides. Images
// are borrowed and have the size given to build: 4 bytes per pixel, rows top first.
class ZoomBlur {
public:
    // Makes the table of positions. If there is no memory for it, the process ends with a message
    // on standard error and status 0.
    void build(int width, int height);

    void setSource(const std::uint8_t* pixels) { source_ = pixels; }
    void setTarget(std::uint32_t* pixels) { target_ = pixels; }

    // Writes every pixel of the target from up to `levels` samples, 1 to 20; alpha becomes 0. The
    // source's top left pixel counts as outside, except for the target's top left pixel.
    void render(int levels);

private:
    // Columns `begin` to `end` - 1.
    struct Span {
        std::int32_t begin;
        std::int32_t end;
    };

    void fillTable();
    void findSpans();
    void countSamples(int levels);
    // The index of a row, counted through all levels.
    [[nodiscard]] std::ptrdiff_t row(int level, int y) const;
    [[nodiscard]] const std::int32_t* places(int level, int y) const;
    [[nodiscard]] const Span& sampled(int level, int y) const;
    void startSums(int y);
    void addLevel(int level, int y);

    const std::uint8_t* source_ = nullptr; // borrowed
    std::uint32_t* target_ = nullptr;      // borrowed

    // By level, row and column: the byte offset of the source's pixel, 0 where that is outside.
    Array<std::int32_t> table_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;

    // By level and row: the pixels that have a sample at this level and at all before it.
    Array<Span> spans_;

    // By pixel: the factor that divides by the number of its samples in countedLevels_ levels.
    Array<float> reciprocals_;
    std::int32_t countedLevels_ = 0;

    // The sums of one row: channels 0 and 2 of every pixel, two to a word, and channel 1 of every
    // pixel.
    Array<std::uint32_t> outerSums_;
    Array<std::uint32_t> middleSums_;
};
