// Basses: one to feel, one to dance to, one to be afraid of, and one to follow on any speaker.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/spectrum.h"
#include "art/music/synth/voice.h"

#include <algorithm>
#include <array>

namespace {

// Three strings slightly out of tune with each other, as a loop; `others` is how loud two of them
// are.
Signal threeStrings(int root, double hz, double others = 0.7)
{
    Spectrum spectrum(fitLoop(noteHertz(root), hz, 0.44), hz);
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = 1.0 / h;
        spectrum.addWave(h, amplitude, 0.3 * h);
        spectrum.addWave(h, others * amplitude, 1.1 * h, 1);
        spectrum.addWave(h, others * amplitude, 2.3 * h, -1);
    }
    return scaledToPeak(spectrum.toSignal(), 1.0);
}

// The three strings, distorted, through filters that move like a vowel. The lowest frequencies are
// taken away: another instrument, the sub, has those.
Zone makeGrowlZone(int root)
{
    const double hz = kRate32k.hertz();
    Filter throat(hz);
    Filter mouth(hz);
    Filter box(hz);
    Filter floor(hz);
    Filter rest(hz);
    const Signal strings = threeStrings(root, hz);
    const Signal driven = settled(strings, [&](double value, std::size_t i) {
        const double turn = kTau * static_cast<double>(i) / static_cast<double>(strings.size());
        const double vowel = 1000.0 * std::exp2(1.3 * std::sin(turn));
        const double shaped =
            (0.7 * throat.low(value, 1900.0, 0.8)) + (2.4 * mouth.band(value, vowel, 2.4));
        const double torn = std::tanh(5.0 * floor.high(std::tanh(4.0 * shaped), 110.0));
        return box.low(std::tanh(2.5 * rest.high(torn, 1.15 * noteHertz(root))), 9000.0);
    });
    return makeZone(root, kRate32k, scaledToPeak(centred(driven), 0.95), 0);
}

// A string through a filter that closes as the string dies away, and the noise of the finger.
Zone makeRoundZone(int root)
{
    const double hz = kRate16k.hertz();
    Oscillator saw(hz);
    Oscillator sub(hz);
    Filter first(hz);
    Filter second(hz);
    Filter finger(hz);
    Noise noise(13);
    const double pitch = noteHertz(root);
    const Signal signal = generate(0.9, hz, [&](double t) {
        const double cutoff = 240.0 + (2900.0 * decay(t, 0.09)) + (500.0 * decay(t, 0.4));
        const double bright = second.low(first.low(saw.saw(pitch), cutoff, 1.3), cutoff);
        const double slap = finger.band(noise.next(), 1900.0, 1.1) * decay(t, 0.006);
        const double body = (0.7 * bright) + (0.75 * sub.sine(pitch)) + (0.5 * slap);
        return saturate(body, 2.2) * attack(t, 0.003) * decay(t, 0.55);
    });
    return makeZone(root, kRate16k, finished(signal, hz, 0.95, 0.2));
}

// A string through an amplifier: its fundamental stays clean, and what is driven out of it stands
// between 250 Hz and 1.2 kHz, where small speakers begin.
Zone makeDriveZone(int root)
{
    constexpr double kOnset = 0.25;
    const double hz = kRate22k.hertz();
    Filter pick(hz);
    Filter floor(hz);
    Filter box(hz);
    const Signal strings = threeStrings(root, hz, 0.15);
    Spectrum ground(fitLoop(noteHertz(root), hz, 0.44), hz);
    ground.addWave(1.0, 1.0, 0.25 * kTau);
    const Signal deep = ground.toSignal();
    const Signal driven = settled(strings, [&](double value, std::size_t i) {
        const double dull = pick.low(value, 800.0, 1.0);
        const double torn = std::tanh(3.0 * floor.high(std::tanh(3.5 * dull), 240.0, 0.8));
        return (0.55 * deep[i]) + (0.95 * box.low(torn, 1500.0, 0.9));
    });
    const Signal loop = scaledToPeak(centred(driven), 1.0);
    const Signal struck = withOnset(loop, kOnset, hz, [](double value, double t) {
        return std::tanh(value * (1.1 + (1.6 * decay(t, 0.05)))) * attack(t, 0.002);
    });
    return makeZone(root, kRate22k, scaledToPeak(struck, 0.95), samplesFor(kOnset, hz));
}

} // namespace

// A sine with just enough above it to be heard on small speakers, and a harder beginning.
XmInstrument makeSub()
{
    constexpr int kRoot = noteD(2);
    const double hz = kRate16k.hertz();
    Spectrum spectrum(fitLoop(noteHertz(kRoot), hz, 0.4), hz);
    // All waves begin at zero, so that distortion does not move their mean.
    constexpr std::array kWaves = {1.0, -0.52, 0.38, -0.2, 0.11, -0.06};
    for (std::size_t i = 0; i < kWaves.size(); ++i) {
        spectrum.addWave(static_cast<double>(i) + 1.0, kWaves.at(i), 0.25 * kTau);
    }
    constexpr double kOnset = 0.3;
    const Signal loop = scaledToPeak(spectrum.toSignal(), 1.0);
    const Signal struck = withOnset(loop, kOnset, hz, [](double value, double t) {
        return std::tanh(value * (1.0 + (4.0 * decay(t, 0.07)))) * attack(t, 0.002);
    });
    XmInstrument sub = makeInstrument(
        "sub", {makeZone(kRoot, kRate16k, scaledToPeak(struck, 0.95), samplesFor(kOnset, hz))});
    setEnvelope(sub, 0, 24, 48, 8);
    return sub;
}

XmInstrument makeRoundBass()
{
    XmInstrument bass = makeInstrument(
        "round-bass", {makeRoundZone(noteA(1)), makeRoundZone(noteF(2)), makeRoundZone(noteD(3))});
    setEnvelope(bass, 0, 0, 64, 8);
    return bass;
}

XmInstrument makeGrowl()
{
    XmInstrument growl = makeInstrument(
        "growl", {makeGrowlZone(noteA(1)), makeGrowlZone(noteF(2)), makeGrowlZone(noteD(3))});
    setEnvelope(growl, 0, 12, 54, 8);
    return growl;
}

XmInstrument makeDriveBass()
{
    XmInstrument bass = makeInstrument(
        "drive-bass", {makeDriveZone(noteA(1)), makeDriveZone(noteF(2)), makeDriveZone(noteD(3))});
    setEnvelope(bass, 0, 20, 50, 8);
    return bass;
}
