// What is held: bands of many slightly different pitches, or a few waves that beat slowly.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/spectrum.h"
#include "art/music/synth/voice.h"

#include <array>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace {

// How much of each harmonic there is: by its number and its frequency.
using Timbre = double (*)(int harmonic, double hertz);

double bell(double hertz, double centreHz, double widthHz)
{
    const double distance = (hertz - centreHz) / widthHz;
    return std::exp(-distance * distance);
}

// The lows belong to the middle of the picture, where bass and kick are; what is panned leaves them
// out.
double aboveBass(double hertz)
{
    return 1.0 / std::sqrt(1.0 + std::pow(240.0 / hertz, 6.0));
}

double warm(int harmonic, double hertz)
{
    return aboveBass(hertz) * std::pow(harmonic, -1.15) / (1.0 + std::pow(hertz / 2500.0, 3.0));
}

double bowed(int harmonic, double hertz)
{
    const double body = 0.55 + bell(hertz, 480.0, 260.0) + (1.2 * bell(hertz, 3000.0, 1500.0));
    return aboveBass(hertz) * body * std::pow(harmonic, -0.95) /
           (1.0 + std::pow(hertz / 7000.0, 4.0));
}

// An open vowel.
double sung(int harmonic, double hertz)
{
    const double mouth = 0.05 + bell(hertz, 640.0, 210.0) + (0.55 * bell(hertz, 1120.0, 240.0)) +
                         (0.36 * bell(hertz, 2750.0, 500.0)) + (0.16 * bell(hertz, 4200.0, 900.0));
    return aboveBass(hertz) * mouth * std::pow(harmonic, -0.35);
}

// How an ensemble begins: the cutoff of its filter rises, with some noise of bow or breath.
struct Entry {
    double seconds; // until the loop begins
    double fromHz;
    double toHz;
    double noise;
    double noiseHz;
};

struct Ensemble {
    Timbre timbre;
    double cents; // of spread
    double seconds;
    double sway; // octaves by which the highs come and go once in each loop
    Entry entry;
    double peak;
    std::uint64_t seed;
};

// The highs of a loop come and go.
Signal swayed(const Signal& loop, double hz, double centreHz, double octaves)
{
    Filter highs(hz);
    return settled(loop, [&](double value, std::size_t i) {
        const double turn = kTau * static_cast<double>(i) / static_cast<double>(loop.size());
        return highs.low(value, centreHz * std::exp2(octaves * std::sin(turn)));
    });
}

// Adds a harmonic whose pitch wanders by `cents` to both sides and is back as the loop ends: many
// players are never at rest, but together they are always as loud.
void addWanderer(Signal& loop, double cycles, double amplitude, double cents, Noise& dice)
{
    const double swing = cycles * (std::exp2(cents / 1200.0) - 1.0);
    const double start = dice.next();
    const double slow = dice.next();
    const double quick = dice.next();
    const double quickTurns = dice.next() < 0.0 ? 2.0 : 3.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const double x = static_cast<double>(i) / static_cast<double>(loop.size());
        const double bend = (0.6 * std::sin(kTau * (x + slow))) +
                            (0.6 / quickTurns * std::sin(kTau * ((quickTurns * x) + quick)));
        loop[i] += amplitude * std::sin((kTau * ((cycles * x) + start)) + (swing * bend));
    }
}

// The held sound of an ensemble, as a loop: every harmonic wanders, and a softer band of random
// lines around it breathes.
Signal playersOf(const Ensemble& ensemble, int root, double hz)
{
    constexpr double kBreath = 0.18;
    const LoopShape shape = fitLoop(noteHertz(root), hz, ensemble.seconds);
    Spectrum spectrum(shape, hz);
    Noise phases(ensemble.seed + static_cast<std::uint64_t>(root));
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = kBreath * ensemble.timbre(h, h * spectrum.hertz());
        spectrum.addBand(h, amplitude, ensemble.cents, phases);
    }
    Signal players = spectrum.toSignal();
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = ensemble.timbre(h, h * spectrum.hertz());
        if (amplitude > 0.0005) {
            addWanderer(players, h * static_cast<double>(shape.cycles), amplitude,
                        0.7 * ensemble.cents, phases);
        }
    }
    // Random phases heap up here and there; rounding those peaks off lets the rest come nearer.
    players = scaledToPeak(players, 1.0);
    for (double& value : players) {
        value = saturate(value, 1.6);
    }
    players = centred(players);
    return ensemble.sway > 0.0 ? swayed(players, hz, 2200.0, ensemble.sway) : players;
}

