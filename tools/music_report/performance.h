// A module as it is played: its rows and notes in time, its sound, and the sound of each channel.
//
// Samples are audio frames at kSamplesPerSecond, counted from the beginning; sounds are left and
// right in turn, as libopenmpt renders them at its own gain.
#pragma once

#include "virtual/row_walk.h"

#include <cstdint>
#include <string>
#include <vector>

using Sound = std::vector<float>;

// A note from where it is struck to where its channel plays the next one, or to the end.
struct PlayedNote {
    int channel = 0;    // from 0
    int instrument = 0; // from 1
    int note = 0;       // 1 is C-0, 49 is C-4
    int order = 0;
    int row = 0;
    std::int64_t begin = 0; // samples
    std::int64_t end = 0;
};

struct Section {
    std::string name;
    int firstOrder = 0;
    int endOrder = 0; // behind the last
};

class Performance {
public:
    // Plays the XM file to the cue that ends the show, or to its own end. If it is called like the
    // show's score and has as many channels, names come from that. Throws std::runtime_error.
    explicit Performance(const std::string& path);

    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::vector<RowStart>& rows() const { return rows_; }
    [[nodiscard]] const std::vector<PlayedNote>& notes() const { return notes_; }
    [[nodiscard]] const std::vector<Section>& sections() const { return sections_; }
    [[nodiscard]] const std::vector<std::string>& channels() const { return channels_; }
    [[nodiscard]] const std::string& instrument(int number) const;

    [[nodiscard]] std::int64_t samples() const { return samples_; }
    [[nodiscard]] int endOrder() const { return rows_.empty() ? 0 : rows_.back().order + 1; }

    // Where an order begins when it is played first; samples() if it is not played.
    [[nodiscard]] std::int64_t startOf(int order) const;

    [[nodiscard]] Sound playAll() const;
    [[nodiscard]] Sound playChannel(int channel) const;

private:
    static constexpr int kAll = -1;

    void readRows();
    void readNotes();
    void readNames();
    [[nodiscard]] Sound play(int channel) const;

    std::vector<std::uint8_t> file_;
    std::string title_;
    std::vector<RowStart> rows_;
    std::vector<PlayedNote> notes_;
    std::vector<Section> sections_;
    std::vector<std::string> channels_;
    std::vector<std::string> instruments_;
    std::int64_t samples_ = 0;
};

// "C#4"; notes are written as in the score.
std::string noteName(int note);

// "3:07.6"
std::string clock(std::int64_t sample);
