// What announces a section and what begins it: noise that rises, noise played backwards, a boom;
// and the sparks at the end.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/voice.h"

namespace {

constexpr int kRoot = noteC(4);

// Small dry cracks of a fire, no two alike.
XmInstrument makeFire(const std::string& name, std::uint64_t seed)
{
    constexpr double kChance = 0.0014; // of a crack in each sample
    const double hz = kRate45k.hertz();
    Noise noise(seed);
    Filter wood(hz);
    double crack = 0.0;
    const Signal signal = generate(0.7, hz, [&](double t) {
        const double dice = 0.5 * (noise.next() + 1.0);
        crack = dice < kChance ? 0.25 + (0.75 * dice / kChance) : 0.985 * crack;
        const double split = wood.band(noise.next() * crack, 5200.0 + (8000.0 * crack), 1.0);
        return saturate(3.0 * split, 1.0) * attack(t, 0.002);
    });
    return makeInstrument(name, {makeZone(kRoot, kRate45k, finished(signal, hz, 0.8, 0.1))});
}

} // namespace

// Noise that rises over two bars.
XmInstrument makeRiser()
{
    constexpr double kSeconds = 3.84;
    const double hz = kRate16k.hertz();
    Noise noise(91);
    Filter wind(hz);
    Filter whistle(hz);
    const Signal signal = generate(kSeconds, hz, [&](double t) {
        const double share = t / kSeconds;
        const double white = noise.next();
        const double cutoff = 250.0 * std::exp2(5.0 * share);
        const double tone = whistle.band(white, 0.5 * cutoff, 9.0);
        return (wind.band(white, cutoff, 1.2) + (0.7 * tone)) * share * share;
    });
    return makeInstrument("riser", {makeZone(kRoot, kRate16k, finished(signal, hz, 0.9, 0.01))});
}

// Noise that grows over one bar, like a cymbal played backwards.
XmInstrument makeReverse()
{
    constexpr double kSeconds = 1.92;
    const double hz = kRate22k.hertz();
    Noise noise(93);
    Filter air(hz);
    const Signal signal = generate(kSeconds, hz, [&](double t) {
        return air.high(noise.next(), 2600.0) * decay(kSeconds - t, 0.42);
    });
    return makeInstrument("reverse", {makeZone(kRoot, kRate22k, finished(signal, hz, 0.9, 0.01))});
}

XmInstrument makeBoom()
{
    const double hz = kRate16k.hertz();
    Oscillator floor(hz);
    Noise noise(92);
    Filter dust(hz);
    const Signal dry = generate(2.1, hz, [&](double t) {
        const double fall = floor.sine(31.0 + (58.0 * decay(t, 0.28))) * decay(t, 0.7);
        const double burst =
            dust.low(noise.next(), 200.0 + (2400.0 * decay(t, 0.1))) * decay(t, 0.22);
        return saturate((1.2 * fall) + (0.7 * burst), 1.5) * attack(t, 0.002);
    });
    return makeInstrument(
        "boom", {makeZone(kRoot, kRate16k, finished(withRoom(dry, hz, 2.0, 0.4), hz, 0.95, 0.8))});
}

XmInstrument makeSparks()
{
    return makeFire("sparks", 96);
}

XmInstrument makeSecondSparks()
{
    return makeFire("second-sparks", 99);
}

// A point of light: glass, touched once.
XmInstrument makeBlink()
{
    constexpr int kGlass = noteC(6);
    const double hz = kRate32k.hertz();
    const double pitch = noteHertz(kGlass);
    Oscillator low(hz);
    Oscillator middle(hz);
    Oscillator high(hz);
    const Signal dry = generate(0.4, hz, [&](double t) {
        return ((low.sine(pitch) * decay(t, 0.07)) +
                (0.7 * middle.sine(2.76 * pitch) * decay(t, 0.03)) +
                (0.5 * high.sine(5.4 * pitch) * decay(t, 0.012))) *
               attack(t, 0.0006);
    });
    return makeInstrument(
        "blink", {makeZone(kGlass, kRate32k, finished(withRoom(dry, hz, 0.8, 0.4), hz, 0.9, 0.2))});
}
