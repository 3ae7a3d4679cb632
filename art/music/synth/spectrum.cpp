#include "art/music/synth/spectrum.h"

#include <algorithm>
#include <complex>

namespace {

using Complex = std::complex<double>;

// Loop sizes are multiples of this, so that the transform can be halved five times.
constexpr std::size_t kGrain = 32;

std::vector<Complex> circle(std::size_t size)
{
    std::vector<Complex> points(size);
    for (std::size_t i = 0; i < size; ++i) {
        const double angle = kTau * static_cast<double>(i) / static_cast<double>(size);
        points[i] = Complex(std::cos(angle), std::sin(angle));
    }
    return points;
}

// Every sample by its sum, for sizes that cannot be halved.
std::vector<Complex> summed(const std::vector<Complex>& lines, const std::vector<Complex>& turns)
{
    const std::size_t size = lines.size();
    std::vector<Complex> sums(size);
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t n = 0, turn = 0; n < size; ++n) {
            sums[i] += lines[n] * turns[turn];
            turn += i;
            turn -= turn >= size ? size : 0;
        }
    }
    return sums;
}

// Every second line, from `first` on.
std::vector<Complex> everySecond(const std::vector<Complex>& lines, std::size_t first)
{
    std::vector<Complex> half(lines.size() / 2);
    for (std::size_t n = 0; n < half.size(); ++n) {
        half[n] = lines[(2 * n) + first];
    }
    return half;
}

// Sample i is the sum of all lines, line n turned by n * i points of the circle. The even and the
// odd lines are summed apart while the size can be halved.
std::vector<Complex> transform(const std::vector<Complex>& lines)
{
    const std::size_t size = lines.size();
    const std::vector<Complex> turns = circle(size);
    if (size % 2 == 1) {
        return summed(lines, turns);
    }
    const std::size_t half = size / 2;
    const std::vector<Complex> even = transform(everySecond(lines, 0));
    const std::vector<Complex> odd = transform(everySecond(lines, 1));
    std::vector<Complex> sums(size);
    for (std::size_t i = 0; i < half; ++i) {
        sums[i] = even[i] + (odd[i] * turns[i]);
        sums[i + half] = even[i] + (odd[i] * turns[i + half]);
    }
    return sums;
}

} // namespace

LoopShape fitLoop(double hertz, double rateHz, double seconds)
{
    constexpr double kSearch = 1.5; // up to this many times as long
    constexpr double kStep = kGrain;
    const double period = rateHz / hertz;
    const auto first = static_cast<std::size_t>(std::ceil(seconds * hertz));
    const auto last = static_cast<std::size_t>(std::ceil(kSearch * seconds * hertz));
    LoopShape best;
    double leastError = 1.0;
    for (std::size_t cycles = first; cycles <= last; ++cycles) {
        const double exact = static_cast<double>(cycles) * period;
        const double size = kStep * std::round(exact / kStep);
        const double error = std::abs(exact - size) / exact;
        if (error < leastError) {
            leastError = error;
            best = {static_cast<std::size_t>(size), cycles};
        }
    }
    return best;
}

Spectrum::Spectrum(const LoopShape& shape, double rateHz)
    : shape_(shape), rateHz_(rateHz), cosines_(shape.size / 2, 0.0), sines_(shape.size / 2, 0.0)
{
}

void Spectrum::addLine(long line, double amplitude, double phase)
{
    if (line >= 1 && line < static_cast<long>(cosines_.size())) {
        const auto index = static_cast<std::size_t>(line);
        cosines_[index] += amplitude * std::cos(phase);
        sines_[index] += amplitude * std::sin(phase);
    }
}

void Spectrum::addWave(double harmonic, double amplitude, double phase, int offset)
{
    const long line = std::lround(harmonic * static_cast<double>(shape_.cycles));
    addLine(line + offset, amplitude, phase);
}

void Spectrum::addBand(double harmonic, double amplitude, double cents, Noise& phases)
{
    const double centre = harmonic * static_cast<double>(shape_.cycles);
    const double width = std::max(0.6, centre * (std::exp2(cents / 1200.0) - 1.0));
    const long last = std::lround(centre + (2.5 * width));
    for (long line = std::lround(centre - (2.5 * width)); line <= last; ++line) {
        const double distance = (static_cast<double>(line) - centre) / width;
        const double share = std::exp(-distance * distance) / std::sqrt(width);
        addLine(line, amplitude * share, 0.5 * kTau * phases.next());
    }
}

int Spectrum::harmonics() const
{
    return static_cast<int>(0.5 * rateHz_ / hertz());
}

double Spectrum::hertz() const
{
    return rateHz_ * static_cast<double>(shape_.cycles) / static_cast<double>(shape_.size);
}

Signal Spectrum::toSignal() const
{
    std::vector<Complex> lines(shape_.size);
    for (std::size_t line = 1; line < cosines_.size(); ++line) {
        lines[line] = Complex(cosines_[line], sines_[line]);
    }
    const std::vector<Complex> waves = transform(lines);
    Signal signal(shape_.size);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] = waves[i].real();
    }
    return signal;
}
