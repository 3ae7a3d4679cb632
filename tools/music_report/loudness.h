// Loudness after ITU-R BS.1770 and EBU R 128: weighted as ears weight, gated, and the peaks between
// samples.
//
// Powers come in steps of kStepSamples; any stretch of them can be asked afterwards.
#pragma once

#include "virtual/timing.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

constexpr std::int64_t kStepSamples = 441; // 10 ms

constexpr double kSilence = -120.0; // what stands for the logarithm of nothing

double decibels(double power);

// A stretch of steps, `end` not in it.
struct Steps {
    std::size_t begin = 0;
    std::size_t end = 0;
};

inline Steps stepsOf(std::int64_t firstSample, std::int64_t endSample)
{
    return {static_cast<std::size_t>(firstSample / kStepSamples),
            static_cast<std::size_t>(endSample / kStepSamples)};
}

// The weighted power of each whole step of a sound, left and right in turn.
std::vector<float> weightedPowers(std::span<const float> sound);

// Loudness of a mean power.
double loudnessOf(double power);

// Of all steps alike, in LUFS.
double plainLoudness(std::span<const float> powers);

// Without what is far softer than the rest, in LUFS: what meters call integrated.
double gatedLoudness(std::span<const float> powers);

// In LU; 0 for less than three seconds.
double loudnessRange(std::span<const float> powers);

// In decibels over full scale.
double truePeak(std::span<const float> sound);
