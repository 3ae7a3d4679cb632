// The writer's files, read by the library that plays them.
#include "art/music/xm.h"

#include <array>
#include <gtest/gtest.h>
#include <libopenmpt/libopenmpt.hpp>
#include <stdexcept>

namespace {

using openmpt::module;

XmInstrument squareWave()
{
    XmInstrument instrument;
    instrument.name = "square";
    XmSample sample;
    sample.name = "one period";
    for (int i = 0; i < 64; ++i) {
        sample.data.push_back(i < 32 ? std::int16_t(20000) : std::int16_t(-20000));
    }
    sample.loopLength = 64;
    instrument.samples = {sample};
    return instrument;
}

XmModule smallModule()
{
    XmModule song;
    song.title = "small";
    song.channels = 3;
    song.speed = 3;
    song.tempo = 150;
    song.orders = {1, 0, 1};
    song.patterns.emplace_back(64, 3);
    song.patterns.emplace_back(5, 3);
    song.instruments = {XmInstrument(), squareWave()};
    return song;
}

module load(const XmModule& song)
{
    return {writeXm(song)};
}

int command(const module& song, int pattern, int row, int channel, module::command_index index)
{
    return song.get_pattern_row_channel_command(pattern, row, channel, index);
}

// Spoils a good module and expects to be told so.
void expectRefusal(const std::string& complaint, void (*spoil)(XmModule&))
{
    XmModule song = smallModule();
    spoil(song);
    try {
        writeXm(song);
        ADD_FAILURE() << "accepted: " << complaint;
    } catch (const std::invalid_argument& refusal) {
        EXPECT_NE(std::string(refusal.what()).find(complaint), std::string::npos) << refusal.what();
    }
}

} // namespace

TEST(XmWriter, KeepsHeaderOrdersAndNames)
{
    const module song = load(smallModule());
    EXPECT_EQ(song.get_metadata("title"), "small");
    EXPECT_EQ(song.get_metadata("type"), "xm");
    EXPECT_EQ(song.get_num_channels(), 3);
    EXPECT_EQ(song.get_num_orders(), 3);
    EXPECT_EQ(song.get_order_pattern(0), 1);
    EXPECT_EQ(song.get_order_pattern(1), 0);
    EXPECT_EQ(song.get_pattern_num_rows(0), 64);
    EXPECT_EQ(song.get_pattern_num_rows(1), 5);
    EXPECT_EQ(song.get_current_speed(), 3);
    EXPECT_EQ(song.get_current_tempo(), 150);
    EXPECT_EQ(song.get_instrument_names().at(1), "square");
    EXPECT_EQ(song.get_sample_names().at(0), "one period");
}

// Every cell that is packed differently: each field alone, some, and all five.
TEST(XmWriter, KeepsCellsHoweverTheyArePacked)
{
    constexpr std::array kCells = {
        XmCell{49, 0, 0,    0,    0   },
        XmCell{0,  2, 0,    0,    0   },
        XmCell{0,  0, 0x30, 0,    0   },
        XmCell{0,  0, 0,    0x08, 0   },
        XmCell{97, 0, 0,    0,    0   },
        XmCell{1,  0, 0,    0x0A, 0xF0},
        XmCell{96, 2, 0x50, 0x0F, 0x1F},
        XmCell{0,  0, 0,    0,    0   },
        XmCell{40, 2, 0x10, 0x0A, 0x04},
    };
    XmModule song = smallModule();
    int row = 0;
    for (const XmCell& cell : kCells) {
        song.patterns[0].at(row++, 1) = cell;
    }
    const module loaded = load(song);
    constexpr int kPlayerNoteOffset = 12; // the player counts from an octave lower
    row = 0;
    for (const XmCell& cell : kCells) {
        SCOPED_TRACE(row);
        const int note = command(loaded, 0, row, 1, module::command_note);
        if (cell.note >= 1 && cell.note <= kXmLastNote) {
            EXPECT_EQ(note, cell.note + kPlayerNoteOffset);
        } else {
            EXPECT_EQ(note != 0, cell.note == kXmKeyOff);
        }
        EXPECT_EQ(command(loaded, 0, row, 1, module::command_instrument), cell.instrument);
        EXPECT_EQ(command(loaded, 0, row, 1, module::command_parameter), cell.parameter);
        if (cell.volume != 0) {
            EXPECT_EQ(command(loaded, 0, row, 1, module::command_volume), cell.volume - 0x10);
        }
        ++row;
    }
}