Zone makeEnsembleZone(const Ensemble& ensemble, int root, Rate rate)
{
    const double hz = rate.hertz();
    const Entry& entry = ensemble.entry;
    Filter mouth(hz);
    Filter air(hz);
    Noise noise(ensemble.seed);
    const Signal players = playersOf(ensemble, root, hz);
    const Signal entered = withOnset(players, entry.seconds, hz, [&](double value, double t) {
        const double share = attack(t, entry.seconds);
        const double cutoff = entry.fromHz * std::pow(entry.toHz / entry.fromHz, share);
        const double breath = entry.noise * air.band(noise.next(), entry.noiseHz, 0.9);
        return (mouth.low(value, cutoff) + (breath * decay(t, 0.3 * entry.seconds))) *
               attack(t, 0.3 * entry.seconds);
    });
    return makeZone(root, rate, scaledToPeak(entered, ensemble.peak),
                    samplesFor(entry.seconds, hz));
}

XmInstrument makeEnsembleOf(const std::string& name, const Ensemble& ensemble, Rate rate,
                            std::initializer_list<int> roots)
{
    std::vector<Zone> zones;
    for (const int root : roots) {
        zones.push_back(makeEnsembleZone(ensemble, root, rate));
    }
    return makeInstrument(name, std::move(zones));
}

XmInstrument makePadOf(const std::string& name, std::uint64_t seed)
{
    const Ensemble kPad{
        warm, 15.0, 2.4, 0.25, {0.3, 350.0, 2600.0, 0.0, 1000.0},
            0.66, seed
    };
    XmInstrument pad = makeEnsembleOf(name, kPad, kRate16k, {noteA(2), noteF(3), noteD(4)});
    setEnvelope(pad, 14, 0, 64, 50);
    setDrift(pad, 12, 61);
    return pad;
}

// Voices that begin with a hum and open to a vowel.
XmInstrument makeChoirOf(const std::string& name, std::uint64_t seed)
{
    const Ensemble kChoir{
        sung, 12.0, 2.2, 0.0, {0.36, 420.0, 3800.0, 0.1, 2300.0},
            0.75, seed
    };
    XmInstrument choir = makeEnsembleOf(name, kChoir, kRate16k, {noteF(3), noteC(4), noteA(4)});
    setEnvelope(choir, 8, 0, 64, 70);
    setDrift(choir, 14, 47);
    setVibrato(choir, 2, 22, 60);
    return choir;
}

XmInstrument makeStringsOf(const std::string& name, std::uint64_t seed)
{
    const Ensemble kStrings{
        bowed, 9.0, 1.9, 0.0, {0.14, 900.0, 8000.0, 0.25, 3200.0},
            0.67, seed
    };
    XmInstrument strings = makeEnsembleOf(name, kStrings, kRate22k, {noteF(3), noteD(4), noteA(4)});
    setEnvelope(strings, 2, 0, 64, 24);
    setVibrato(strings, 3, 28, 50);
    setDrift(strings, 8, 53);
    return strings;
}

// How much of each harmonic a reed has, before the highest are rounded off.
double reed(int harmonic, double hertz)
{
    constexpr std::array kFirst = {1.0, 0.40, 0.42, 0.22, 0.25, 0.14, 0.16};
    const auto index = std::size_t(harmonic) - 1;
    const double share = index < kFirst.size() ? kFirst.at(index) : 0.9 / harmonic;
    return share * (0.9 + (0.35 * bell(hertz, 2900.0, 1300.0))) /
           (1.0 + std::pow(hertz / 6000.0, 3.0));
}

