// What is struck and plucked: every partial dies away at its own pace, the high ones first; and
// chords.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/voice.h"

#include <algorithm>
#include <array>

namespace {

struct Partial {
    double ratio;
    double amplitude;
    double seconds; // of decay
};

// A bar of glass.
constexpr std::array kGlass = {
    Partial{0.5,    0.22, 1.9 },
    Partial{1.0,    1.0,  1.25},
    Partial{2.0,    0.42, 0.85},
    Partial{2.756,  0.38, 0.5 },
    Partial{4.07,   0.25, 0.32},
    Partial{5.404,  0.26, 0.2 },
    Partial{8.933,  0.16, 0.08},
    Partial{13.344, 0.09, 0.04},
};

// Each partial is a wave and a softer one very near it. How near differs from partial to partial,
// so that they shimmer one by one and never swell together.
Zone makeBellZone(int root, Rate rate)
{
    constexpr double kSeconds = 3.0;
    const double hz = rate.hertz();
    const double pitch = noteHertz(root);
    Noise dice(static_cast<std::uint64_t>(root));
    Signal sum(samplesFor(kSeconds, hz), 0.0);
    for (const Partial& partial : kGlass) {
        const double apart = 0.32 + (0.23 * dice.next()); // Hz
        const double phase = dice.next();
        const double hertz = partial.ratio * pitch * std::exp2(2.0 * dice.next() / 1200.0);
        if (hertz > 0.45 * hz) {
            continue;
        }
        Oscillator loud(hz);
        Oscillator soft(hz, phase);
        for (std::size_t i = 0; i < sum.size(); ++i) {
            const double t = static_cast<double>(i) / hz;
            const double pair = loud.sine(hertz) + (0.16 * soft.sine(hertz + apart));
            sum[i] += partial.amplitude * pair * decay(t, partial.seconds) * attack(t, 0.0012);
        }
    }
    Noise noise(static_cast<std::uint64_t>(root) + 200);
    Filter mallet(hz);
    for (std::size_t i = 0; i < samplesFor(0.03, hz); ++i) {
        const double t = static_cast<double>(i) / hz;
        sum[i] += 0.5 * mallet.band(noise.next(), 4200.0, 0.9) * decay(t, 0.004);
    }
    return makeZone(root, rate, finished(withRoom(sum, hz, 2.2, 0.35), hz, 0.95, 1.0));
}

// The sound from further away: duller, softer at its edge, and with more of the room.
Zone makeFarZone(int root, const Signal& near, double hz, double cutoffHz, double peak = 0.95)
{
    Filter first(hz);
    Filter second(hz);
    Signal far = near;
    for (std::size_t i = 0; i < far.size(); ++i) {
        const double t = static_cast<double>(i) / hz;
        far[i] = second.low(first.low(far[i], cutoffHz), cutoffHz, 0.6) * attack(t, 0.003);
    }
    return makeZone(root, kRate16k, finished(withRoom(far, hz, 1.2, 0.8), hz, peak, 0.2));
}

// A string plucked at a sixth of its length, a little stiff.
Signal pluckedString(int root, double hz, double seconds)
{
    constexpr double kPlace = 0.17;
    constexpr double kStiffness = 0.00018;
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
    return sum;
}

Zone makePluckZone(int root, Rate rate, double seconds)
{
    const double hz = rate.hertz();
    const Signal string = withRoom(pluckedString(root, hz, seconds), hz, 0.7, 0.22);
    return makeZone(root, rate, finished(string, hz, 0.95, 0.35 * seconds));
}

Zone makeFarPluckZone(int root, double seconds)
{
    const double hz = kRate16k.hertz();
    return makeFarZone(root, pluckedString(root, hz, seconds), hz, 1500.0, 0.6);
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
constexpr int kChordRoot = noteD(4);

Signal skankChord(double hz)
{
    constexpr std::array kNotes = {1.0, kMinorThird, kFifth, kSeventh};
    Filter thin(hz);
    Signal chord = makeChord(noteHertz(kChordRoot), hz, 0.5, kNotes, 5200.0, 0.11);
    for (std::size_t i = 0; i < chord.size(); ++i) {
        chord[i] =
            saturate(thin.high(chord[i], 240.0) * decay(static_cast<double>(i) / hz, 0.22), 4.0);
    }
    return chord;
}

Signal brassChord(double hz)
{
    constexpr std::array kNotes = {0.5, 1.0, kMinorThird, kFifth, 2.0};
    Signal chord = makeChord(noteHertz(kChordRoot), hz, 0.95, kNotes, 6500.0, 0.22);
    for (std::size_t i = 0; i < chord.size(); ++i) {
        const double t = static_cast<double>(i) / hz;
        chord[i] = saturate(2.2 * chord[i] * attack(t, 0.006) * decay(t, 0.3), 2.4);
    }
    return chord;
}

// A bark: the pitch leaps up and falls, the mouth opens from "w" to "u" and closes on an "f".
Signal dogsVoice(double hz)
{
    Oscillator folds(hz);
    Oscillator fifth(hz, 0.37);
    Oscillator rasp(hz);
    Noise noise(45);
    Filter chest(hz);
    Filter throat(hz);
    Filter jaw(hz);
    Filter lips(hz);
    Filter end(hz);
    Filter floor(hz);
    const double pitch = noteHertz(kChordRoot);
    return generate(0.62, hz, [&](double t) {
        const double leap = attack(t, 0.035) * decay(std::max(0.0, t - 0.045), 0.16);
        const double hertz = pitch * (0.52 + (0.5 * leap));
        const double open = attack(t, 0.045) * decay(std::max(0.0, t - 0.07), 0.09);
        const double rough = 1.0 + (0.55 * rasp.pulse(0.25 * hertz, 0.5));
        const double white = noise.next();
        const double source =
            (rough * (folds.saw(hertz) + (0.4 * fifth.saw(kFifth * hertz)))) + (0.3 * white);
        const double voice = (0.8 * chest.band(source, 330.0 + (380.0 * open), 3.0)) +
                             (0.9 * throat.band(source, 650.0 + (750.0 * open), 4.0)) +
                             (0.55 * jaw.band(source, 2500.0, 4.0)) +
                             (0.3 * lips.low(source, 300.0 + (3800.0 * open)));
        const double loud = attack(t, 0.01) * decay(std::max(0.0, t - 0.12), 0.05);
        const double puff = 0.22 * end.band(white, 1100.0, 0.8) *
                            attack(std::max(0.0, t - 0.1), 0.05) *
                            decay(std::max(0.0, t - 0.16), 0.04);
        return floor.high(saturate(4.0 * voice * loud, 2.6), 110.0) + puff;
    });
}

} // namespace

XmInstrument makeBell()
{
    XmInstrument bell =
        makeInstrument("bell", {makeBellZone(noteA(4), kRate22k), makeBellZone(noteF(5), kRate22k),
                                makeBellZone(noteC(6), kRate32k)});
    setEnvelope(bell, 0, 0, 64, 100);
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

XmInstrument makePluckFar()
{
    XmInstrument pluck = makeInstrument(
        "pluck-far", {makeFarPluckZone(noteC(4), 1.1), makeFarPluckZone(noteF(5), 0.8)});
    setEnvelope(pluck, 0, 0, 64, 20);
    return pluck;
}

// The off-beat chord of the dub: a minor seventh, short and hollow.
XmInstrument makeSkank()
{
    const double hz = kRate32k.hertz();
    const Signal chord = withRoom(skankChord(hz), hz, 0.9, 0.4);
    XmInstrument skank =
        makeInstrument("skank", {makeZone(kChordRoot, kRate32k, finished(chord, hz, 0.95, 0.2))});
    setEnvelope(skank, 0, 0, 64, 10);
    return skank;
}

XmInstrument makeSkankFar()
{
    const double hz = kRate16k.hertz();
    XmInstrument skank =
        makeInstrument("skank-far", {makeFarZone(kChordRoot, skankChord(hz), hz, 1000.0)});
    setEnvelope(skank, 0, 0, 64, 10);
    return skank;
}

// A short, loud chord of fifths, octaves and a minor third.
XmInstrument makeBrass()
{
    const double hz = kRate32k.hertz();
    const Signal chord = withRoom(brassChord(hz), hz, 1.4, 0.6);
    XmInstrument brass =
        makeInstrument("brass", {makeZone(kChordRoot, kRate32k, finished(chord, hz, 0.95, 0.35))});
    setEnvelope(brass, 0, 0, 64, 20);
    return brass;
}

XmInstrument makeBrassFar()
{
    const double hz = kRate16k.hertz();
    XmInstrument brass =
        makeInstrument("brass-far", {makeFarZone(kChordRoot, brassChord(hz), hz, 900.0)});
    setEnvelope(brass, 0, 0, 64, 20);
    return brass;
}

// A dog who once played the trombone.
XmInstrument makeBark()
{
    const double hz = kRate32k.hertz();
    const Signal bark = withRoom(dogsVoice(hz), hz, 0.9, 0.4);
    return makeInstrument("bark", {makeZone(kChordRoot, kRate32k, finished(bark, hz, 0.95, 0.2))});
}

XmInstrument makeBarkFar()
{
    const double hz = kRate16k.hertz();
    return makeInstrument("bark-far", {makeFarZone(kChordRoot, dogsVoice(hz), hz, 900.0)});
}
