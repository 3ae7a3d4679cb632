#include "tools/music_report/loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace {

constexpr double kRateHz = kSamplesPerSecond;
constexpr double kAbsoluteGate = -70.0; // LUFS

// A filter of second order, one channel.
class SecondOrder {
public:
    SecondOrder(const std::array<double, 3>& b, const std::array<double, 3>& a)
        : b_{b[0] / a[0], b[1] / a[0], b[2] / a[0]}, a_{a[1] / a[0], a[2] / a[0]}
    {
    }

    double operator()(double input)
    {
        const double output = b_[0] * input + first_;
        first_ = b_[1] * input - a_[0] * output + second_;
        second_ = b_[2] * input - a_[1] * output;
        return output;
    }

private:
    std::array<double, 3> b_;
    std::array<double, 2> a_;
    double first_ = 0.0;
    double second_ = 0.0;
};

// The head lifts what is high by 4 dB; the recommendation's filter at 48 kHz, for any rate.
SecondOrder headShelf()
{
    constexpr double kHertz = 1681.974450955533;
    constexpr double kGain = 3.999843853973347; // dB
    constexpr double kQuality = 0.7071752369554196;
    const double k = std::tan(std::numbers::pi * kHertz / kRateHz);
    const double high = std::pow(10.0, kGain / 20.0);
    const double middle = std::pow(high, 0.4996667741545416);
    return {
        {high + middle * k / kQuality + k * k, 2.0 * (k * k - high),
         high - middle * k / kQuality + k * k                                                  },
        {1.0 + k / kQuality + k * k,           2.0 * (k * k - 1.0),  1.0 - k / kQuality + k * k}
    };
}

// Lows count less.
SecondOrder lowCut()
{
    constexpr double kHertz = 38.13547087602444;
    constexpr double kQuality = 0.5003270373238773;
    const double k = std::tan(std::numbers::pi * kHertz / kRateHz);
    const double scale = 1.0 + k / kQuality + k * k;
    return {
        {scale, -2.0 * scale,        scale                     },
        {scale, 2.0 * (k * k - 1.0), 1.0 - k / kQuality + k * k}
    };
}

template <typename Powers>
double meanOf(const Powers& powers)
{
    return powers.empty() ? 0.0
                          : std::accumulate(powers.begin(), powers.end(), 0.0) /
                                static_cast<double>(powers.size());
}

// The mean power of every window, ten windows to a second.
std::vector<double> windows(std::span<const float> powers, std::size_t steps)
{
    constexpr std::size_t kHop = 10;
    std::vector<double> means;
    for (std::size_t at = 0; at + steps <= powers.size(); at += kHop) {
        means.push_back(meanOf(powers.subspan(at, steps)));
    }
    return means;
}

// What is over the absolute gate and at most `below` LU under the mean of that.
std::vector<double> gated(std::vector<double> powers, double below)
{
    std::erase_if(powers, [](double power) { return loudnessOf(power) <= kAbsoluteGate; });
    const double gate = loudnessOf(meanOf(powers)) - below;
    std::erase_if(powers, [gate](double power) { return loudnessOf(power) <= gate; });
    return powers;
}

// The wave between two samples, at a quarter, a half and three quarters.
constexpr int kPhases = 4;
constexpr int kTaps = 16;
using Taps = std::array<std::array<float, kTaps>, kPhases - 1>;

Taps makeTaps()
{
    Taps taps{};
    for (int phase = 1; phase < kPhases; ++phase) {
        for (int i = 0; i < kTaps; ++i) {
            const double x = i - (kTaps / 2.0 - 1.0) - phase / static_cast<double>(kPhases);
            const double angle = std::numbers::pi * x;
            const double window = 0.5 + 0.5 * std::cos(angle / (kTaps / 2.0));
            taps[static_cast<std::size_t>(phase - 1)][static_cast<std::size_t>(i)] =
                static_cast<float>(std::sin(angle) / angle * window);
        }
    }
    return taps;
}

} // namespace

double decibels(double power)
{
    return power > 0.0 ? std::max(10.0 * std::log10(power), kSilence) : kSilence;
}

double loudnessOf(double power)
{
    return decibels(power) - 0.691;
}

std::vector<float> weightedPowers(std::span<const float> sound)
{
    std::vector<float> powers(sound.size() / (kStepSamples * kSoundChannels));
    for (std::size_t channel = 0; channel < kSoundChannels; ++channel) {
        SecondOrder shelf = headShelf();
        SecondOrder cut = lowCut();
        std::size_t at = channel;
        for (float& power : powers) {
            double sum = 0.0;
            for (std::int64_t i = 0; i < kStepSamples; ++i, at += kSoundChannels) {
                const double value = cut(shelf(static_cast<double>(sound[at])));
                sum += value * value;
            }
            power += static_cast<float>(sum / kStepSamples);
        }
    }
    return powers;
}

double plainLoudness(std::span<const float> powers)
{
    return loudnessOf(meanOf(powers));
}

double gatedLoudness(std::span<const float> powers)
{
    constexpr std::size_t kWindow = 40; // steps
    return loudnessOf(meanOf(gated(windows(powers, kWindow), 10.0)));
}

double loudnessRange(std::span<const float> powers)
{
    constexpr std::size_t kWindow = 300; // steps
    std::vector<double> kept = gated(windows(powers, kWindow), 20.0);
    if (kept.empty()) {
        return 0.0;
    }
    std::ranges::sort(kept);
    const auto at = [&](double share) {
        const auto last = static_cast<double>(kept.size() - 1);
        return loudnessOf(kept[static_cast<std::size_t>(std::lround(share * last))]);
    };
    return at(0.95) - at(0.10);
}

double truePeak(std::span<const float> sound)
{
    static const Taps kBetween = makeTaps();
    float peak = 0.0F;
    for (const float sample : sound) {
        peak = std::max(peak, std::abs(sample));
    }
    // A wave between two samples that are far below the peak does not reach it.
    const float least = 0.4F * peak;
    const std::size_t frames = sound.size() / kSoundChannels;
    for (std::size_t channel = 0; channel < kSoundChannels; ++channel) {
        for (std::size_t first = 0; first + kTaps <= frames; ++first) {
            const float* const samples = &sound[first * kSoundChannels + channel];
            const float left = samples[(kTaps / 2 - 1) * kSoundChannels];
            const float right = samples[kTaps / 2 * kSoundChannels];
            if (std::max(std::abs(left), std::abs(right)) < least) {
                continue;
            }
            for (const auto& taps : kBetween) {
                float sum = 0.0F;
                for (std::size_t i = 0; i < kTaps; ++i) {
                    sum += taps[i] * samples[i * kSoundChannels];
                }
                peak = std::max(peak, std::abs(sum));
            }
        }
    }
    return decibels(static_cast<double>(peak) * static_cast<double>(peak));
}