// The reed while it is held: each harmonic has a softer neighbour, at a distance of its own.
Signal heldReed(int root, double hz)
{
    Spectrum spectrum(fitLoop(noteHertz(root), hz, 0.9), hz);
    Noise breath(static_cast<std::uint64_t>(root));
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = reed(h, h * spectrum.hertz());
        spectrum.addWave(h, amplitude, kTau * h * h / 14.0);
        spectrum.addWave(h, 0.06 * amplitude, 1.9 * h, 1 + (h % 3));
        spectrum.addWave(h, 0.05 * amplitude, 2.9 * h, -1 - (h % 2));
        spectrum.addBand(h, 0.04 * amplitude, 25.0, breath);
    }
    Signal held = scaledToPeak(spectrum.toSignal(), 1.0);
    for (double& value : held) {
        value = saturate(value, 0.9);
    }
    return centred(held);
}

// The reed as the tongue lets it go: air first, then the low harmonics, then all of them.
Zone makeLeadZone(int root, Rate rate)
{
    constexpr double kOnset = 0.2;
    const double hz = rate.hertz();
    Filter tongue(hz);
    Filter air(hz);
    Noise noise(42);
    const Signal blown = withOnset(heldReed(root, hz), kOnset, hz, [&](double value, double t) {
        const double cutoff = 900.0 + (9000.0 * attack(t, 0.09));
        const double chiff = air.band(noise.next(), 3300.0, 0.7) * decay(t, 0.018);
        const double swell = (0.75 * attack(t, 0.012)) + (0.25 * attack(t, 0.11));
        return (tongue.low(value, cutoff, 0.9) * swell) + (0.3 * chiff * attack(t, 0.002));
    });
    return makeZone(root, rate, scaledToPeak(blown, 0.8), samplesFor(kOnset, hz));
}

// The reed heard from the far end of the street.
Zone makeFarLeadZone(int root)
{
    constexpr double kOnset = 0.2;
    const double hz = kRate22k.hertz();
    Filter first(hz);
    Filter second(hz);
    const Signal near = heldReed(root, hz);
    const Signal dull = settled(near, [&](double value, std::size_t) {
        return second.low(first.low(value, 1100.0), 1300.0);
    });
    const Signal blown =
        withOnset(dull, kOnset, hz, [](double value, double t) { return value * attack(t, 0.02); });
    return makeZone(root, kRate22k, scaledToPeak(blown, 0.62), samplesFor(kOnset, hz));
}

// The same reed, played short.
Zone makeTouchZone(int root, Rate rate)
{
    const double hz = rate.hertz();
    const double pitch = noteHertz(root);
    Signal sum(samplesFor(0.5, hz), 0.0);
    for (int h = 1; h * pitch < 0.45 * hz; ++h) {
        Oscillator wave(hz, 0.11 * h);
        Oscillator other(hz, 0.29 * h);
        const double ring = 0.3 / (1.0 + (0.35 * (h - 1)));
        for (std::size_t i = 0; i < sum.size(); ++i) {
            const double t = static_cast<double>(i) / hz;
            const double pair = wave.sine(h * pitch) + (0.5 * other.sine(1.004 * h * pitch));
            sum[i] += reed(h, h * pitch) * pair * decay(t, ring) * attack(t, 0.0015);
        }
    }
    for (double& value : sum) {
        value = saturate(value, 1.4);
    }
    return makeZone(root, rate, finished(withRoom(sum, hz, 0.5, 0.2), hz, 0.95, 0.15));
}

Zone makeFluteZone(int root, Rate rate)
{
    constexpr std::array kHarmonics = {1.0, 0.32, 0.16, 0.05, 0.03};
    const double hz = rate.hertz();
    Spectrum spectrum(fitLoop(noteHertz(root), hz, 0.6), hz);
    Noise breath(41);
    for (std::size_t i = 0; i < kHarmonics.size(); ++i) {
        const double harmonic = static_cast<double>(i) + 1.0;
        spectrum.addWave(harmonic, kHarmonics.at(i), 0.8 * harmonic);
        spectrum.addBand(harmonic, 0.1 * kHarmonics.at(i), 60.0, breath);
    }
    spectrum.addBand(4.5, 0.05, 500.0, breath);
    return makeZone(root, rate, scaledToPeak(spectrum.toSignal(), 0.95), 0);
}

