// The channels of a performance, each played alone.
#pragma once

#include "tools/music_report/performance.h"

#include <cstdint>
#include <filesystem>
#include <vector>

// The power of the first moment of a note, and of all other channels meanwhile: of all of it, and
// of what lies over kClickHz, by which ears find a stroke among other sounds.
struct Attack {
    double own = 0.0;
    double rest = 0.0;
    double ownClick = 0.0;
    double restClick = 0.0;
};
constexpr std::int64_t kAttackSamples = 220; // 5 ms
constexpr double kClickHz = 2000.0;

struct Stems {
    std::vector<std::vector<float>> powers; // of each channel, weighted, by steps
    std::vector<Attack> attacks;            // of each note of the performance
};

// `all` is the performance's whole sound. Channels are played side by side.
Stems playStems(const Performance& performance, const Sound& all);

// Writes NN-NAME.wav for each channel that plays notes between two samples. Throws
// std::runtime_error.
void writeStems(const Performance& performance, const std::filesystem::path& folder,
                std::int64_t begin, std::int64_t end);
