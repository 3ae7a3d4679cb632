// Pages of stills.
//
// Stills are 640 x 272 or of that shape, named by stillTime; where one is missing, its place stays
// empty. The pages are PREFIX-01.png and so on; what is returned is their names. Throws
// std::runtime_error.
#pragma once

#include "tools/cutting/moments.h"
#include "virtual/timing.h"

#include <array>
#include <span>
#include <string>
#include <vector>

// The frames of a moment that are shown, counted from the first that hears it.
constexpr auto kSheetOffsets = std::to_array<int>({-1, 0, 5, 20});

// The frames that a sheet of moments shows and `range` has: all of kSheetOffsets, or with `single`
// one for each. Each is there once.
std::vector<std::uint64_t> framesOnSheet(std::span<const Moment> moments, bool single,
                                         const FrameRange& range, FrameRate rate);

// A line for each moment, with its frames side by side.
std::vector<std::string> drawMomentPages(const std::string& prefix, const std::string& title,
                                         std::span<const Moment> moments,
                                         const std::string& stillFolder, FrameRate rate);

// A frame for each moment, row by row.
std::vector<std::string> drawFilmPages(const std::string& prefix, const std::string& title,
                                       std::span<const Moment> moments,
                                       const std::string& stillFolder, FrameRate rate);
