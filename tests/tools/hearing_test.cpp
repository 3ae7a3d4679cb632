// A module whose levels and clashes are known, heard as the report hears it.
#include "art/music/score/score_reader.h"
#include "art/music/xm.h"
#include "tests/tools/text_script.h"
#include "tools/music_report/loudness.h"
#include "tools/music_report/parts.h"
#include "tools/music_report/report.h"
#include "tools/music_report/rubs.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>

namespace {

constexpr double kRowSeconds = 0.12;
constexpr int kRows = 64;

enum Instrument : std::uint8_t { kTone = 1, kKick, kBrass };

// A sine without end; with a relative note of 24, C-4 is 4181 Hz.
XmInstrument makeSine(const std::string& name, int size, int relativeNote)
{
    XmInstrument instrument;
    instrument.name = name;
    XmSample& sample = instrument.samples.emplace_back();
    for (int i = 0; i < size; ++i) {
        const double turns = static_cast<double>(i) / size;
        sample.data.push_back(
            static_cast<std::int16_t>(16000.0 * std::sin(2.0 * std::numbers::pi * turns)));
    }
    sample.loopLength = size;
    sample.relativeNote = relativeNote;
    return instrument;
}

// A note of this channel; volume 0 ends the one before.
struct Cell {
    int order;
    int row;
    int channel;
    int note;
    Instrument instrument;
    int volume;
};

Performance performanceOf(const XmModule& module)
{
    const std::string path = pathFor(".xm");
    const std::vector<std::uint8_t> bytes = writeXm(module);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    Performance performance(path);
    std::filesystem::remove(path);
    return performance;
}

Performance perform(const std::vector<Cell>& cells, int relativeNote = 24)
{
    XmModule module;
    module.title = "test";
    module.channels = 4;
    module.orders = {0, 1};
    module.patterns.assign(2, XmPattern(kRows, module.channels));
    for (const char* const name : {"tone", "kick", "brass"}) {
        module.instruments.push_back(makeSine(name, 8, relativeNote));
    }
    for (const Cell& cell : cells) {
        XmCell& written =
            module.patterns[static_cast<std::size_t>(cell.order)].at(cell.row, cell.channel);
        written.volume = static_cast<std::uint8_t>(kXmSetVolume + cell.volume);
        if (cell.volume > 0) {
            written.note = static_cast<std::uint8_t>(cell.note);
            written.instrument = cell.instrument;
        }
    }
    // Until the order list would be played again.
    module.patterns[1].at(kRows - 1, 3).effect = kXmEffectZxx;
    module.patterns[1].at(kRows - 1, 3).parameter = 8;

    return performanceOf(module);
}

constexpr int kD4 = kXmNoteC4 + 2;
constexpr int kEb4 = kXmNoteC4 + 3;

std::vector<Rub> rubsOf(const Performance& performance)
{
    const Sound all = performance.playAll();
    return findRubs(performance, playStems(performance, all), weightedPowers(all));
}

} // namespace

TEST(Hearing, PlaysEachChannelAlone)
{
    const Performance performance = perform({
        {0, 0,  0, kD4,      kTone, 40},
        {0, 3,  1, kD4 + 5,  kTone, 30},
        {0, 20, 2, kD4 + 12, kKick, 64},
        {1, 0,  0, kD4 + 2,  kTone, 0 },
    });
    Sound rest = performance.playAll();
    EXPECT_GT(truePeak(rest), -30.0);
    for (int channel = 0; channel < 4; ++channel) {
        const Sound own = performance.playChannel(channel);
        EXPECT_EQ(truePeak(own) > kSilence, channel < 3);
        for (std::size_t i = 0; i < rest.size(); ++i) {
            rest[i] -= own[i];
        }
    }
    EXPECT_LT(truePeak(rest), -90.0);
}

TEST(Hearing, MeasuresHowAnOrderArrives)
{
    const Performance performance = perform({
        {0, 0, 0, kD4, kTone, 16},
        {1, 0, 0, kD4, kTone, 32},
    });
    const auto arrivals = findArrivals(performance, weightedPowers(performance.playAll()));
    ASSERT_EQ(arrivals.size(), 1U);
    EXPECT_EQ(arrivals[0].order, 1);
    EXPECT_NEAR(arrivals[0].after - arrivals[0].before, 6.02, 0.1);
}

