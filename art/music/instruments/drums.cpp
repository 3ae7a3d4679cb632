// Drums: a pitch that falls, a burst of noise, or metal, each with its own way of dying away.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/voice.h"

#include <array>

namespace {

constexpr int kRoot = noteC(4);

XmInstrument oneShot(const std::string& name, Rate rate, const Signal& signal)
{
    return makeInstrument(name, {makeZone(kRoot, rate, signal)});
}

// A head that is struck: its pitch falls from `top` above `bottom` as the skin comes to rest.
struct Skin {
    double bottomHz;
    double topHz;
    double fallSeconds;

    [[nodiscard]] double hertz(double t) const
    {
        return bottomHz + (topHz * decay(t, fallSeconds));
    }
};

// Six square waves that share no harmonic ring like a plate of metal.
class Metal {
public:
    explicit Metal(double rateHz)
    {
        for (const double hertz : kHertz) {
            plates_.emplace_back(rateHz, hertz / 1000.0);
        }
    }

    double next()
    {
        double sum = 0.0;
        for (std::size_t i = 0; i < kHertz.size(); ++i) {
            sum += plates_[i].pulse(kHertz.at(i), 0.5);
        }
        return sum / static_cast<double>(kHertz.size());
    }

private:
    static constexpr std::array kHertz = {317.0, 465.0, 561.0, 823.0, 1117.0, 1479.0};
    std::vector<Oscillator> plates_;
};

XmInstrument makeCymbal(const std::string& name, Rate rate, double seconds, double ringSeconds,
                        double peak)
{
    const double hz = rate.hertz();
    Metal metal(hz);
    Noise noise(71);
    Filter body(hz);
    Filter air(hz);
    const Signal signal = generate(seconds, hz, [&](double t) {
        const double ring = body.high(metal.next(), 6200.0, 1.1);
        const double hiss = air.high(noise.next(), 8200.0);
        const double plate = saturate((1.1 * ring) + (0.5 * hiss), 2.5);
        return plate * attack(t, 0.0008) * decay(t, ringSeconds);
    });
    return oneShot(name, rate, finished(signal, hz, peak, 0.2 * seconds));
}

} // namespace

// A heartbeat heard through a wall: no click, only the push of it.
XmInstrument makeHeart()
{
    const double hz = kRate16k.hertz();
    constexpr Skin kSkin{43.0, 46.0, 0.05};
    Oscillator skin(hz);
    Filter wall(hz);
    const Signal signal = generate(0.5, hz, [&](double t) {
        const double push = skin.sine(kSkin.hertz(t)) * attack(t, 0.004) * decay(t, 0.13);
        return wall.low(saturate(push, 2.6), 620.0);
    });
    return oneShot("heart", kRate16k, finished(signal, hz, 0.95, 0.1));
}

XmInstrument makeKick()
{
    const double hz = kRate32k.hertz();
    constexpr Skin kSkin{47.0, 210.0, 0.026};
    Oscillator skin(hz);
    Noise noise(11);
    Filter beater(hz);
    const Signal signal = generate(0.42, hz, [&](double t) {
        const double body = skin.sine(kSkin.hertz(t)) * decay(t, 0.16);
        const double click = beater.band(noise.next(), 3200.0, 0.8) * decay(t, 0.004);
        return saturate((1.3 * body) + (0.8 * click), 2.4) * attack(t, 0.0006);
    });
    return oneShot("kick", kRate32k, finished(signal, hz, 0.95, 0.12));
}

// The same leg, a harder shoe, and an amplifier that has had enough.
XmInstrument makeHardKick()
{
    const double hz = kRate32k.hertz();
    constexpr Skin kSkin{51.0, 330.0, 0.021};
    Oscillator skin(hz);
    Noise noise(12);
    Filter beater(hz);
    Filter box(hz);
    const Signal signal = generate(0.36, hz, [&](double t) {
        const double body = skin.sine(kSkin.hertz(t)) * decay(t, 0.17);
        const double click = beater.band(noise.next(), 2600.0, 0.9) * decay(t, 0.007);
        const double loud = saturate((1.8 * body) + (1.8 * click), 3.8);
        return box.low(loud, 7500.0) * attack(t, 0.0004);
    });
    return oneShot("hard-kick", kRate32k, finished(signal, hz, 0.95, 0.1));
}

XmInstrument makeSnare()
{
    const double hz = kRate45k.hertz();
    constexpr Skin kSkin{186.0, 70.0, 0.018};
    Oscillator skin(hz);
    Oscillator upper(hz);
    Noise noise(21);
    Filter wires(hz);
    const Signal dry = generate(0.36, hz, [&](double t) {
        const double head = skin.sine(kSkin.hertz(t)) * decay(t, 0.075);
        const double rim = upper.sine(1.78 * kSkin.hertz(t)) * decay(t, 0.04);
        const double rattle =
            wires.high(noise.next(), 1900.0) * ((0.7 * decay(t, 0.035)) + (0.4 * decay(t, 0.11)));
        return saturate((0.8 * head) + (0.35 * rim) + (0.95 * rattle), 2.4) * attack(t, 0.0005);
    });
    return oneShot("snare", kRate45k, finished(withRoom(dry, hz, 0.5, 0.35), hz, 0.95, 0.1));
}

