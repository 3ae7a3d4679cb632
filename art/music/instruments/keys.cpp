// What is struck and plucked: every partial dies away at its own pace, the high ones first; and
// chords.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/voice.h"

#include <array>

namespace {

struct Partial {
    double ratio;
    double amplitude;
    double seconds; // of decay
};

// A bar of glass: two waves to each partial, so that it shimmers.
constexpr std::array kGlass = {
    Partial{0.5,    0.22, 1.6 },
    Partial{1.0,    1.0,  1.05},
    Partial{2.0,    0.4,  0.7 },
    Partial{2.756,  0.34, 0.4 },
    Partial{4.07,   0.2,  0.25},
    Partial{5.404,  0.2,  0.16},
    Partial{8.933,  0.12, 0.06},
    Partial{13.344, 0.06, 0.03},
};

Zone makeBellZone(int root, Rate rate, double seconds)
{
    const double hz = rate.hertz();
    const double pitch = noteHertz(root);
    Signal sum(samplesFor(seconds, hz), 0.0);
    for (const Partial& partial : kGlass) {
        const double hertz = partial.ratio * pitch;
        if (hertz > 0.45 * hz) {
            continue;
        }
        Oscillator left(hz);
        Oscillator right(hz, 0.31);
        for (std::size_t i = 0; i < sum.size(); ++i) {
            const double t = static_cast<double>(i) / hz;
            const double pair = left.sine(hertz - 0.4) + (0.5 * right.sine(hertz + 0.7));
            sum[i] += partial.amplitude * pair * decay(t, partial.seconds) * attack(t, 0.0015);
        }
    }
    return makeZone(root, rate, finished(withRoom(sum, hz, 2.2, 0.5), hz, 0.95, 0.4 * seconds));
}

// A string plucked at a sixth of its length, a little stiff.
Zone makePluckZone(int root, Rate rate, double seconds)
{
    constexpr double kPlace = 0.17;
    constexpr double kStiffness = 0.00018;
    const double hz = rate.hertz();
    const double pitch = noteHertz(root);
    Signal sum(samplesFor(seconds, hz), 0.0);
    for (int h = 1; h * pitch < 0.42 * hz; ++h) {
        const double hertz = h * pitch * std::sqrt(1.0 + (kStiffness * h * h));
        const double amplitude = std::sin(0.5 * kTau * h * kPlace) / std::pow(h, 0.85);
        const double ring = 0.75 / (1.0 + (0.13 * std::pow(h, 1.2)));
        Oscillator string(hz, 0.13 * h);
        for (std::size_t i = 0; i < sum.size(); ++i) {
            const double t = static_cast<double>(i) / hz;
            sum[i] += amplitude * string.sine(hertz) * decay(t, ring) * attack(t, 0.001);
        }
    }
    return makeZone(root, rate, finished(withRoom(sum, hz, 0.7, 0.22), hz, 0.95, 0.35 * seconds));
}

// A chord of saw waves through a filter that opens and closes; notes are ratios to the root.
template <std::size_t Count>
Signal makeChord(double pitch, double hz, double seconds, const std::array<double, Count>& notes,
                 double peakHz, double closeSeconds)
{
    std::vector<Oscillator> saws;
    for (std::size_t i = 0; i < 2 * Count; ++i) {
        saws.emplace_back(hz, 0.19 * static_cast<double>(i));
    }
    Filter first(hz);
    Filter second(hz);
    return generate(seconds, hz, [&](double t) {
        double sum = 0.0;
        for (std::size_t i = 0; i < Count; ++i) {
            sum += saws[2 * i].saw(0.9978 * notes.at(i) * pitch);
            sum += saws[(2 * i) + 1].saw(1.0022 * notes.at(i) * pitch);
        }
        const double open = attack(t, 0.012) * decay(t, closeSeconds);
        const double cutoff = 260.0 + (peakHz * open);
        return second.low(first.low(sum / Count, cutoff, 1.1), cutoff, 0.8);
    });
}

constexpr double kMinorThird = 1.189207115002721;
constexpr double kFifth = 1.498307076876682;
constexpr double kSeventh = 1.781797436280679;

} // namespace

XmInstrument makeBell()
{
    XmInstrument bell = makeInstrument(
        "bell", {makeBellZone(noteA(4), kRate22k, 2.1), makeBellZone(noteF(5), kRate22k, 2.3)});
    setEnvelope(bell, 0, 0, 64, 90);
    return bell;
}

XmInstrument makePluck()
{
    XmInstrument pluck = makeInstrument("pluck", {makePluckZone(noteC(4), kRate22k, 1.2),
                                                  makePluckZone(noteA(4), kRate32k, 0.9),
                                                  makePluckZone(noteF(5), kRate32k, 0.7)});
    setEnvelope(pluck, 0, 0, 64, 20);
    return pluck;
}

// The off-beat chord of the dub: a minor seventh, short and hollow.
XmInstrument makeSkank()
{
    constexpr std::array kNotes = {1.0, kMinorThird, kFifth, kSeventh};
    constexpr int kRoot = noteD(4);
    const double hz = kRate32k.hertz();
    Filter thin(hz);
    Signal chord = makeChord(noteHertz(kRoot), hz, 0.5, kNotes, 5200.0, 0.11);
    for (std::size_t i = 0; i < chord.size(); ++i) {
        chord[i] =
            saturate(thin.high(chord[i], 240.0) * decay(static_cast<double>(i) / hz, 0.22), 4.0);
    }
    XmInstrument skank = makeInstrument(
        "skank",
        {makeZone(kRoot, kRate32k, finished(withRoom(chord, hz, 0.9, 0.4), hz, 0.95, 0.2))});
    setEnvelope(skank, 0, 0, 64, 10);
    return skank;
}

// A short, loud chord of fifths, octaves and a minor third.
XmInstrument makeBrass()
{
    constexpr std::array kNotes = {0.5, 1.0, kMinorThird, kFifth, 2.0};
    constexpr int kRoot = noteD(4);
    const double hz = kRate32k.hertz();
    Signal chord = makeChord(noteHertz(kRoot), hz, 0.95, kNotes, 6500.0, 0.22);
    for (std::size_t i = 0; i < chord.size(); ++i) {
        const double t = static_cast<double>(i) / hz;
        chord[i] = saturate(2.2 * chord[i] * attack(t, 0.006) * decay(t, 0.3), 2.4);
    }
    XmInstrument brass = makeInstrument(
        "brass",
        {makeZone(kRoot, kRate32k, finished(withRoom(chord, hz, 1.4, 0.6), hz, 0.95, 0.35))});
    setEnvelope(brass, 0, 0, 64, 20);
    return brass;
}
