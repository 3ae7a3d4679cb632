#include "tools/music_report/spectrum.h"

#include "tools/music_report/loudness.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace {

using Complex = std::complex<float>;

constexpr std::size_t kSize = 8192;
constexpr std::int64_t kHop = kSize / 2;
constexpr double kLineHz = static_cast<double>(kSamplesPerSecond) / kSize;

std::vector<Complex> makeTurns()
{
    std::vector<Complex> turns(kSize / 2);
    for (std::size_t i = 0; i < turns.size(); ++i) {
        turns[i] =
            Complex(std::polar(1.0, -2.0 * std::numbers::pi * static_cast<double>(i) / kSize));
    }
    return turns;
}

// In place, for kSize values.
void transform(std::vector<Complex>& values)
{
    static const std::vector<Complex> kTurns = makeTurns();
    for (std::size_t i = 1, j = 0; i < kSize; ++i) {
        std::size_t bit = kSize / 2;
        for (; (j & bit) != 0; bit /= 2) {
            j ^= bit;
        }
        j ^= bit;
        if (i < j) {
            std::swap(values[i], values[j]);
        }
    }
    for (std::size_t half = 1; half < kSize; half *= 2) {
        const std::size_t stride = kSize / 2 / half;
        for (std::size_t block = 0; block < kSize; block += 2 * half) {
            for (std::size_t i = 0; i < half; ++i) {
                Complex& low = values[block + i];
                Complex& high = values[block + i + half];
                const Complex& turn = kTurns[i * stride];
                const Complex turned(high.real() * turn.real() - high.imag() * turn.imag(),
                                     high.real() * turn.imag() + high.imag() * turn.real());
                high = low - turned;
                low += turned;
            }
        }
    }
}

std::vector<float> makeWindow()
{
    std::vector<float> window(kSize);
    for (std::size_t i = 0; i < kSize; ++i) {
        const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / kSize;
        window[i] = static_cast<float>(0.5 - 0.5 * std::cos(angle));
    }
    return window;
}

} // namespace

void PowerSpectrum::add(std::span<const float> sound, std::int64_t firstFrame,
                        std::int64_t endFrame)
{
    static const std::vector<float> kWindow = makeWindow();
    lines_.resize(kSize / 2);
    std::vector<Complex> values(kSize);
    const auto frames = static_cast<std::int64_t>(sound.size() / kSoundChannels);
    const std::int64_t half = kSize / 2;
    const std::int64_t first = std::max((firstFrame + kHop - 1) / kHop * kHop, half);
    for (std::int64_t middle = first; middle < endFrame && middle + half <= frames;
         middle += kHop) {
        const auto at = static_cast<std::size_t>(middle - half) * kSoundChannels;
        for (std::size_t i = 0; i < kSize; ++i) {
            const float left = sound[at + i * kSoundChannels];
            const float right = sound[at + i * kSoundChannels + 1];
            // Mid and side are both real, so that one transform serves for the two of them.
            values[i] = Complex(left + right, left - right) * (0.5F * kWindow[i]);
        }
        transform(values);
        for (std::size_t line = 1; line < lines_.size(); ++line) {
            const Complex here = values[line];
            const Complex mirrored = std::conj(values[kSize - line]);
            lines_[line].mid += static_cast<double>(std::norm(here + mirrored));
            lines_[line].side += static_cast<double>(std::norm(here - mirrored));
        }
    }
}

void PowerSpectrum::add(const PowerSpectrum& other)
{
    lines_.resize(std::max(lines_.size(), other.lines_.size()));
    for (std::size_t i = 0; i < other.lines_.size(); ++i) {
        lines_[i].mid += other.lines_[i].mid;
        lines_[i].side += other.lines_[i].side;
    }
}

MidSide PowerSpectrum::in(const Band& band) const
{
    MidSide sum;
    for (std::size_t line = 1; line < lines_.size(); ++line) {
        const double hertz = static_cast<double>(line) * kLineHz;
        if (hertz >= band.lowHz && hertz < band.highHz) {
            sum.mid += lines_[line].mid;
            sum.side += lines_[line].side;
        }
    }
    return sum;
}

double sideToMid(const PowerSpectrum& spectrum, const Band& band)
{
    const MidSide power = spectrum.in(band);
    return std::max(decibels(power.side) - decibels(power.mid), kSilence);
}

std::array<double, kOctavesHz.size()> overSlope(const PowerSpectrum& spectrum)
{
    constexpr double kSlope = -1.5;   // dB an octave
    constexpr std::size_t kFirst = 1; // octaves that the line is laid through
    constexpr std::size_t kLast = 8;
    std::array<double, kOctavesHz.size()> over{};
    double sum = 0.0;
    for (std::size_t i = 0; i < over.size(); ++i) {
        const double centre = kOctavesHz.at(i);
        const MidSide power =
            spectrum.in({centre / std::numbers::sqrt2, centre * std::numbers::sqrt2});
        over.at(i) = decibels(power.mid + power.side) - kSlope * static_cast<double>(i);
        sum += i >= kFirst && i <= kLast ? over.at(i) : 0.0;
    }
    for (double& each : over) {
        each -= sum / (kLast - kFirst + 1);
    }
    return over;
}
