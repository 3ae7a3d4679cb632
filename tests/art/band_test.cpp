// Every sample of the show's band, as a listener would check the players before the concert.
#include "art/music/instruments/instruments.h"
#include "art/music/score/score_reader.h"
#include "art/music/synth/voice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

// The samples' names are their instruments'.
const std::vector<XmSample>& band()
{
    static const std::vector<XmSample> kBand = [] {
        std::vector<XmSample> samples;
        for (const ScoreInstrument& player : readScore("art/music/olvu.trk").instruments) {
            for (const XmSample& sample : makeInstrumentByName(player.name).samples) {
                samples.push_back(sample);
            }
        }
        return samples;
    }();
    return kBand;
}

// A loop goes on at its start.
int valueAt(const XmSample& sample, std::size_t i)
{
    const auto start = std::size_t(sample.loopStart);
    return sample.data[i < start ? i : start + ((i - start) % std::size_t(sample.loopLength))];
}

// How alike a loop is to itself `lag` samples later.
double likeness(const XmSample& sample, std::size_t lag)
{
    double sum = 0.0;
    for (auto i = std::size_t(sample.loopStart); i < sample.data.size(); ++i) {
        sum += double(valueAt(sample, i)) * valueAt(sample, i + lag);
    }
    return sum;
}

// How far a value stands off the line between its neighbours.
int bendAt(const XmSample& sample, std::size_t i)
{
    return std::abs(valueAt(sample, i - 1) - (2 * valueAt(sample, i)) + valueAt(sample, i + 1));
}

} // namespace

// After six periods a held note is most like itself.
TEST(Band, HeldNotesAreInTune)
{
    for (const XmSample& sample : band()) {
        if (sample.loopLength == 0 || sample.name == "wind") {
            continue; // no pitch
        }
        const double rate = 8363.0 * std::exp2(sample.relativeNote / 12.0); // of C-4
        const double expected = 6.0 * rate / noteHertz(kXmNoteC4);
        std::size_t best = 0;
        double highest = 0.0;
        for (auto lag = std::size_t(0.985 * expected); lag < std::size_t(1.015 * expected); ++lag) {
            const double value = likeness(sample, lag);
            best = value > highest ? lag : best;
            highest = std::max(value, highest);
        }
        const double cents = 1200.0 * std::log2(expected / double(best));
        EXPECT_NEAR(cents, 0.0, 3.0) << sample.name << " " << sample.relativeNote;
    }
}

// A loop is nowhere rougher than inside, and what plays once dies away.
TEST(Band, SamplesEndWithoutAClick)
{
    for (const XmSample& sample : band()) {
        const std::size_t size = sample.data.size();
        if (sample.loopLength == 0) {
            EXPECT_LT(std::abs(sample.data.back()), 200) << sample.name;
            continue;
        }
        ASSERT_EQ(std::size_t(sample.loopStart + sample.loopLength), size) << sample.name;
        int largest = 0;
        for (auto i = std::size_t(sample.loopStart) + 1; i < size - 1; ++i) {
            largest = std::max(largest, bendAt(sample, i));
        }
        EXPECT_LE(bendAt(sample, size - 1), largest) << sample.name;
        EXPECT_LE(bendAt(sample, size), largest) << sample.name;
    }
}

// What is struck is heard on its row: a quarter of its loudest value within 12 ms.
TEST(Band, HitsBeginAtOnce)
{
    for (const XmSample& sample : band()) {
        if (sample.loopLength != 0 || sample.name == "riser" || sample.name == "reverse") {
            continue;
        }
        const double rate = 8363.0 * std::exp2(sample.relativeNote / 12.0); // of C-4
        const auto [low, high] = std::minmax_element(sample.data.begin(), sample.data.end());
        const int loudest = std::max(-int(*low), int(*high));
        const auto isLoud = [loudest](int value) { return 4 * std::abs(value) >= loudest; };
        const auto first = std::find_if(sample.data.begin(), sample.data.end(), isLoud);
        EXPECT_LT(double(first - sample.data.begin()) / rate, 0.012) << sample.name;
    }
}

// A phase past a whole cycle once made the first values a hundred times too large.
TEST(Oscillator, StartsInBoundsAtEveryPhase)
{
    for (const double phase : {0.0, 0.3, 1.0, 1.117, 1.71, -0.4}) {
        Oscillator saw(44100.0, phase);
        Oscillator pulse(44100.0, phase);
        EXPECT_LE(std::abs(saw.saw(220.0)), 1.0) << phase;
        EXPECT_LE(std::abs(pulse.pulse(220.0, 0.5)), 1.0) << phase;
    }
}
