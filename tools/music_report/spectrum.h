// How much power lies where, apart for what both speakers share (mid) and for what makes them
// differ (side).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

struct Band {
    double lowHz = 0.0;
    double highHz = 0.0;
};

struct MidSide {
    double mid = 0.0;
    double side = 0.0;
};

// The mean power spectrum of a stretch of sound.
class PowerSpectrum {
public:
    // Adds the sound's windows whose middles lie between two frames; left and right in turn.
    void add(std::span<const float> sound, std::int64_t firstFrame, std::int64_t endFrame);
    void add(const PowerSpectrum& other);

    [[nodiscard]] MidSide in(const Band& band) const;

private:
    std::vector<MidSide> lines_;
};

// In decibels.
double sideToMid(const PowerSpectrum& spectrum, const Band& band);

constexpr Band kWholeBand = {0.0, 20000.0};

// The octaves, by their centres.
constexpr std::array kOctavesHz = {31.5,   63.0,   125.0,  250.0,  500.0,
                                   1000.0, 2000.0, 4000.0, 8000.0, 16000.0};

// How far each octave lies over a line that falls by 1.5 dB an octave, in decibels. The line is the
// one that fits best from 63 Hz to 8 kHz.
std::array<double, kOctavesHz.size()> overSlope(const PowerSpectrum& spectrum);