// Both sound at the same pitch, so that half the volume is 6 dB less, over kClickHz too. The third
// kick begins while nothing else sounds.
TEST(Hearing, MeasuresKicksAgainstTheRest)
{
    const Performance performance = perform({
        {0, 0,  0, kXmNoteC4, kTone, 64},
        {0, 8,  1, kXmNoteC4, kKick, 32},
        {0, 12, 1, kXmNoteC4, kKick, 32},
        {0, 40, 0, kXmNoteC4, kTone, 0 },
        {0, 41, 1, kXmNoteC4, kTone, 0 },
        {1, 0,  1, kXmNoteC4, kKick, 32},
    });
    const Stems stems = playStems(performance, performance.playAll());
    const KickAttack first = measureKicks(performance, stems, {"", 0, 1});
    EXPECT_EQ(first.kicks, 2);
    EXPECT_NEAR(first.overRest, -6.0, 1.5); // the player ramps up what it strikes
    EXPECT_NEAR(first.clickOverRest, -6.0, 1.5);
    EXPECT_GT(measureKicks(performance, stems, {"", 1, 2}).clickOverRest, 60.0);
}

TEST(Hearing, FollowsTheLastChordToItsEnd)
{
    const Performance performance = perform({
        {0, 0,  0, kD4,     kTone, 40},
        {0, 0,  1, kD4 + 3, kTone, 40},
        {0, 0,  2, kD4 + 7, kTone, 40},
        {0, 32, 0, kD4,     kTone, 40},
        {0, 32, 1, kD4 + 4, kTone, 40},
        {0, 32, 2, kD4 + 7, kTone, 40},
        {0, 40, 0, kD4,     kTone, 0 },
        {0, 42, 1, kD4,     kTone, 0 },
        {0, 48, 2, kD4,     kTone, 0 },
        {0, 60, 2, kD4,     kTone, 40}, // one note is no chord
        {1, 0,  2, kD4,     kTone, 0 },
    });
    const Stems stems = playStems(performance, performance.playAll());
    const auto chord = findLastChord(performance, stems, {"", 0, 2});
    ASSERT_TRUE(chord);
    ASSERT_EQ(chord->notes.size(), 3U);
    EXPECT_EQ(chord->notes[0].row, 32);
    const auto rows = [](std::int64_t sample) {
        return static_cast<double>(sample) / kSamplesPerSecond / kRowSeconds;
    };
    EXPECT_NEAR(rows(chord->ends[0]), 40.0, 0.3);
    EXPECT_NEAR(rows(chord->ends[1]), 42.0, 0.3);
    EXPECT_NEAR(rows(chord->end), 48.0, 0.3);
    EXPECT_FALSE(findLastChord(performance, stems, {"", 1, 2}));
}

struct Clash {
    const char* name;
    Cell first;
    Cell second;
    RubKind kind;
};

constexpr Clash kClashes[] = {
    {"Second",     {0, 0, 0, kD4, kTone, 40},       {0, 16, 1, kEb4, kTone, 20},     RubKind::kSecond },
    {"SecondDown", {0, 0, 0, kEb4, kTone, 40},      {0, 16, 1, kD4, kTone, 20},      RubKind::kSecond },
    {"Ninth",      {0, 0, 0, kD4 - 24, kTone, 40},  {0, 16, 1, kEb4, kTone, 20},     RubKind::kNinth  },
    {"Seventh",    {0, 0, 0, kEb4 - 12, kTone, 40}, {0, 16, 1, kD4, kTone, 20},      RubKind::kSeventh},
    {"Tritone",    {0, 0, 0, kD4, kTone, 40},       {0, 16, 1, kD4 + 18, kTone, 20}, RubKind::kTritone},
    {"WithAChord", {0, 0, 0, kD4, kBrass, 40},      {0, 16, 1, kD4 + 4, kTone, 20},  RubKind::kSecond },
};

