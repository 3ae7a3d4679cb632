#include "art/music/synth/signal.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

double Noise::next()
{
    // A Weyl sequence through a mixing function; the upper 53 bits make the fraction.
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    mixed ^= mixed >> 31;
    return (static_cast<double>(mixed >> 11) / 4503599627370496.0) - 1.0; // 2^52
}

double Oscillator::advance(double hertz)
{
    const double phase = phase_;
    phase_ += hertz / rateHz_;
    phase_ -= std::floor(phase_);
    return phase;
}

double Oscillator::sine(double hertz)
{
    return std::sin(kTau * advance(hertz));
}

namespace {

// Rounds the corner of a step of height 2 at phase 0 over one sample to each side.
double stepCorrection(double phase, double increment)
{
    if (phase < increment) {
        const double t = phase / increment;
        return t + t - (t * t) - 1.0;
    }
    if (phase > 1.0 - increment) {
        const double t = (phase - 1.0) / increment;
        return (t * t) + t + t + 1.0;
    }
    return 0.0;
}

} // namespace

double Oscillator::saw(double hertz)
{
    const double phase = advance(hertz);
    return (2.0 * phase) - 1.0 - stepCorrection(phase, hertz / rateHz_);
}

double Oscillator::pulse(double hertz, double width)
{
    const double phase = advance(hertz);
    const double increment = hertz / rateHz_;
    const double shifted = phase - width < 0.0 ? phase - width + 1.0 : phase - width;
    return (phase < width ? 1.0 : -1.0) + stepCorrection(phase, increment) -
           stepCorrection(shifted, increment);
}

void Filter::step(double input, double cutoffHz, double resonance)
{
    const double cutoff = std::clamp(cutoffHz, 5.0, 0.48 * rateHz_);
    const double g = std::tan(0.5 * kTau * cutoff / rateHz_);
    const double k = 1.0 / resonance;
    const double a = 1.0 / (1.0 + g * (g + k));
    highOut_ = (input - (g + k) * first_ - second_) * a;
    bandOut_ = (g * highOut_) + first_;
    lowOut_ = (g * bandOut_) + second_;
    first_ = bandOut_ + (g * highOut_);
    second_ = lowOut_ + (g * bandOut_);
}

double Filter::low(double input, double cutoffHz, double resonance)
{
    step(input, cutoffHz, resonance);
    return lowOut_;
}

double Filter::band(double input, double cutoffHz, double resonance)
{
    step(input, cutoffHz, resonance);
    return bandOut_ / resonance;
}

double Filter::high(double input, double cutoffHz, double resonance)
{
    step(input, cutoffHz, resonance);
    return highOut_;
}

Signal withRoom(const Signal& dry, double rateHz, double seconds, double amount)
{
    constexpr std::array kDelays = {0.0297, 0.0371, 0.0411, 0.0437, 0.0533, 0.0613};
    constexpr double kDampingHz = 4200.0;
    constexpr double kSilence = 0.001; // what is left of an echo after `seconds`
    Signal wet = dry;
    for (const double delay : kDelays) {
        const std::size_t length = samplesFor(delay, rateHz);
        const double feedback = std::pow(kSilence, delay / seconds);
        Signal line(length, 0.0);
        Filter damping(rateHz);
        for (std::size_t i = 0; i < dry.size(); ++i) {
            double& slot = line[i % length];
            const double echo = slot;
            wet[i] += amount * echo / static_cast<double>(kDelays.size());
            slot = dry[i] + (feedback * damping.low(echo, kDampingHz));
        }
    }
    return wet;
}

Signal scaledToPeak(Signal signal, double peak)
{
    double highest = 0.0;
    for (const double value : signal) {
        highest = std::max(highest, std::abs(value));
    }
    for (double& value : signal) {
        value *= highest > 0.0 ? peak / highest : 0.0;
    }
    return signal;
}

Signal centred(Signal signal)
{
    const double mean =
        std::accumulate(signal.begin(), signal.end(), 0.0) / static_cast<double>(signal.size());
    for (double& value : signal) {
        value -= mean;
    }
    return signal;
}

Signal finished(Signal signal, double rateHz, double peak, double fadeSeconds)
{
    signal = centred(std::move(signal));
    const std::size_t fade = std::min(samplesFor(fadeSeconds, rateHz), signal.size());
    for (std::size_t left = 0; left < fade; ++left) {
        signal[signal.size() - 1 - left] *= static_cast<double>(left) / static_cast<double>(fade);
    }
    return scaledToPeak(std::move(signal), peak);
}
