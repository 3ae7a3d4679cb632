#include "tools/music_report/loudness.h"
#include "tools/music_report/spectrum.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace {

struct Tone {
    double hertz;
    double left; // amplitudes
    double right;
};

double amplitude(double dB)
{
    return std::pow(10.0, dB / 20.0);
}

void addTone(std::vector<float>& sound, const Tone& tone, double seconds, double phase = 0.0)
{
    const auto frames = static_cast<std::size_t>(seconds * kSamplesPerSecond);
    for (std::size_t i = 0; i < frames; ++i) {
        const double turns = tone.hertz * static_cast<double>(i) / kSamplesPerSecond + phase;
        const double value = std::sin(2.0 * std::numbers::pi * turns);
        sound.push_back(static_cast<float>(tone.left * value));
        sound.push_back(static_cast<float>(tone.right * value));
    }
}

// Tones that sound together.
std::vector<float> chord(const std::vector<Tone>& tones)
{
    std::vector<float> sum;
    for (const Tone& tone : tones) {
        std::vector<float> sound;
        addTone(sound, tone, 4.0);
        sum.resize(sound.size());
        for (std::size_t i = 0; i < sound.size(); ++i) {
            sum[i] += sound[i];
        }
    }
    return sum;
}

PowerSpectrum spectrumOf(const std::vector<float>& sound)
{
    PowerSpectrum spectrum;
    spectrum.add(sound, 0, static_cast<std::int64_t>(sound.size() / kSoundChannels));
    return spectrum;
}

struct Stretch {
    double dB;
    double seconds;
};

// Sines of 1 kHz in both channels, and what meters have to show for them: EBU Tech 3341, cases 1 to
// 3, and Tech 3342, cases 1 to 4.
struct Metering {
    const char* name;
    std::vector<Stretch> stretches;
    double integrated; // NAN: not asked
    double range;
};

const std::vector<Metering> kMeterings = {
    {"Steady",    {{-23.0, 20.0}},                                         -23.0, 0.0 },
    {"Soft",      {{-33.0, 20.0}},                                         -33.0, 0.0 },
    {"SoftEnds",  {{-36.0, 10.0}, {-23.0, 60.0}, {-36.0, 10.0}},           -23.0, NAN },
    {"TenApart",  {{-20.0, 20.0}, {-30.0, 20.0}},                          NAN,   10.0},
    {"FiveApart", {{-20.0, 20.0}, {-15.0, 20.0}},                          NAN,   5.0 },
    {"Twenty",    {{-40.0, 20.0}, {-20.0, 20.0}},                          NAN,   20.0},
    {"Stairs",    {{-50, 20}, {-35, 20}, {-20, 20}, {-35, 20}, {-50, 20}}, NAN,   15.0},
};

} // namespace

TEST(Loudness, IsWhatMetersHaveToShow)
{
    for (const Metering& metering : kMeterings) {
        SCOPED_TRACE(metering.name);
        std::vector<float> sound;
        for (const Stretch& stretch : metering.stretches) {
            const double both = amplitude(stretch.dB);
            addTone(sound, {1000.0, both, both}, stretch.seconds);
        }
        const std::vector<float> powers = weightedPowers(sound);
        if (!std::isnan(metering.integrated)) {
            EXPECT_NEAR(gatedLoudness(powers), metering.integrated, 0.1);
        }
        if (!std::isnan(metering.range)) {
            EXPECT_NEAR(loudnessRange(powers), metering.range, 1.0);
        }
    }
}

// Lows count less and highs more. These are what ffmpeg's ebur128 shows for sines at -20 dB.
TEST(Loudness, WeighsAsEarsDo)
{
    for (const auto& [hertz, lufs] : {std::pair(40.0, -26.3), std::pair(100.0, -21.8),
                                      std::pair(2000.0, -17.6), std::pair(10000.0, -16.6)}) {
        SCOPED_TRACE(hertz);
        std::vector<float> sound;
        addTone(sound, {hertz, 0.1, 0.1}, 4.0);
        EXPECT_NEAR(plainLoudness(weightedPowers(sound)), lufs, 0.15);
    }
}

// At a quarter of the rate, samples miss the wave's crest by 3 dB.
TEST(Loudness, FindsPeaksBetweenSamples)
{
    std::vector<float> sound;
    addTone(sound, {kSamplesPerSecond / 4.0, 0.5, 0.0}, 0.5, 0.125);
    EXPECT_NEAR(truePeak(sound), -6.02, 0.2);
}

TEST(Spectrum, TellsTheWidthOfEachBand)
{
    const PowerSpectrum spectrum = spectrumOf(chord({
        {100.0,   0.2, 0.2 },
        {1000.0,  0.2, 0.1 },
        {5000.0,  0.2, -0.2},
        {10000.0, 0.0, 0.2 }
    }));
    EXPECT_LT(sideToMid(spectrum, {0.0, 120.0}), -60.0);
    EXPECT_NEAR(sideToMid(spectrum, {500.0, 2000.0}), 20.0 * std::log10(0.05 / 0.15), 0.1);
    EXPECT_GT(sideToMid(spectrum, {4000.0, 8000.0}), 60.0);
    EXPECT_NEAR(sideToMid(spectrum, {8000.0, 16000.0}), 0.0, 0.1);
}

TEST(Spectrum, ComparesOctavesWithTheSlope)
{
    std::vector<Tone> tones;
    for (std::size_t octave = 0; octave < kOctavesHz.size(); ++octave) {
        const double dB = -1.5 * static_cast<double>(octave) - (octave == 5 ? 8.0 : 0.0);
        tones.push_back({kOctavesHz.at(octave), 0.1 * amplitude(dB), 0.1 * amplitude(dB)});
    }
    const auto over = overSlope(spectrumOf(chord(tones)));
    for (std::size_t octave = 0; octave < over.size(); ++octave) {
        // One of the eight octaves that the line is laid through is 8 dB down.
        EXPECT_NEAR(over.at(octave), octave == 5 ? -7.0 : 1.0, 0.1) << kOctavesHz.at(octave);
    }
}
