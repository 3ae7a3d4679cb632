// The report, as text: a table with a column for each stretch of the piece, and lists.
#pragma once

#include "tools/music_report/performance.h"

#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <vector>

enum class Part {
    kLoudness,
    kWidth,
    kOctaves,
    kArrivals,
    kOrders,
    kKick,
    kChord,
    kRubs,
    kSevenths,
    kTritones
};

struct ReportWishes {
    std::set<Part> parts;
    std::vector<Section> stretches; // of the piece; empty: the whole and each section
    std::size_t rubs = 25;          // that are listed at most
};

// The part of that name; throws std::out_of_range if there is none.
Part partNamed(const std::string& name);
bool isPart(const std::string& name);

void writeReport(std::ostream& stream, const Performance& performance, const ReportWishes& wishes);
