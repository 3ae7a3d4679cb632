// What instruments are made from: signals as lists of doubles, oscillators, noise, filters,
// envelopes and space. Times are in seconds, frequencies in hertz, full scale is 1.
//
// The same calls give the same samples on every machine: noise comes from a seed, and nothing
// feeds back in a way that would make a last-bit difference grow.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

using Signal = std::vector<double>;

constexpr double kTau = 6.283185307179586476925286766559;

// White noise from -1 to 1.
class Noise {
public:
    explicit Noise(std::uint64_t seed) : state_(seed) {}

    double next();

private:
    std::uint64_t state_;
};

// A wave that goes on from call to call, at each call's frequency; band-limited well enough for
// samples that are played once.
class Oscillator {
public:
    // `phase` counts cycles; whole ones change nothing.
    explicit Oscillator(double rateHz, double phase = 0.0)
        : rateHz_(rateHz), phase_(phase - std::floor(phase))
    {
    }

    double sine(double hertz);
    double saw(double hertz);
    double pulse(double hertz, double width);

private:
    double advance(double hertz);

    double rateHz_;
    double phase_; // 0 to 1
};

// A state-variable filter, stable at every cutoff below half the rate, which may move with time.
class Filter {
public:
    explicit Filter(double rateHz) : rateHz_(rateHz) {}

    double low(double input, double cutoffHz, double resonance = 0.7);
    double band(double input, double cutoffHz, double resonance = 0.7); // 1 at its centre
    double high(double input, double cutoffHz, double resonance = 0.7);

private:
    void step(double input, double cutoffHz, double resonance);

    double rateHz_;
    double first_ = 0.0;
    double second_ = 0.0;
    double lowOut_ = 0.0;
    double bandOut_ = 0.0;
    double highOut_ = 0.0;
};

// Falls from 1 toward 0; 37 % is left after `seconds`.
inline double decay(double t, double seconds)
{
    return std::exp(-t / seconds);
}

// 0 to 1 along a straight line, then 1.
inline double attack(double t, double seconds)
{
    return t < seconds ? t / seconds : 1.0;
}

// Soft clipping that leaves small signals as they are.
inline double saturate(double value, double drive)
{
    return std::tanh(value * drive) / drive;
}

// How many samples last `seconds`.
inline std::size_t samplesFor(double seconds, double rateHz)
{
    return static_cast<std::size_t>(std::lround(seconds * rateHz));
}

// The signal of a function of time.
template <class Function>
Signal generate(double seconds, double rateHz, Function function)
{
    Signal signal(samplesFor(seconds, rateHz));
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] = function(static_cast<double>(i) / rateHz);
    }
    return signal;
}

// A small room: echoes that lose their highs, added to the signal, which keeps its length.
Signal withRoom(const Signal& dry, double rateHz, double seconds, double amount);

// The signal without its mean.
Signal centred(Signal signal);

// Mean taken away, last `fadeSeconds` faded to silence, highest peak set to `peak`.
Signal finished(Signal signal, double rateHz, double peak, double fadeSeconds);

// Highest peak set to `peak`; for loops, whose ends must stay as they are.
Signal scaledToPeak(Signal signal, double peak);
