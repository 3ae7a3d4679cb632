// A module in memory and its file: the XM format, version 0x0104, with packed patterns, linear
// slides and 16-bit samples.
//
// Everything here is a plain value: fill in an XmModule, call writeXm, write the bytes to a file.
// A small scripted module is a few lines:
//
//     XmModule module;
//     module.channels = 2;
//     module.orders = {0};
//     module.patterns.emplace_back(64, module.channels);
//     module.patterns[0].at(16, 1) = {.effect = kXmEffectZxx, .parameter = 0x80};
//     std::vector<std::uint8_t> file = writeXm(module);
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

constexpr std::uint8_t kXmNoteC4 = 49; // plays a sample without relative note at 8363 Hz
constexpr std::uint8_t kXmLastNote = 96;
constexpr std::uint8_t kXmKeyOff = 97;

constexpr std::uint8_t kXmSetVolume = 0x10;  // volume column: 0x10 to 0x50 sets 0 to 64
constexpr std::uint8_t kXmSetPanning = 0xC0; // volume column: 0xC0 to 0xCF, left to right

constexpr std::uint8_t kXmEffectPanning = 0x08;
constexpr std::uint8_t kXmEffectSpeed = 0x0F; // a parameter from 0x20 on is a tempo
constexpr std::uint8_t kXmEffectZxx = 0x23;

// One cell of a pattern; all zero is an empty one.
struct XmCell {
    std::uint8_t note = 0;       // 1 (C-0) to 96 (B-7), or kXmKeyOff
    std::uint8_t instrument = 0; // 1 to 128
    std::uint8_t volume = 0;     // the volume column's byte
    std::uint8_t effect = 0;     // 0 to 35: the digit or letter that trackers show
    std::uint8_t parameter = 0;

    bool operator==(const XmCell&) const = default;
};

// Rows of cells, first row first, all empty at first.
class XmPattern {
public:
    XmPattern(int rows, int channels)
        : rows_(rows), channels_(channels), cells_(std::size_t(rows) * std::size_t(channels))
    {
    }

    [[nodiscard]] int rows() const { return rows_; }
    [[nodiscard]] int channels() const { return channels_; }
    [[nodiscard]] XmCell& at(int row, int channel) { return cells_.at(index(row, channel)); }
    [[nodiscard]] const XmCell& at(int row, int channel) const
    {
        return cells_.at(index(row, channel));
    }

    bool operator==(const XmPattern&) const = default;

private:
    [[nodiscard]] std::size_t index(int row, int channel) const
    {
        return std::size_t(row) * std::size_t(channels_) + std::size_t(channel);
    }

    int rows_;
    int channels_;
    std::vector<XmCell> cells_;
};

// 16-bit mono. Note n plays it at 8363 * 2^((n - 49 + relativeNote + finetune / 128) / 12) Hz.
struct XmSample {
    std::string name;
    std::vector<std::int16_t> data;
    int loopStart = 0;  // samples
    int loopLength = 0; // samples; 0 plays once
    int volume = 64;    // 0 to 64
    int panning = 128;  // 0 left, 128 middle, 255 right
    int relativeNote = 0;
    int finetune = 0; // 128ths of a semitone
};

struct XmEnvelopePoint {
    int tick = 0;
    int value = 0; // 0 to 64
};

// Straight lines between at most 12 points; without points there is no envelope.
struct XmEnvelope {
    std::vector<XmEnvelopePoint> points;
    int sustain = -1; // the point that is held until the key is released, or -1
};

struct XmInstrument {
    std::string name;
    std::vector<XmSample> samples;
    std::array<std::uint8_t, kXmLastNote> keymap{}; // which sample a note plays, by note - 1
    XmEnvelope volume;
    XmEnvelope panning;
    int fadeout = 0; // of 32768, taken from the volume each tick after release
    int vibratoDepth = 0;
    int vibratoRate = 0;
    int vibratoSweep = 0; // ticks until the vibrato is at its depth
};

struct XmModule {
    std::string title;
    std::string tracker = "kso";
    int channels = 2;
    int speed = 6;                    // ticks a row
    int tempo = 125;                  // a tick lasts 2.5 / tempo seconds
    int restart = 0;                  // the order that follows the last
    std::vector<std::uint8_t> orders; // indices into patterns
    std::vector<XmPattern> patterns;
    std::vector<XmInstrument> instruments;
};

// The module's file; names are cut to the format's 20 and 22 bytes. Throws std::invalid_argument,
// naming what is wrong, for a module that the format cannot hold.
std::vector<std::uint8_t> writeXm(const XmModule& module);
