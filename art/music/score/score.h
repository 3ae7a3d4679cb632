// A score in memory, as its text says it: patterns have their blocks in place, but not yet what
// their channels add, which is instruments, panning and echoes.
#pragma once

#include "art/music/xm.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct ScoreEffect {
    std::uint8_t number = 0;
    std::uint8_t parameter = 0;
};

// What a cell leaves out is left to its channel.
struct ScoreCell {
    std::optional<std::uint8_t> note;
    std::optional<std::uint8_t> instrument; // 0: no instrument, on purpose
    std::optional<std::uint8_t> volume;     // the volume column's byte
    std::optional<ScoreEffect> effect;
    bool clears = false; // first takes away what another block has put there
};

struct ScoreInstrument {
    int number = 0;   // 1 to 128
    std::string name; // of the function that makes it
};

// Repeats another channel some rows later, softer.
struct ScoreEcho {
    int source = 0; // channel
    int rows = 0;
    int percent = 0;
};

struct ScoreChannel {
    std::string name;
    int instrument = 0;         // of notes that name no instrument; 0: each has to
    std::optional<int> panning; // 0 left, 255 right; empty: as the sample has it
    std::optional<ScoreEcho> echo;
};

// How many ticks even and odd rows last: "swing 7 5" leans on the even ones.
struct ScoreSwing {
    int even = 0;
    int odd = 0;
};

// A pattern, or a block that patterns are put together from: rows of one cell for every channel.
struct ScorePattern {
    std::string name;
    int rows = 0;
    int channels = 0;
    std::optional<ScoreSwing> swing; // empty: the song's speed
    std::vector<ScoreCell> cells;

    [[nodiscard]] ScoreCell& at(int row, int channel)
    {
        return cells.at(std::size_t(row) * std::size_t(channels) + std::size_t(channel));
    }
    [[nodiscard]] const ScoreCell& at(int row, int channel) const
    {
        return cells.at(std::size_t(row) * std::size_t(channels) + std::size_t(channel));
    }
};

// A part of the piece by its name, up to where the next one begins.
struct ScoreSection {
    std::string name;
    std::size_t firstOrder = 0; // index into the order list
};

struct Score {
    std::string title;
    int speed = 6;
    int tempo = 125;
    std::vector<ScoreInstrument> instruments;
    std::vector<ScoreChannel> channels;
    std::vector<ScorePattern> patterns;
    std::vector<int> orders; // indices into patterns
    std::vector<ScoreSection> sections;
};