TEST(Rubs, AreFoundByTheirKindAndMeasured)
{
    for (const Clash& clash : kClashes) {
        SCOPED_TRACE(clash.name);
        const Performance performance = perform(
            {
                clash.first, clash.second, {0, 32, 1, 0, kTone, 0},
                  {1, 0,  0, 0, kTone, 0}
        },
            -12);
        const std::vector<Rub> rubs = rubsOf(performance);
        ASSERT_EQ(rubs.size(), 1U);
        EXPECT_EQ(rubs[0].kind, clash.kind);
        EXPECT_EQ(rubs[0].second.row, 16);
        EXPECT_NEAR(rubs[0].seconds, 16 * kRowSeconds, 0.05);
        const Sound softer = performance.playChannel(1);
        const std::vector<float> powers = weightedPowers(softer);
        const Steps sounding = stepsOf(rubs[0].second.begin + 4410, rubs[0].second.begin + 44100);
        EXPECT_NEAR(
            rubs[0].loudness,
            plainLoudness(std::span(powers).subspan(sounding.begin, sounding.end - sounding.begin)),
            0.5);
    }
}

// A fifth does not rub, nor does a drum, nor a note that has ended before.
TEST(Rubs, AreNotFoundWhereNothingClashes)
{
    EXPECT_TRUE(rubsOf(perform({
                           {0, 0,  0, kD4,     kTone, 40},
                           {0, 8,  1, kD4 + 7, kTone, 40},
                           {0, 8,  2, kEb4,    kKick, 40},
                           {0, 16, 0, kD4,     kTone, 0 },
                           {0, 16, 1, kD4,     kTone, 0 },
                           {0, 18, 1, kEb4,    kTone, 40},
    }))
                    .empty());
}

// The loudest first; what is doubled or comes back in an order is told once.
TEST(Rubs, AreToldOnceAndInOrder)
{
    const std::vector<Rub> rubs = rubsOf(perform({
        {0, 0,  0, kD4,       kTone, 20},
        {0, 8,  1, kEb4,      kTone, 20},
        {0, 8,  2, kEb4 + 12, kTone, 20}, // doubles it
        {0, 16, 1, 0,         kTone, 0 },
        {0, 16, 2, 0,         kTone, 0 },
        {0, 24, 1, kEb4,      kTone, 20}, // comes back
        {0, 32, 1, 0,         kTone, 0 },
        {1, 0,  0, kD4,       kTone, 60},
        {1, 8,  1, kEb4,      kTone, 60},
    }));
    ASSERT_EQ(rubs.size(), 2U);
    EXPECT_EQ(rubs[0].second.order, 1);
    EXPECT_EQ(rubs[1].second.order, 0);
    EXPECT_EQ(rubs[1].voices, 2);
    EXPECT_EQ(rubs[1].times, 2);
}

// As an older module would be whose score has grown since.
TEST(Hearing, NamesOnlySectionsThatArePlayed)
{
    const Score score = readScore("art/music/olvu.trk");
    XmModule module;
    module.title = score.title;
    module.channels = static_cast<int>(score.channels.size());
    module.orders = {0, 0, 0, 0};
    module.patterns.assign(1, XmPattern(kRows, module.channels));
    module.instruments.push_back(makeSine("tone", 8, 0));
    const Performance performance = performanceOf(module);
    ASSERT_FALSE(performance.sections().empty());
    EXPECT_LT(performance.sections().back().firstOrder, 4);
    EXPECT_EQ(performance.sections().back().endOrder, 4);

    module.patterns[0].at(0, 0).effect = kXmEffectZxx;
    module.patterns[0].at(0, 0).parameter = 8;
    EXPECT_THROW(performanceOf(module), std::runtime_error);
}

TEST(Hearing, ReportsTheShow)
{
    const Performance performance(std::string("data/olvu.xm"));
    std::ostringstream text;
    writeReport(text, performance,
                {
                    .parts = {Part::kLoudness,                      Part::kArrivals},
                      .stretches = {                                    },
                      .rubs = 1
    });
    for (const char* const expected : {"\nLUFS ", " void ", " tube ", "\n   18  "}) {
        EXPECT_NE(text.str().find(expected), std::string::npos) << text.str();
    }
}
