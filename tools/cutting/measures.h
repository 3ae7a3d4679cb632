// What a film's frames say of its cuts, its events and its pictures.
//
// Frames are counted from the film's first, which is the show's first.
#pragma once

#include "tools/cutting/frame_values.h"
#include "tools/cutting/moments.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// How much more the picture changes at a moment than it did just before.
struct Impact {
    Moment moment;
    std::uint64_t frame = 0; // the first that hears it
    double change = 0.0;     // from the frame before
    double usual = 0.0;      // the median of the ten changes before that
    double ratio = 0.0;      // of the two; below kLeastUsual, that stands for the usual change
};
constexpr std::size_t kFramesBefore = 10;
constexpr double kLeastUsual = 0.1;

// Of the moments that the film has, but for one at its first frame.
std::vector<Impact> impactsOf(std::span<const FrameValues> film, std::span<const Moment> moments,
                              FrameRate rate);

// A run of frames, and the mean of what was looked for in them.
struct Run {
    FrameRange frames;
    double level = 0.0;
};

// Where every window of `length` frames changes by less than `most` in the mean, as long as windows
// touch each other. The change from the frame before the window is not a part of it.
std::vector<Run> stillRuns(std::span<const FrameValues> film, std::size_t length, double most);

// Frames that are darker than `most` in the mean, more than `length` of them one after the other.
std::vector<Run> darkRuns(std::span<const FrameValues> film, std::size_t length, double most);

// The frame with the largest share of blown-out pixels; 0 for an empty film.
std::uint64_t mostBlownOut(std::span<const FrameValues> film);
