// The parts of the report that are worked out of a performance's sound.
#pragma once

#include "tools/music_report/loudness.h"
#include "tools/music_report/performance.h"
#include "tools/music_report/spectrum.h"
#include "tools/music_report/stems.h"

#include <optional>
#include <vector>

// Everything that is measured of one order, so that stretches of orders are put together of it.
struct OrderFigures {
    Steps steps;
    double truePeak = kSilence;
    PowerSpectrum spectrum;
};

// By order; those that are not played are empty.
std::vector<OrderFigures> measureOrders(const Performance& performance, const Sound& all);

// The step in loudness where an order begins.
struct Arrival {
    int order = 0;
    double before = 0.0; // the last bar's, LUFS
    double after = 0.0;  // the first bar's
};

// Of each order but the first. A bar has sixteen rows, or as many as there are.
std::vector<Arrival> findArrivals(const Performance& performance, const std::vector<float>& powers);

// How far kicks stick out when they are struck.
struct KickAttack {
    int kicks = 0;
    double overRest = 0.0;      // the median, dB
    double clickOverRest = 0.0; // the same, of what lies over kClickHz
    double buried = 0.0;        // the share of those whose click is more than 6 dB under the rest
};

KickAttack measureKicks(const Performance& performance, const Stems& stems, const Section& section);

// How a section's last chord ends: what is struck in the last row in which three channels or more
// strike a note that lasts.
struct LastChord {
    std::vector<PlayedNote> notes;
    std::vector<std::int64_t> ends; // of each of them
    std::int64_t end = 0;           // where it falls under kChordEnd for good, samples
};
constexpr double kChordEnd = -50.0; // LUFS

std::optional<LastChord> findLastChord(const Performance& performance, const Stems& stems,
                                       const Section& section);
