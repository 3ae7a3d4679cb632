#pragma once

#include <cstdint>
#include <glm/vec2.hpp>
#include <random>

// Noise that tiles, and chance that is the same on every machine.
//
// Places are in cells of the coarsest layer; `period` is how many of these cells the picture is
// wide and high. The layers of one picture differ by their seed.

// From -1 to 1, smooth, zero on average.
float noise(glm::vec2 place, glm::ivec2 period, int seed);

// Octaves of noise, each at twice the frequency and half the height of the one before.
// The finest one may have 256 cells in the period.
float fractalNoise(glm::vec2 place, glm::ivec2 period, int octaves, int seed);

// Octaves of ridges: from 0 to 1, with sharp crests where the noise crosses zero.
float ridgedNoise(glm::vec2 place, glm::ivec2 period, int octaves, int seed);

// The feature point nearest to a place. Each cell has one, `jitter` (0 to 1) off its middle.
struct CellDistance {
    float nearest;        // in cells
    std::uint32_t number; // stands for the point: random bits of its own
};
CellDistance cellDistance(glm::vec2 place, glm::ivec2 period, float jitter, int seed);

// Random bits for a place on a lattice.
std::uint32_t hash(int x, int y, int seed);

// Bits as a number from 0 to below 1.
float unit(std::uint32_t bits);

// A row of random numbers.
class Random {
public:
    explicit Random(unsigned seed) : bits_(seed) {}

    float next() { return unit(static_cast<std::uint32_t>(bits_())); } // 0 to below 1
    float between(float low, float high) { return low + (high - low) * next(); }

private:
    std::mt19937 bits_; // the same numbers everywhere, unlike the library's distributions
};
