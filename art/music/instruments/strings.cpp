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

double warm(int harmonic, double hertz)
{
    return std::pow(harmonic, -1.15) / (1.0 + std::pow(hertz / 1900.0, 3.0));
}

double bowed(int harmonic, double hertz)
{
    const double body = 0.55 + bell(hertz, 480.0, 260.0) + (0.8 * bell(hertz, 2700.0, 1300.0));
    return body * std::pow(harmonic, -1.05) / (1.0 + std::pow(hertz / 7000.0, 4.0));
}

// An open vowel.
double sung(int harmonic, double hertz)
{
    const double mouth = 0.05 + bell(hertz, 640.0, 210.0) + (0.55 * bell(hertz, 1120.0, 240.0)) +
                         (0.22 * bell(hertz, 2750.0, 450.0));
    return mouth * std::pow(harmonic, -0.35);
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

// The held sound of an ensemble, as a loop.
Signal playersOf(const Ensemble& ensemble, int root, double hz)
{
    Spectrum spectrum(fitLoop(noteHertz(root), hz, ensemble.seconds), hz);
    Noise phases(ensemble.seed + static_cast<std::uint64_t>(root));
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        spectrum.addBand(h, ensemble.timbre(h, h * spectrum.hertz()), ensemble.cents, phases);
    }
    // Random phases heap up here and there; rounding those peaks off lets the rest come nearer.
    Signal players = scaledToPeak(spectrum.toSignal(), 1.0);
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

// How much of each harmonic a reed has.
double reed(int harmonic, double hertz)
{
    const double odd = harmonic % 2 == 1 ? 1.0 : 0.55;
    return odd * (0.7 + bell(hertz, 1500.0, 700.0) + (0.9 * bell(hertz, 3000.0, 1100.0))) *
           std::pow(harmonic, -1.1) / (1.0 + std::pow(hertz / 5200.0, 3.0));
}

// The reed while it is held: three waves to each harmonic, of which the outer two beat, and highs
// that come and go once in each loop.
Signal heldReed(int root, double hz)
{
    Spectrum spectrum(fitLoop(noteHertz(root), hz, 0.62), hz);
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = reed(h, h * spectrum.hertz());
        spectrum.addWave(h, amplitude, 0.7 * h);
        spectrum.addWave(h, 0.4 * amplitude, 1.9 * h, h < 3 ? 1 : 3);
        spectrum.addWave(h, 0.4 * amplitude, 2.9 * h, h < 3 ? -1 : -2);
    }
    Signal loop = scaledToPeak(spectrum.toSignal(), 1.0);
    for (double& value : loop) {
        value = saturate(value, 2.2);
    }
    const Signal breathing = swayed(centred(loop), hz, 3600.0, 0.6);
    for (std::size_t i = 0; i < loop.size(); ++i) {
        loop[i] = (0.35 * loop[i]) + (0.65 * breathing[i]);
    }
    return centred(loop);
}

// The reed as the tongue lets it go.
Zone makeLeadZone(int root, Rate rate)
{
    constexpr double kOnset = 0.16;
    const double hz = rate.hertz();
    Filter tongue(hz);
    Filter air(hz);
    Noise noise(42);
    const Signal blown = withOnset(heldReed(root, hz), kOnset, hz, [&](double value, double t) {
        const double cutoff = 600.0 + (7500.0 * attack(t, 0.07));
        const double chiff = air.band(noise.next(), 3800.0, 0.8) * decay(t, 0.012);
        return (tongue.low(value, cutoff, 1.1) * attack(t, 0.005)) + (0.22 * chiff);
    });
    return makeZone(root, rate, scaledToPeak(blown, 0.95), samplesFor(kOnset, hz));
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

} // namespace

