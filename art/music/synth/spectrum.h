// Sounds drawn as spectra: loops whose partials all fit a whole number of times, so that the end
// meets the beginning exactly.
#pragma once

#include "art/music/synth/signal.h"

#include <algorithm>

// A loop in which a pitch fits a whole number of times, within half a cent.
struct LoopShape {
    std::size_t size = 0;   // samples
    std::size_t cycles = 0; // of the pitch
};

// The best fit that lasts `seconds` or up to half as long again.
LoopShape fitLoop(double hertz, double rateHz, double seconds);

// The lines of a loop's spectrum: line n is the wave that fits the loop n times.
class Spectrum {
public:
    Spectrum(const LoopShape& shape, double rateHz);

    // Adds a wave at `harmonic` times the pitch, `offset` lines away from it.
    void addWave(double harmonic, double amplitude, double phase, int offset = 0);

    // Adds a band of lines around `harmonic` times the pitch, with random phases: many players
    // at slightly different pitches, spread by about `cents` to both sides.
    void addBand(double harmonic, double amplitude, double cents, Noise& phases);

    // The highest harmonic below half the rate.
    [[nodiscard]] int harmonics() const;
    // The pitch as it fits the loop.
    [[nodiscard]] double hertz() const;
    [[nodiscard]] Signal toSignal() const;

private:
    void addLine(long line, double amplitude, double phase);

    LoopShape shape_;
    double rateHz_;
    std::vector<double> cosines_; // amplitude by line
    std::vector<double> sines_;
};

// A loop with an onset of `seconds` in front of it. The onset is what `process(value, t)` makes of
// the loop as it would sound before its own beginning, cross-faded to the plain loop over its
// second half. The loop starts at samplesFor(seconds, rateHz).
template <class Process>
Signal withOnset(const Signal& loop, double seconds, double rateHz, Process process)
{
    const std::size_t onset = samplesFor(seconds, rateHz);
    Signal result(onset + loop.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        const std::size_t before = onset > i ? (onset - i) % loop.size() : 0;
        const double value = loop[i < onset ? (loop.size() - before) % loop.size() : i - onset];
        const double t = static_cast<double>(i) / rateHz;
        const double share = i < onset ? std::max(0.0, (2.0 * t / seconds) - 1.0) : 1.0;
        result[i] = i < onset ? ((1.0 - share) * process(value, t)) + (share * value) : value;
    }
    return result;
}

// What `process(value, i)` makes of a loop once it has settled: it is given the loop twice, and
// what it makes of the second time is kept.
template <class Process>
Signal settled(const Signal& loop, Process process)
{
    Signal result(loop.size());
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t i = 0; i < loop.size(); ++i) {
            result[i] = process(loop[i], i);
        }
    }
    return result;
}