TEST(XmWriter, KeepsZxxInEveryChannel)
{
    XmModule song = smallModule();
    for (int value = 0; value < 256; ++value) {
        song.patterns[0].at(value % 64, value / 64 % 3) = {
            .effect = kXmEffectZxx, .parameter = static_cast<std::uint8_t>(value)};
    }
    const module loaded = load(song);
    for (int value = 64; value < 256; ++value) {
        const int row = value % 64;
        const int channel = value / 64 % 3;
        EXPECT_EQ(
            loaded.format_pattern_row_channel_command(0, row, channel, module::command_effect),
            "Z");
        EXPECT_EQ(command(loaded, 0, row, channel, module::command_parameter), value);
    }
}

// A period of 64 samples, played at 8363 Hz by C-4 and an octave higher by C-5.
TEST(XmWriter, PlaysTheLoopAtTheNotesPitch)
{
    struct Pitch {
        std::uint8_t note;
        int relativeNote;
        double hertz;
    };
    constexpr std::array kPitches = {
        Pitch{49, 0,  130.67},
        Pitch{61, 0,  261.34},
        Pitch{49, 12, 261.34},
    };
    for (const Pitch& pitch : kPitches) {
        XmModule song = smallModule();
        song.orders = {0};
        song.instruments[1].samples[0].relativeNote = pitch.relativeNote;
        song.patterns[0].at(0, 0) = {.note = pitch.note, .instrument = 2};
        module loaded = load(song);
        std::vector<float> left(44100);
        std::vector<float> right(44100);
        ASSERT_EQ(loaded.read(44100, left.size(), left.data(), right.data()), left.size());
        int rises = 0;
        for (std::size_t i = 1; i < left.size(); ++i) {
            rises += left[i - 1] < 0.0F && left[i] >= 0.0F ? 1 : 0;
        }
        EXPECT_NEAR(rises, pitch.hertz, 2.0);
    }
}

TEST(XmWriter, RefusesWhatTheFormatCannotHold)
{
    expectRefusal("1 to 32 channels", [](XmModule& m) { m.channels = 33; });
    expectRefusal("1 to 256 orders", [](XmModule& m) { m.orders.clear(); });
    expectRefusal("a pattern that is not there", [](XmModule& m) { m.orders = {2}; });
    expectRefusal("restart", [](XmModule& m) { m.restart = 3; });
    expectRefusal("channel count", [](XmModule& m) { m.patterns[1] = XmPattern(5, 2); });
    expectRefusal("row 4, channel 2: effect",
                  [](XmModule& m) { m.patterns[1].at(4, 2).effect = 36; });
    expectRefusal("note above 97", [](XmModule& m) { m.patterns[0].at(0, 0).note = 98; });
    expectRefusal("1 to 256 rows", [](XmModule& m) { m.patterns[0] = XmPattern(257, 3); });
    expectRefusal("loop outside", [](XmModule& m) { m.instruments[1].samples[0].loopStart = 1; });
    expectRefusal("keymap", [](XmModule& m) { m.instruments[1].keymap[5] = 1; });
    expectRefusal("ticks do not rise", [](XmModule& m) {
        m.instruments[1].volume.points = {
            {3, 0},
            {3, 1}
        };
    });
    expectRefusal("sustain", [](XmModule& m) { m.instruments[1].panning.sustain = 0; });
}