XmInstrument makeHardSnare()
{
    const double hz = kRate45k.hertz();
    constexpr Skin kSkin{204.0, 160.0, 0.012};
    Oscillator skin(hz);
    Noise noise(22);
    Filter wires(hz);
    Filter crack(hz);
    const Signal dry = generate(0.4, hz, [&](double t) {
        const double white = noise.next();
        const double head = skin.sine(kSkin.hertz(t)) * decay(t, 0.09);
        const double rattle = wires.high(white, 1500.0) * decay(t, 0.09);
        const double edge = crack.band(white, 4300.0, 1.4) * decay(t, 0.012);
        return saturate((1.1 * head) + (0.9 * rattle) + (1.4 * edge), 3.2) * attack(t, 0.0003);
    });
    return oneShot("hard-snare", kRate45k, finished(withRoom(dry, hz, 0.7, 0.5), hz, 0.95, 0.12));
}

// Several hands, not quite together.
XmInstrument makeClap()
{
    const double hz = kRate32k.hertz();
    constexpr std::array kHands = {0.0, 0.011, 0.021, 0.034};
    Noise noise(23);
    Filter palm(hz);
    Filter air(hz);
    const Signal dry = generate(0.34, hz, [&](double t) {
        double hands = 0.0;
        for (const double hand : kHands) {
            hands += t >= hand ? decay(t - hand, hand == kHands.back() ? 0.07 : 0.006) : 0.0;
        }
        return air.high(palm.band(noise.next(), 1350.0, 1.2), 650.0) * hands;
    });
    return oneShot("clap", kRate32k, finished(withRoom(dry, hz, 0.8, 0.5), hz, 0.95, 0.1));
}

XmInstrument makeRim()
{
    const double hz = kRate45k.hertz();
    Oscillator low(hz);
    Oscillator high(hz);
    Noise noise(24);
    const Signal signal = generate(0.07, hz, [&](double t) {
        const double wood = (low.sine(820.0) + (0.8 * high.sine(1765.0))) * decay(t, 0.011);
        return saturate(wood + (0.4 * noise.next() * decay(t, 0.0015)), 1.8);
    });
    return oneShot("rim", kRate45k, finished(signal, hz, 0.9, 0.02));
}

XmInstrument makeHat()
{
    return makeCymbal("hat", kRate45k, 0.1, 0.026, 0.95);
}

XmInstrument makeOpenHat()
{
    return makeCymbal("open-hat", kRate32k, 0.42, 0.13, 0.9);
}

XmInstrument makeShaker()
{
    const double hz = kRate45k.hertz();
    Noise noise(31);
    Filter grains(hz);
    const Signal signal = generate(0.12, hz, [&](double t) {
        return grains.band(noise.next(), 7600.0, 1.2) * attack(t, 0.018) * decay(t, 0.03);
    });
    return oneShot("shaker", kRate45k, finished(signal, hz, 0.7, 0.03));
}

// A nerve that fires: a chirp too short to have a pitch.
XmInstrument makeTick()
{
    const double hz = kRate45k.hertz();
    Oscillator carrier(hz);
    Oscillator modulator(hz);
    const Signal signal = generate(0.08, hz, [&](double t) {
        const double bend = modulator.sine(1470.0) * 2600.0 * decay(t, 0.012);
        return carrier.sine(1900.0 + (2500.0 * decay(t, 0.006)) + bend) * decay(t, 0.014);
    });
    return oneShot("tick", kRate45k, finished(signal, hz, 0.8, 0.02));
}

XmInstrument makeTom()
{
    const double hz = kRate22k.hertz();
    constexpr Skin kSkin{98.0, 75.0, 0.06};
    Oscillator skin(hz);
    Noise noise(25);
    Filter stick(hz);
    const Signal dry = generate(0.5, hz, [&](double t) {
        const double body = skin.sine(kSkin.hertz(t)) * decay(t, 0.14);
        const double hit = stick.band(noise.next(), 1800.0, 0.8) * decay(t, 0.012);
        return saturate(body + (0.6 * hit), 1.5) * attack(t, 0.0008);
    });
    return oneShot("tom", kRate22k, finished(withRoom(dry, hz, 0.6, 0.3), hz, 0.95, 0.12));
}

XmInstrument makeCrash()
{
    return makeCymbal("crash", kRate32k, 1.4, 0.42, 0.95);
}
