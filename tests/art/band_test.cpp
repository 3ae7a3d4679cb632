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

// At C-4.
double rateOf(const XmSample& sample)
{
    return 8363.0 * std::exp2(sample.relativeNote / 12.0);
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

// The mean square of `size` values from `first` on; full scale is 1.
double powerAt(const XmSample& sample, std::size_t first, std::size_t size)
{
    double sum = 0.0;
    for (std::size_t i = first; i < first + size; ++i) {
        const int value = sample.loopLength > 0 ? valueAt(sample, i) : sample.data[i];
        sum += std::pow(value / 32768.0, 2.0);
    }
    return sum / double(size);
}

double product(const XmSample& left, const XmSample& right)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < std::min(left.data.size(), right.data.size()); ++i) {
        sum += double(left.data[i]) * right.data[i];
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
        if (sample.loopLength == 0 || sample.name.find("wind") != std::string::npos) {
            continue; // no pitch
        }
        const double rate = rateOf(sample);
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

// A chord that is held does not come and go: its quietest tenth of a second is near its loudest.
TEST(Band, HeldNotesStayAsLoud)
{
    constexpr double kMostSwing = 5.0; // dB
    for (const XmSample& sample : band()) {
        if (sample.loopLength == 0 || sample.name == "growl") {
            continue; // the growl's mouth moves
        }
        const auto window = std::size_t(0.1 * rateOf(sample));
        double quietest = 1.0;
        double loudest = 0.0;
        for (auto i = std::size_t(sample.loopStart); i < sample.data.size(); i += window) {
            const double power = powerAt(sample, i, window);
            quietest = std::min(quietest, power);
            loudest = std::max(loudest, power);
        }
        EXPECT_LT(10.0 * std::log10(loudest / quietest), kMostSwing)
            << sample.name << " " << sample.relativeNote;
    }
}

// Partials that beat in step would make a bell swell after its stroke.
TEST(Band, BellsNeverSwell)
{
    for (const XmSample& sample : makeBell().samples) {
        const auto window = std::size_t(0.04 * rateOf(sample));
        double quietest = 1.0;
        for (std::size_t i = window; i + window < sample.data.size(); i += window) {
            const double power = powerAt(sample, i, window);
            EXPECT_LT(10.0 * std::log10(power / quietest), 1.5) << i << " " << sample.relativeNote;
            quietest = std::min(quietest, power);
        }
    }
}

// Two players who differ are wide; one who is heard twice is in the middle.
TEST(Band, SecondPlayersAreNotTheFirst)
{
    for (const ScoreInstrument& player : readScore("art/music/olvu.trk").instruments) {
        if (player.name.find("second-") != 0) {
            continue;
        }
        const XmInstrument second = makeInstrumentByName(player.name);
        const XmInstrument first = makeInstrumentByName(player.name.substr(7));
        ASSERT_EQ(first.keymap, second.keymap) << player.name;
        for (std::size_t i = 0; i < first.samples.size(); ++i) {
            const XmSample& left = first.samples[i];
            const XmSample& right = second.samples[i];
            EXPECT_EQ(left.relativeNote, right.relativeNote) << player.name;
            const double common = product(left, right);
            const double own = std::sqrt(product(left, left) * product(right, right));
            EXPECT_LT(std::abs(common), 0.25 * own) << player.name;
        }
    }
}

// On a kick's row the ear needs something above the bass within the first 4 ms.
TEST(Band, KicksBeginWithAClick)
{
    for (const XmInstrument& kick : {makeKick(), makeHardKick()}) {
        const XmSample& sample = kick.samples.front();
        const auto size = std::size_t(0.004 * rateOf(sample));
        double rough = 0.0;
        double all = 0.0;
        for (std::size_t i = 1; i < size; ++i) {
            rough += std::pow(double(sample.data[i]) - sample.data[i - 1], 2.0);
            all += std::pow(double(sample.data[i]), 2.0);
        }
        // A wave's differences are as strong as itself at a sixth of the rate, 5 kHz.
        EXPECT_GT(rough, 0.25 * all) << kick.name;
    }
}

// What is struck is heard on its row: a quarter of its loudest value within 12 ms.
TEST(Band, HitsBeginAtOnce)
{
    for (const XmSample& sample : band()) {
        if (sample.loopLength != 0 || sample.name == "riser" || sample.name == "reverse") {
            continue;
        }
        const double rate = rateOf(sample);
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
