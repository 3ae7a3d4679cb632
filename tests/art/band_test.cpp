// Every instrument of the show's score, as a listener would check a band before the concert.
#include "art/music/instruments/instruments.h"
#include "art/music/score/score_reader.h"
#include "art/music/synth/spectrum.h"
#include "art/music/synth/voice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>

namespace {

const std::vector<XmInstrument>& band()
{
    static const std::vector<XmInstrument> kBand = [] {
        std::vector<XmInstrument> players;
        for (const ScoreInstrument& player : readScore("art/music/olvu.trk").instruments) {
            players.push_back(makeInstrumentByName(player.name));
        }
        return players;
    }();
    return kBand;
}

// How alike a loop is to itself `lag` samples later.
double likeness(const XmSample& sample, std::size_t lag)
{
    const auto first = std::size_t(sample.loopStart);
    const auto length = std::size_t(sample.loopLength);
    double sum = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        sum += double(sample.data[first + i]) * sample.data[first + ((i + lag) % length)];
    }
    return sum;
}

// The lag of the highest likeness near `expected`, between samples by a parabola.
double measuredLag(const XmSample& sample, double expected)
{
    std::size_t best = 0;
    double highest = 0.0;
    for (auto lag = std::size_t(0.985 * expected); lag <= std::size_t(1.015 * expected) + 1;
         ++lag) {
        const double value = likeness(sample, lag);
        if (value > highest) {
            highest = value;
            best = lag;
        }
    }
    const double before = likeness(sample, best - 1);
    const double after = likeness(sample, best + 1);
    return double(best) + (0.5 * (before - after) / (before - (2.0 * highest) + after));
}

} // namespace

TEST(Band, HeldNotesAreInTune)
{
    constexpr int kPeriods = 6;
    constexpr double kCents = 2.0;
    int loops = 0;
    for (const XmInstrument& instrument : band()) {
        for (const XmSample& sample : instrument.samples) {
            if (sample.loopLength == 0 || instrument.name == "wind") {
                continue; // no pitch
            }
            ++loops;
            const double rate = 8363.0 * std::exp2(sample.relativeNote / 12.0); // of C-4
            const double expected = kPeriods * rate / noteHertz(kXmNoteC4);
            const double cents = 1200.0 * std::log2(expected / measuredLag(sample, expected));
            EXPECT_NEAR(cents, 0.0, kCents) << instrument.name << " " << sample.relativeNote;
        }
    }
    EXPECT_GT(loops, 10);
}

TEST(Band, LoopsHaveNoSeam)
{
    for (const XmInstrument& instrument : band()) {
        for (const XmSample& sample : instrument.samples) {
            if (sample.loopLength == 0) {
                continue;
            }
            int largestStep = 0;
            for (std::size_t i = std::size_t(sample.loopStart) + 1; i < sample.data.size(); ++i) {
                largestStep = std::max(largestStep, std::abs(sample.data[i] - sample.data[i - 1]));
            }
            const int seam =
                std::abs(sample.data[std::size_t(sample.loopStart)] - sample.data.back());
            EXPECT_LE(seam, largestStep) << instrument.name;
        }
    }
}

TEST(Band, SamplesAreCentredLoudAndUnclipped)
{
    for (const XmInstrument& instrument : band()) {
        ASSERT_FALSE(instrument.samples.empty());
        for (const XmSample& sample : instrument.samples) {
            const double mean = std::accumulate(sample.data.begin(), sample.data.end(), 0.0) /
                                double(sample.data.size());
            const auto [low, high] = std::minmax_element(sample.data.begin(), sample.data.end());
            EXPECT_LT(std::abs(mean), 0.01 * 32768) << instrument.name;
            EXPECT_GT(std::max(-*low, +*high), 0.5 * 32768) << instrument.name;
            EXPECT_LT(std::max(-*low, +*high), 0.99 * 32768) << instrument.name;
        }
    }
}

// What plays once dies away: a last sample that is not silent would click.
TEST(Band, OneShotsEndInSilence)
{
    for (const XmInstrument& instrument : band()) {
        for (const XmSample& sample : instrument.samples) {
            if (sample.loopLength == 0) {
                EXPECT_LT(std::abs(sample.data.back()), 200) << instrument.name;
            }
        }
    }
}

TEST(Band, ZonesMeetHalfway)
{
    const Signal silence(8, 0.0);
    const XmInstrument instrument = makeInstrument(
        "two", {makeZone(noteD(3), kRate22k, silence), makeZone(noteD(4), kRate22k, silence)});
    const int border = noteD(3) + 6;
    EXPECT_EQ(instrument.keymap[std::size_t(border - 2)], 0);
    EXPECT_EQ(instrument.keymap[std::size_t(border - 1)], 1);
    EXPECT_EQ(instrument.keymap.front(), 0);
    EXPECT_EQ(instrument.keymap.back(), 1);
}

// A wave on one line comes back as that cosine, though 224 has an odd factor.
TEST(Spectrum, IsTheSumOfItsWaves)
{
    const LoopShape shape{224, 5};
    Spectrum spectrum(shape, 8000.0);
    spectrum.addWave(2.0, 0.5, 0.25);
    spectrum.addWave(3.0, 0.125, 0.0, -1);
    const Signal signal = spectrum.toSignal();
    for (std::size_t i = 0; i < shape.size; ++i) {
        const double turn = kTau * double(i) / double(shape.size);
        EXPECT_NEAR(signal[i], (0.5 * std::cos((10 * turn) + 0.25)) + (0.125 * std::cos(14 * turn)),
                    1e-12);
    }
}
