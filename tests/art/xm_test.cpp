// The writer's files, read by the library that plays them.
#include "art/music/xm.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <libopenmpt/libopenmpt.hpp>
#include <stdexcept>

namespace {

using openmpt::module;

XmModule smallModule()
{
    XmSample period; // of a square wave
    period.name = "one period";
    period.data.assign(64, 20000);
    std::fill_n(period.data.begin(), 32, std::int16_t(-20000));
    period.loopLength = 64;

    XmModule song;
    song.title = "small";
    song.channels = 3;
    song.speed = 3;
    song.tempo = 150;
    song.orders = {1, 0, 1};
    song.patterns = {XmPattern(64, 3), XmPattern(5, 3)};
    song.instruments.resize(2);
    song.instruments[1].name = "square";
    song.instruments[1].samples = {period};
    return song;
}

int risesInASecond(const XmModule& song)
{
    std::vector<float> sound(44100);
    module(writeXm(song)).read(44100, sound.size(), sound.data());
    int rises = 0;
    for (std::size_t i = 1; i < sound.size(); ++i) {
        rises += sound[i - 1] < 0.0F && sound[i] >= 0.0F ? 1 : 0;
    }
    return rises;
}

struct CellText {
    XmCell cell;
    const char* shown; // by the player, which counts octaves from an octave lower
};

// Every way to pack a cell: each field alone, some, and all five.
constexpr std::array kCells = {
    CellText{{49, 0, 0, 0, 0},          "C-5 .. .. ..."},
    CellText{{0, 2, 0, 0, 0},           "... 02 .. ..."},
    CellText{{0, 0, 0x30, 0, 0},        "... ..v20 ..."},
    CellText{{0, 0, 0, 0x0F, 0},        "... .. .. F00"},
    CellText{{0, 0, 0, 0, 0x37},        "... .. .. 037"},
    CellText{{97, 0, 0, 0, 0},          "=== .. .. ..."},
    CellText{{1, 0, 0, 0x0A, 0xF0},     "C-1 .. .. AF0"},
    CellText{{96, 2, 0x50, 0x0F, 0x1F}, "B-8 02v40 F1F"},
    CellText{{40, 2, 0x10, 0x0A, 0x04}, "D#4 02v00 A04"},
    CellText{{0, 0, 0, 0x23, 0xFF},     "... .. .. ZFF"},
    CellText{{0, 0, 0, 0x23, 0},        "... .. .. Z00"},
    CellText{{0, 0, 0, 0, 0},           "... .. .. ..."},
};

// A good module that one change has spoilt.
struct Refusal {
    const char* complaint;
    void (*spoil)(XmModule&);
};

const std::array kRefusals = {
    Refusal{"1 to 32 channels",          [](XmModule& m) { m.channels = 33; }                          },
    Refusal{"1 to 256 orders",           [](XmModule& m) { m.orders.clear(); }                         },
    Refusal{"pattern that is not there", [](XmModule& m) { m.orders = {2}; }                           },
    Refusal{"restart",                   [](XmModule& m) { m.restart = 3; }                            },
    Refusal{"channel count",             [](XmModule& m) { m.patterns[1] = XmPattern(5, 2); }          },
    Refusal{"row 4, channel 2: effect",  [](XmModule& m) { m.patterns[1].at(4, 2).effect = 36; }       },
    Refusal{"note above 97",             [](XmModule& m) { m.patterns[0].at(0, 0).note = 98; }         },
    Refusal{"1 to 256 rows",             [](XmModule& m) { m.patterns[0] = XmPattern(257, 3); }        },
    Refusal{"loop outside",              [](XmModule& m) { m.instruments[1].samples[0].loopStart = 1; }},
    Refusal{"keymap",                    [](XmModule& m) { m.instruments[1].keymap[5] = 1; }           },
    Refusal{"do not rise",               [](XmModule& m) { m.instruments[1].volume.points.resize(2); } },
    Refusal{"sustain",                   [](XmModule& m) { m.instruments[1].panning.sustain = 0; }     },
};

} // namespace

TEST(XmWriter, KeepsHeaderOrdersAndNames)
{
    const module song(writeXm(smallModule()));
    EXPECT_EQ(song.get_metadata("title"), "small");
    EXPECT_EQ(song.get_num_channels(), 3);
    EXPECT_EQ(song.get_num_orders(), 3);
    EXPECT_EQ(song.get_order_pattern(0), 1);
    EXPECT_EQ(song.get_order_pattern(1), 0);
    EXPECT_EQ(song.get_pattern_num_rows(1), 5);
    EXPECT_EQ(song.get_current_speed(), 3);
    EXPECT_EQ(song.get_current_tempo(), 150);
    EXPECT_EQ(song.get_instrument_names().at(1), "square");
    EXPECT_EQ(song.get_sample_names().at(0), "one period");
}

TEST(XmWriter, KeepsCellsHoweverTheyArePacked)
{
    XmModule song = smallModule();
    for (std::size_t i = 0; i < kCells.size(); ++i) {
        song.patterns[0].at(static_cast<int>(i), 1) = kCells.at(i).cell;
    }
    const module loaded(writeXm(song));
    for (std::size_t i = 0; i < kCells.size(); ++i) {
        EXPECT_EQ(loaded.format_pattern_row_channel(0, static_cast<int>(i), 1), kCells.at(i).shown);
    }
}

// C-4 plays at 8363 Hz, and this sample an octave higher.
TEST(XmWriter, PlaysTheLoopAtTheNotesPitch)
{
    XmModule song = smallModule();
    song.orders = {0};
    song.instruments[1].samples[0].relativeNote = 12;
    song.patterns[0].at(0, 0) = {.note = kXmNoteC4, .instrument = 2};
    EXPECT_NEAR(risesInASecond(song), 2.0 * 8363 / 64, 2.0);
}

// Zones of the keyboard: the second sample, half as long, serves the notes from C-4 on.
TEST(XmWriter, PlaysEachNotesOwnSample)
{
    XmModule song = smallModule();
    song.orders = {0};
    XmInstrument& square = song.instruments[1];
    square.samples.push_back(square.samples[0]);
    square.samples[1].data.erase(square.samples[1].data.begin() + 16,
                                 square.samples[1].data.begin() + 48);
    square.samples[1].loopLength = 32;
    std::fill(square.keymap.begin() + kXmNoteC4 - 1, square.keymap.end(), std::uint8_t(1));
    for (const int note : {int(kXmNoteC4) - 1, int(kXmNoteC4)}) {
        song.patterns[0].at(0, 0) = {.note = std::uint8_t(note), .instrument = 2};
        const double period = note < kXmNoteC4 ? 64.0 : 32.0;
        EXPECT_NEAR(risesInASecond(song), 8363 * std::exp2((note - kXmNoteC4) / 12.0) / period, 2.0)
            << note;
    }
}

TEST(XmWriter, RefusesWhatTheFormatCannotHold)
{
    for (const Refusal& refusal : kRefusals) {
        XmModule song = smallModule();
        refusal.spoil(song);
        try {
            writeXm(song);
            ADD_FAILURE() << "accepted: " << refusal.complaint;
        } catch (const std::invalid_argument& fault) {
            const std::string message = fault.what();
            EXPECT_NE(message.find(refusal.complaint), std::string::npos) << message;
        }
    }
}
