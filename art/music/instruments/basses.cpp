// Basses: one to feel, one to dance to, one to be afraid of.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/spectrum.h"
#include "art/music/synth/voice.h"

#include <algorithm>

namespace {

// Three strings in slight disagreement, driven hard through a moving vowel.
Zone makeGrowlZone(int root)
{
    const double hz = kRate32k.hertz();
    const LoopShape shape = fitLoop(noteHertz(root), hz, 0.5);
    Spectrum spectrum(shape, hz);
    for (int h = 1; h <= spectrum.harmonics(); ++h) {
        const double amplitude = 1.0 / h;
        spectrum.addWave(h, amplitude, 0.3 * h);
        spectrum.addWave(h, 0.7 * amplitude, 1.1 * h, 1);
        spectrum.addWave(h, 0.7 * amplitude, 2.3 * h, -1);
    }
    Filter throat(hz);
    Filter mouth(hz);
    Filter box(hz);
    const Signal strings = scaledToPeak(spectrum.toSignal(), 1.0);
    const Signal driven = settled(strings, [&](double value, std::size_t i) {
        const double turn = kTau * static_cast<double>(i) / static_cast<double>(shape.size);
        const double vowel = 900.0 * std::exp2(1.2 * std::sin(turn));
        const double shaped =
            (0.8 * throat.low(value, 1900.0, 0.8)) + (1.8 * mouth.band(value, vowel, 2.2));
        return box.low(std::tanh(6.0 * shaped), 7500.0);
    });
    return makeZone(root, kRate32k, scaledToPeak(centred(driven), 0.95), 0);
}

// A string through a filter that closes as it dies.
Zone makeRoundZone(int root)
{
    const double hz = kRate22k.hertz();
    Oscillator saw(hz);
    Oscillator sub(hz);
    Filter first(hz);
    Filter second(hz);
    const double pitch = noteHertz(root);
    const Signal signal = generate(0.9, hz, [&](double t) {
        const double cutoff = 190.0 + (2300.0 * decay(t, 0.1));
        const double bright = second.low(first.low(saw.saw(pitch), cutoff, 1.3), cutoff);
        const double body = (0.6 * bright) + (0.8 * sub.sine(pitch));
        return saturate(body, 2.2) * attack(t, 0.003) * decay(t, 0.55);
    });
    return makeZone(root, kRate22k, finished(signal, hz, 0.95, 0.2));
}

} // namespace

// A sine with just enough above it to be heard on small speakers.
XmInstrument makeSub()
{
    constexpr int kRoot = noteD(2);
    const double hz = kRate16k.hertz();
    Spectrum spectrum(fitLoop(noteHertz(kRoot), hz, 0.4), hz);
    spectrum.addWave(1.0, 1.0, 0.0);
    spectrum.addWave(2.0, 0.52, 0.9);
    spectrum.addWave(3.0, 0.38, 0.4);
    spectrum.addWave(4.0, 0.2, 2.0);
    spectrum.addWave(5.0, 0.11, 3.1);
    spectrum.addWave(6.0, 0.06, 4.4);
    const Signal loop = scaledToPeak(spectrum.toSignal(), 0.95);
    XmInstrument sub = makeInstrument("sub", {makeZone(kRoot, kRate16k, loop, 0)});
    setEnvelope(sub, 0, 24, 48, 8);
    return sub;
}

XmInstrument makeRoundBass()
{
    XmInstrument bass =
        makeInstrument("round-bass", {makeRoundZone(noteD(2)), makeRoundZone(noteD(3))});
    setEnvelope(bass, 0, 0, 64, 8);
    return bass;
}

XmInstrument makeGrowl()
{
    XmInstrument growl =
        makeInstrument("growl", {makeGrowlZone(noteD(1)), makeGrowlZone(noteD(2))});
    setEnvelope(growl, 0, 12, 54, 8);
    return growl;
}
