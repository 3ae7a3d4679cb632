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

// A drum's skin: struck, its pitch is `topHz` above `bottomHz` and falls to it as the skin comes to
// rest.
struct Skin {
    double bottomHz;
    double topHz;
    double fallSeconds;

    [[nodiscard]] double hertz(double t) const
    {
        return bottomHz + (topHz * decay(t, fallSeconds));
    }
};

// Six square waves without a common harmonic, which sound like a plate of metal.
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

struct Cymbal {
    Rate rate;
    double seconds;
    double ringSeconds;
    double metal; // how loud the plate's own pitches are
    double hiss;
    std::uint64_t seed;
};

XmInstrument makeCymbal(const std::string& name, const Cymbal& cymbal)
{
    const double hz = cymbal.rate.hertz();
    Metal metal(hz);
    Noise noise(cymbal.seed);
    Filter body(hz);
    Filter air(hz);
    const Signal signal = generate(cymbal.seconds, hz, [&](double t) {
        const double ring = body.high(metal.next(), 6200.0, 1.1);
        const double hiss = air.high(noise.next(), 8200.0);
        const double plate = saturate((cymbal.metal * ring) + (cymbal.hiss * hiss), 2.5);
        return plate * attack(t, 0.0008) * decay(t, cymbal.ringSeconds);
    });
    return oneShot(name, cymbal.rate, finished(signal, hz, 0.93, 0.2 * cymbal.seconds));
}

struct SnareHit {
    Skin skin;
    double edge;   // of the stick
    double rattle; // of the wires
    std::uint64_t seed;
};

// A snare drum hit as hard as it can be.
XmInstrument makeCrack(const std::string& name, const SnareHit& hit)
{
    const double hz = kRate45k.hertz();
    Oscillator skin(hz);
    Noise noise(hit.seed);
    Filter wires(hz);
    Filter crack(hz);
    const Signal dry = generate(0.36, hz, [&](double t) {
        const double white = noise.next();
        const double head = skin.sine(hit.skin.hertz(t)) * decay(t, 0.08);
        const double rattle = wires.high(white, 1500.0) * decay(t, 0.085);
        const double edge = crack.band(white, 4300.0, 1.4) * decay(t, 0.012);
        const double all = (1.0 * head) + (hit.rattle * rattle) + (hit.edge * edge);
        return saturate(1.5 * all, 3.2) * attack(t, 0.0003);
    });
    return oneShot(name, kRate45k, finished(withRoom(dry, hz, 0.7, 0.5), hz, 0.95, 0.12));
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

// A kick with a harder beater, through an amplifier that is driven too far.
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
            wires.high(noise.next(), 1900.0) * ((0.8 * decay(t, 0.03)) + (0.4 * decay(t, 0.11)));
        return saturate((1.1 * head) + (0.5 * rim) + (1.9 * rattle), 3.0) * attack(t, 0.0005);
    });
    return oneShot("snare", kRate45k, finished(withRoom(dry, hz, 0.5, 0.35), hz, 0.95, 0.1));
}

// Two different strokes, so that a roll is not one stroke repeated.
XmInstrument makeHardSnare()
{
    return makeCrack("hard-snare", {
                                       {204.0, 160.0, 0.012},
                                       1.5, 1.0, 22
    });
}

XmInstrument makeHardSnareLeft()
{
    return makeCrack("hard-snare-left", {
                                            {196.0, 120.0, 0.014},
                                            1.1, 1.15, 27
    });
}

// A snare drum touched lightly: the stick falls by its own weight, so wires and wood sound and
// hardly any skin.
XmInstrument makeGhost()
{
    const double hz = kRate32k.hertz();
    constexpr Skin kSkin{172.0, 24.0, 0.02};
    Oscillator skin(hz);
    Noise noise(26);
    Filter wires(hz);
    Filter distance(hz);
    const Signal signal = generate(0.2, hz, [&](double t) {
        const double head = skin.sine(kSkin.hertz(t)) * decay(t, 0.03);
        const double rattle = wires.high(noise.next(), 1300.0) * decay(t, 0.045);
        return distance.low((0.5 * head) + rattle, 6500.0) * attack(t, 0.0012);
    });
    return oneShot("ghost", kRate32k, finished(signal, hz, 0.9, 0.06));
}

// Several hands that clap not quite together.
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

// A closed hat, hit on its edge with the shoulder of the stick.
XmInstrument makeHat()
{
    return makeCymbal("hat", {kRate45k, 0.1, 0.026, 1.1, 0.5, 71});
}

// A closed hat, hit on its top with the tip of the stick: shorter, and more air than metal.
XmInstrument makeHatTip()
{
    return makeCymbal("hat-tip", {kRate45k, 0.07, 0.015, 0.5, 0.8, 72});
}

XmInstrument makeOpenHat()
{
    return makeCymbal("open-hat", {kRate32k, 0.42, 0.13, 1.1, 0.5, 71});
}

// A ping of the stick over a wash that hangs on.
XmInstrument makeRide()
{
    constexpr std::array kPing = {2870.0, 4130.0, 5390.0, 6650.0, 9110.0};
    const double hz = kRate45k.hertz();
    std::vector<Oscillator> ping(kPing.size(), Oscillator(hz));
    Metal metal(hz);
    Noise noise(73);
    Filter body(hz);
    Filter air(hz);
    const Signal signal = generate(0.62, hz, [&](double t) {
        double stick = 0.0;
        for (std::size_t i = 0; i < kPing.size(); ++i) {
            const double place = static_cast<double>(i) + 1.0;
            stick += ping[i].sine(kPing.at(i)) * decay(t, 0.16 / place) / place;
        }
        const double wash = body.high(metal.next(), 5200.0) + air.high(noise.next(), 9000.0);
        return ((0.5 * stick) + (0.45 * wash * decay(t, 0.2))) * attack(t, 0.0006);
    });
    return oneShot("ride", kRate45k, finished(signal, hz, 0.9, 0.2));
}

XmInstrument makeShaker()
{
    const double hz = kRate45k.hertz();
    Noise noise(31);
    Filter grains(hz);
    const Signal signal = generate(0.12, hz, [&](double t) {
        return grains.band(noise.next(), 7600.0, 1.2) * attack(t, 0.005) * decay(t, 0.034);
    });
    return oneShot("shaker", kRate45k, finished(signal, hz, 0.7, 0.03));
}

// A chirp too short to have a pitch, like a nerve that fires.
XmInstrument makeTick()
{
    const double hz = kRate45k.hertz();
    Oscillator carrier(hz);
    Oscillator modulator(hz);
    const Signal signal = generate(0.08, hz, [&](double t) {
        const double bend = modulator.sine(1470.0) * 2600.0 * decay(t, 0.012);
        const double chirp = carrier.sine(1900.0 + (2500.0 * decay(t, 0.006)) + bend);
        return saturate(3.0 * chirp * decay(t, 0.013), 2.0);
    });
    return oneShot("tick", kRate45k, finished(signal, hz, 0.78, 0.02));
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
    return makeCymbal("crash", {kRate32k, 1.4, 0.42, 1.1, 0.5, 71});
}
