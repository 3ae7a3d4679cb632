// What is held: bands of many slightly different pitches, or a few waves that beat slowly.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/spectrum.h"
#include "art/music/synth/voice.h"

#include <array>

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

struct Ensemble {
    Timbre timbre;
    double cents; // of spread
    double seconds;
    double peak;
    std::uint64_t seed;
};

Zone makeEnsembleZone(const Ensemble& ensemble, int root, Rate rate)
{
    const double hz = rate.hertz();
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
    return makeZone(root, rate, scaledToPeak(centred(players), ensemble.peak), 0);
}

// A voice with a reed in it: three waves to each harmonic, the outer two beating.
Zone makeLeadZone(int root, Rate rate)
{
    const double hz = rate.hertz();
    Spectrum spectrum(fitLoop(noteHertz(root), hz, 0.4), hz);
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double hertz = h * spectrum.hertz();
        const double odd = h % 2 == 1 ? 1.0 : 0.55;
        const double amplitude = odd * (0.75 + bell(hertz, 1500.0, 700.0)) * std::pow(h, -1.1) /
                                 (1.0 + std::pow(hertz / 5200.0, 3.0));
        spectrum.addWave(h, amplitude, 0.7 * h);
        spectrum.addWave(h, 0.4 * amplitude, 1.9 * h, h < 3 ? 1 : 2);
        spectrum.addWave(h, 0.4 * amplitude, 2.9 * h, h < 3 ? -1 : -2);
    }
    Signal reed = scaledToPeak(spectrum.toSignal(), 1.0);
    for (double& value : reed) {
        value = saturate(value, 2.2);
    }
    return makeZone(root, rate, scaledToPeak(centred(reed), 0.95), 0);
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

// The void: a low D that never quite stands still, with the fifth somewhere above it.
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

XmInstrument makePad()
{
    constexpr Ensemble kPad{warm, 17.0, 1.0, 0.62, 60};
    XmInstrument pad = makeInstrument("pad", {makeEnsembleZone(kPad, noteA(2), kRate22k),
                                              makeEnsembleZone(kPad, noteF(3), kRate22k),
                                              makeEnsembleZone(kPad, noteD(4), kRate22k)});
    setEnvelope(pad, 24, 0, 64, 50);
    return pad;
}

XmInstrument makeChoir()
{
    constexpr Ensemble kChoir{sung, 13.0, 0.9, 0.75, 70};
    XmInstrument choir = makeInstrument("choir", {makeEnsembleZone(kChoir, noteD(4), kRate22k),
                                                  makeEnsembleZone(kChoir, noteA(4), kRate22k)});
    setEnvelope(choir, 16, 0, 64, 70);
    return choir;
}

XmInstrument makeStrings()
{
    constexpr Ensemble kStrings{bowed, 10.0, 0.8, 0.72, 80};
    XmInstrument strings =
        makeInstrument("strings", {makeEnsembleZone(kStrings, noteD(4), kRate32k),
                                   makeEnsembleZone(kStrings, noteA(4), kRate32k)});
    setEnvelope(strings, 6, 0, 64, 24);
    setVibrato(strings, 3, 28, 30);
    return strings;
}

XmInstrument makeLead()
{
    XmInstrument lead =
        makeInstrument("lead", {makeLeadZone(noteD(4), kRate32k), makeLeadZone(noteA(4), kRate32k),
                                makeLeadZone(noteF(5), kRate32k)});
    setEnvelope(lead, 1, 12, 58, 16);
    setVibrato(lead, 5, 30, 40);
    return lead;
}

XmInstrument makeFlute()
{
    XmInstrument flute = makeInstrument("flute", {makeFluteZone(noteD(5), kRate32k)});
    setEnvelope(flute, 3, 0, 64, 20);
    setVibrato(flute, 4, 26, 24);
    return flute;
}

// Cold air moving somewhere far off: noise with no edge, in two soft ridges.
XmInstrument makeWind()
{
    constexpr double kGridHertz = 100.0;
    constexpr int kRoot = noteC(4);
    const double hz = kRate32k.hertz();
    Spectrum spectrum(fitLoop(kGridHertz, hz, 0.9), hz);
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
