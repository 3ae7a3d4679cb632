// Small XM modules for tests: patterns written as tables of cells, and instruments whose single
// sample is a looped saw, so that every note sounds and a filter on it would be heard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

constexpr std::uint8_t kZxx = 0x23; // the effect's number in a file

struct TestCell {
    int row = 0;
    int channel = 0;
    std::uint8_t note = 0; // played by instrument 1
    std::uint8_t effect = 0;
    std::uint8_t parameter = 0;
};

struct TestPattern {
    int rows = 8;
    std::vector<TestCell> cells;
};

struct TestModule {
    std::vector<TestPattern> patterns;
    std::vector<std::uint8_t> orders = {0};
    int speed = 6;
    int channels = 4;
    int instruments = 1;
    std::string tracker = "FastTracker v2.00";
    unsigned version = 0x0104;
    bool packed = true; // otherwise all five bytes of every cell

    [[nodiscard]] std::vector<std::uint8_t> build() const;
    [[nodiscard]] TestModule withoutZxx() const;
};

// Places within a file of version 0x0104.
constexpr std::size_t kPatternsAt = 60 + 276;
constexpr std::size_t kInstrumentHeaderBytes = 263;
constexpr std::size_t kSampleHeaderBytes = 40;
constexpr std::size_t kSampleBytes = 64;

// Writes a file into a temporary folder that goes away with the process, and gives its path.
std::string writeTemporary(const std::string& name, const std::vector<std::uint8_t>& bytes);