// A low D that is never quite steady, with a fifth far above it.
XmInstrument makeDrone()
{
    constexpr int kRoot = noteD(2);
    const double hz = kRate16k.hertz();
    Spectrum spectrum(fitLoop(noteHertz(kRoot), hz, 2.0), hz);
    Noise phases(51);
    spectrum.addWave(0.5, 0.55, 0.0);
    spectrum.addWave(1.0, 0.8, 0.0);
    spectrum.addWave(1.0, 0.35, 1.0, 1);
    for (int h = 2; h <= spectrum.harmonics(); ++h) {
        spectrum.addBand(h, 0.45 * std::pow(h, -1.35), 9.0, phases);
    }
    spectrum.addBand(3.0, 0.1, 12.0, phases);
    spectrum.addBand(6.0, 0.06, 14.0, phases);
    const Signal loop = scaledToPeak(spectrum.toSignal(), 0.9);
    XmInstrument drone = makeInstrument("drone", {makeZone(kRoot, kRate16k, loop, 0)});
    setEnvelope(drone, 20, 0, 64, 130);
    return drone;
}

// A soft chord sound whose highs slowly come and go.
XmInstrument makePad()
{
    constexpr Ensemble kPad{
        warm, 17.0, 1.1, 0.8, {0.3, 350.0, 2600.0, 0.0, 1000.0},
            0.66, 60
    };
    XmInstrument pad = makeEnsembleOf("pad", kPad, kRate16k, {noteA(2), noteF(3), noteD(4)});
    setEnvelope(pad, 14, 0, 64, 50);
    setDrift(pad, 12, 61);
    return pad;
}

// Voices that begin with a hum and open to a vowel.
XmInstrument makeChoir()
{
    constexpr Ensemble kChoir{
        sung, 13.0, 0.8, 0.0, {0.36, 420.0, 3800.0, 0.1, 2300.0},
            0.75, 70
    };
    XmInstrument choir = makeEnsembleOf("choir", kChoir, kRate16k, {noteF(3), noteC(4), noteA(4)});
    setEnvelope(choir, 8, 0, 64, 70);
    setDrift(choir, 14, 47);
    setVibrato(choir, 2, 22, 60);
    return choir;
}

XmInstrument makeStrings()
{
    constexpr Ensemble kStrings{
        bowed, 10.0, 0.7, 0.0, {0.14, 900.0, 8000.0, 0.25, 3200.0},
            0.74, 80
    };
    XmInstrument strings =
        makeEnsembleOf("strings", kStrings, kRate22k, {noteF(3), noteD(4), noteA(4)});
    setEnvelope(strings, 2, 0, 64, 24);
    setVibrato(strings, 3, 28, 50);
    setDrift(strings, 8, 53);
    return strings;
}

// The instrument that plays the tune. Its vibrato begins late.
XmInstrument makeLead()
{
    XmInstrument lead =
        makeInstrument("lead", {makeLeadZone(noteA(4), kRate22k), makeLeadZone(noteF(5), kRate22k),
                                makeLeadZone(noteC(6), kRate22k)});
    setEnvelope(lead, 0, 14, 56, 14);
    setVibrato(lead, 5, 30, 70);
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

// Wind far away: noise around two frequencies.
XmInstrument makeWind()
{
    constexpr double kGridHertz = 100.0;
    constexpr int kRoot = noteC(4);
    const double hz = kRate32k.hertz();
    Spectrum spectrum(fitLoop(kGridHertz, hz, 0.6), hz);
    Noise phases(95);
    for (int h = 4; h <= spectrum.harmonics(); ++h) {
        const double hertz = h * spectrum.hertz();
        const double ridges = bell(hertz, 1300.0, 700.0) + (0.8 * bell(hertz, 6500.0, 4200.0));
        spectrum.addBand(h, (0.04 + ridges) / std::sqrt(h), 120.0, phases);
    }
    XmInstrument wind = makeInstrument(
        "wind", {makeZone(kRoot, kRate32k, scaledToPeak(spectrum.toSignal(), 0.9), 0)});
    setEnvelope(wind, 100, 0, 64, 120);
    return wind;
}