// Wind far away: noise around two frequencies.
XmInstrument makeWindOf(const std::string& name, std::uint64_t seed)
{
    constexpr double kGridHertz = 100.0;
    constexpr int kRoot = noteC(4);
    const double hz = kRate32k.hertz();
    Spectrum spectrum(fitLoop(kGridHertz, hz, 1.2), hz);
    Noise phases(seed);
    for (int h = 4; h <= spectrum.harmonics(); ++h) {
        const double hertz = h * spectrum.hertz();
        const double ridges = bell(hertz, 1300.0, 700.0) + (0.8 * bell(hertz, 6500.0, 4200.0));
        spectrum.addBand(h, (0.04 + ridges) / std::sqrt(h), 120.0, phases);
    }
    XmInstrument wind = makeInstrument(
        name, {makeZone(kRoot, kRate32k, scaledToPeak(spectrum.toSignal(), 0.9), 0)});
    setEnvelope(wind, 100, 0, 64, 120);
    return wind;
}

} // namespace

// A low D that is never quite steady, with a fifth far above it.
XmInstrument makeDrone()
{
    constexpr int kRoot = noteD(2);
    const double hz = kRate16k.hertz();
    const LoopShape shape = fitLoop(noteHertz(kRoot), hz, 2.0);
    Spectrum spectrum(shape, hz);
    Noise phases(51);
    spectrum.addWave(0.5, 0.2, 0.0);
    spectrum.addWave(1.0, 0.8, 0.0);
    spectrum.addWave(1.0, 0.2, 1.0, 1);
    for (int h = 2; h <= spectrum.harmonics(); ++h) {
        spectrum.addBand(h, 0.12 * std::pow(h, -1.35), 9.0, phases);
    }
    Signal loop = spectrum.toSignal();
    for (int h = 2; h <= spectrum.harmonics(); ++h) {
        const double amplitude = (0.55 * std::pow(h, -1.35)) + (h == 3 ? 0.1 : 0.0) +
                                 (h == 6 ? 0.05 : 0.0); // the fifth far above
        addWanderer(loop, h * static_cast<double>(shape.cycles), amplitude, 6.0, phases);
    }
    loop = scaledToPeak(loop, 0.9);
    XmInstrument drone = makeInstrument("drone", {makeZone(kRoot, kRate16k, loop, 0)});
    setEnvelope(drone, 20, 0, 64, 130);
    return drone;
}

// A soft chord sound whose highs slowly come and go.
XmInstrument makePad()
{
    return makePadOf("pad", 60);
}

XmInstrument makeSecondPad()
{
    return makePadOf("second-pad", 263);
}

XmInstrument makeChoir()
{
    return makeChoirOf("choir", 70);
}

XmInstrument makeSecondChoir()
{
    return makeChoirOf("second-choir", 170);
}

XmInstrument makeStrings()
{
    return makeStringsOf("strings", 80);
}

XmInstrument makeSecondStrings()
{
    return makeStringsOf("second-strings", 287);
}

// The instrument that plays the tune. Its vibrato begins late.
XmInstrument makeLead()
{
    XmInstrument lead =
        makeInstrument("lead", {makeLeadZone(noteA(4), kRate22k), makeLeadZone(noteF(5), kRate22k),
                                makeLeadZone(noteC(6), kRate22k)});
    setEnvelope(lead, 0, 14, 56, 14);
    setVibrato(lead, 6, 30, 45);
    return lead;
}

XmInstrument makeLeadFar()
{
    XmInstrument lead =
        makeInstrument("lead-far", {makeFarLeadZone(noteA(4)), makeFarLeadZone(noteF(5))});
    setEnvelope(lead, 0, 14, 56, 24);
    setVibrato(lead, 6, 30, 45);
    return lead;
}

XmInstrument makeTouch()
{
    XmInstrument touch = makeInstrument(
        "touch", {makeTouchZone(noteA(4), kRate22k), makeTouchZone(noteF(5), kRate22k)});
    setEnvelope(touch, 0, 0, 64, 12);
    return touch;
}

XmInstrument makeFlute()
{
    XmInstrument flute = makeInstrument("flute", {makeFluteZone(noteD(5), kRate32k)});
    setEnvelope(flute, 2, 0, 64, 20);
    setVibrato(flute, 4, 26, 50);
    return flute;
}

XmInstrument makeWind()
{
    return makeWindOf("wind", 95);
}

XmInstrument makeSecondWind()
{
    return makeWindOf("second-wind", 195);
}
