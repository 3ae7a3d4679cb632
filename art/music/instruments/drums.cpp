// Drums: a pitch that falls, a burst of noise, or metal, each with its own way of dying away.
#include "art/music/instruments/instruments.h"
#include "art/music/synth/signal.h"
#include "art/music/synth/voice.h"

#include <algorithm>
#include <array>
#include <utility>

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
    // `size` stretches all of it: no two plates are quite alike.
    explicit Metal(double rateHz, double size = 1.0) : size_(size)
    {
        for (const double hertz : kHertz) {
            plates_.emplace_back(rateHz, size * hertz / 1000.0);
        }
    }

    double next()
    {
        double sum = 0.0;
        for (std::size_t i = 0; i < kHertz.size(); ++i) {
            sum += plates_[i].pulse(kHertz.at(i) / size_, 0.5);
        }
        return sum / static_cast<double>(kHertz.size());
    }

private:
    static constexpr std::array kHertz = {317.0, 465.0, 561.0, 823.0, 1117.0, 1479.0};
    double size_;
    std::vector<Oscillator> plates_;
};

struct Cymbal {
    Rate rate;
    double seconds;
    double ringSeconds;
    double metal; // how loud the plate's own pitches are
    double hiss;
    std::uint64_t seed;
    double size = 1.0;
};

XmInstrument makeCymbal(const std::string& name, const Cymbal& cymbal)
{
    const double hz = cymbal.rate.hertz();
    Metal metal(hz, cymbal.size);
    Noise noise(cymbal.seed);
    Filter body(hz);
    Filter air(hz);
    const Signal signal = generate(cymbal.seconds, hz, [&](double t) {
        const double ring = body.high(metal.next(), 5200.0, 1.1);
        const double hiss = air.high(noise.next(), 6800.0);
        const double plate = saturate((cymbal.metal * ring) + (cymbal.hiss * hiss), 4.5);
        return plate * attack(t, 0.0004) * decay(t, cymbal.ringSeconds);
    });
    return oneShot(name, cymbal.rate, finished(signal, hz, 0.93, 0.2 * cymbal.seconds));
}

constexpr double kLowA = 55.0; // the fifth of the key

// A large thin cymbal: its highs take a moment to wake and are the first to go.
XmInstrument makeBigCymbal(const std::string& name, std::uint64_t seed)
{
    constexpr int kBands = 12;
    constexpr int kModes = 90;
    const double hz = kRate32k.hertz();
    Noise noise(seed);
    Noise dice(seed + 100);
    Signal sum(samplesFor(3.0, hz), 0.0);
    const auto ringAt = [](double hertz) { return 1.0 / (1.0 + std::pow(hertz / 7000.0, 1.2)); };
    for (int band = 0; band < kBands; ++band) {
        const double hertz = 520.0 * std::exp2(4.7 * band / (kBands - 1));
        const double wake = 0.0006 + (0.012 * std::sqrt(hertz / 13500.0));
        const double tilt = std::pow(hertz / 4000.0, 0.3);
        Filter plate(hz);
        for (std::size_t i = 0; i < sum.size(); ++i) {
            const double t = static_cast<double>(i) / hz;
            const double hiss = tilt * plate.band(noise.next(), hertz, 2.2);
            sum[i] += hiss * (0.4 + (0.6 * attack(t, wake))) *
                      ((0.9 * decay(t, 0.05)) + decay(t, ringAt(hertz)));
        }
    }
    for (int mode = 0; mode < kModes; ++mode) {
        const double hertz = 340.0 * std::exp2(5.0 * 0.5 * (dice.next() + 1.0));
        Oscillator wave(hz, dice.next());
        const double amplitude = 0.05 * (1.4 + dice.next());
        const double ring = ringAt(hertz) * (0.9 + (0.4 * dice.next()));
        for (std::size_t i = 0; i < sum.size(); ++i) {
            sum[i] += amplitude * wave.sine(hertz) * decay(static_cast<double>(i) / hz, ring);
        }
    }
    sum = scaledToPeak(std::move(sum), 1.0);
    for (double& value : sum) {
        value = saturate(value, 2.0);
    }
    return oneShot(name, kRate32k, finished(sum, hz, 0.68, 1.2));
}

// Grains that fall from one end of a gourd to the other.
XmInstrument makeGrains(const std::string& name, double hertz, std::uint64_t seed)
{
    const double hz = kRate45k.hertz();
    Noise noise(seed);
    Filter grains(hz);
    const Signal signal = generate(0.12, hz, [&](double t) {
        return grains.band(noise.next(), hertz, 1.2) * attack(t, 0.005) * decay(t, 0.034);
    });
    return oneShot(name, kRate45k, finished(signal, hz, 0.7, 0.03));
}

struct KickHit {
    Skin skin;
    double ringSeconds;
    double drive;
    double beater; // how loud, next to the skin
    double beaterHz;
    std::uint64_t seed;
};

// The beater is heard first, for three or four milliseconds, and as loud as the skin that it moves:
// a pitch that falls so fast that it is a click, and the felt.
XmInstrument makeKickDrum(const std::string& name, const KickHit& hit)
{
    const double hz = kRate32k.hertz();
    Oscillator skin(hz);
    Noise noise(hit.seed);
    Filter felt(hz);
    const Signal signal = generate(0.34, hz, [&](double t) {
        const double fall = hit.beaterHz * decay(t, 0.0016);
        const double body = skin.sine(hit.skin.hertz(t) + fall) * decay(t, hit.ringSeconds);
        const double tap = std::tanh(4.0 * felt.band(noise.next(), hit.beaterHz, 0.7));
        const double gate = decay(std::max(0.0, t - 0.0025), 0.0008);
        const double blow = std::tanh(hit.drive * body) + (hit.beater * tap * gate);
        return saturate(blow, 1.1) * attack(t, 0.0001);
    });
    return oneShot(name, kRate32k, finished(signal, hz, 0.95, 0.1));
}

// What the shell of a snare drum makes of noise.
class Shell {
public:
    explicit Shell(double rateHz) : low_(rateHz), middle_(rateHz), high_(rateHz) {}

    double next(double white)
    {
        return (0.9 * low_.band(white, 520.0, 1.3)) + middle_.band(white, 1050.0, 1.1) +
               (0.8 * high_.band(white, 2100.0, 1.2));
    }

private:
    Filter low_;
    Filter middle_;
    Filter high_;
};

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
    Shell shell(hz);
    Filter wires(hz);
    Filter dust(hz);
    Filter crack(hz);
    const Signal dry = generate(0.36, hz, [&](double t) {
        const double white = noise.next();
        const double head = skin.sine(hit.skin.hertz(t)) * decay(t, 0.075);
        const double body = shell.next(white) * ((2.4 * decay(t, 0.014)) + (0.9 * decay(t, 0.08)));
        const double rattle = dust.low(wires.high(white, 1500.0), 7500.0) * decay(t, 0.07);
        const double edge = crack.band(white, 3100.0, 1.2) * decay(t, 0.008);
        const double all =
            (0.7 * head) + (1.5 * body) + (0.7 * hit.rattle * rattle) + (hit.edge * 1.8 * edge);
        return saturate(all, 1.2) * attack(t, 0.0002);
    });
    return oneShot(name, kRate45k, finished(withRoom(dry, hz, 0.6, 0.35), hz, 0.95, 0.12));
}

} // namespace

// A heartbeat heard through a wall: no click, only the push of it, and an octave above it what
// small speakers can play.
XmInstrument makeHeart()
{
    const double hz = kRate16k.hertz();
    constexpr Skin kSkin{46.0, 40.0, 0.05};
    Oscillator skin(hz);
    Oscillator chest(hz);
    Filter wall(hz);
    const Signal signal = generate(0.45, hz, [&](double t) {
        const double pitch = kSkin.hertz(t);
        const double push = skin.sine(pitch) * attack(t, 0.004) * decay(t, 0.11);
        const double knock = chest.sine(2.6 * pitch) * attack(t, 0.006) * decay(t, 0.09);
        return wall.low(saturate((0.85 * push) + (1.05 * knock), 2.6), 620.0);
    });
    return oneShot("heart", kRate16k, finished(signal, hz, 0.95, 0.1));
}

XmInstrument makeKick()
{
    return makeKickDrum("kick", {
                                    {kLowA, 230.0, 0.019},
                                    0.085, 2.6, 0.7, 4300.0, 11
    });
}

// A kick with a harder beater, through an amplifier that is driven too far.
XmInstrument makeHardKick()
{
    return makeKickDrum("hard-kick", {
                                         {kLowA, 330.0, 0.018},
                                         0.1, 4.5, 0.8, 4000.0, 12
    });
}

// What one hears of it is the shell, between 400 Hz and 2.5 kHz; the wires are the dust on it.
XmInstrument makeSnare()
{
    const double hz = kRate45k.hertz();
    constexpr Skin kSkin{186.0, 70.0, 0.018};
    Oscillator skin(hz);
    Oscillator upper(hz);
    Noise noise(21);
    Shell shell(hz);
    Filter wires(hz);
    Filter dust(hz);
    const Signal dry = generate(0.36, hz, [&](double t) {
        const double white = noise.next();
        const double head = skin.sine(kSkin.hertz(t)) * decay(t, 0.07);
        const double rim = upper.sine(2.3 * kSkin.hertz(t)) * decay(t, 0.045);
        const double body = shell.next(white) * ((2.2 * decay(t, 0.014)) + decay(t, 0.07));
        const double rattle = dust.low(wires.high(white, 2100.0), 8000.0) *
                              ((1.2 * decay(t, 0.014)) + (0.5 * decay(t, 0.085)));
        return saturate((0.55 * head) + (0.5 * rim) + (1.5 * body) + rattle, 1.1) *
               attack(t, 0.0003);
    });
    return oneShot("snare", kRate45k, finished(withRoom(dry, hz, 0.5, 0.25), hz, 0.95, 0.1));
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
    constexpr Skin kSkin{178.0, 30.0, 0.02};
    Oscillator skin(hz);
    Noise noise(26);
    Shell shell(hz);
    Filter wires(hz);
    Filter distance(hz);
    const Signal signal = generate(0.18, hz, [&](double t) {
        const double white = noise.next();
        const double head = skin.sine(kSkin.hertz(t)) * decay(t, 0.03);
        const double body = shell.next(white) * decay(t, 0.035);
        const double rattle = wires.high(white, 1300.0) * decay(t, 0.04);
        const double all = (0.4 * head) + (2.6 * body) + (0.7 * rattle);
        return distance.low(saturate(all, 2.6), 7500.0) * attack(t, 0.0006);
    });
    return oneShot("ghost", kRate32k, finished(signal, hz, 0.95, 0.06));
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
        return saturate(2.0 * air.high(palm.band(noise.next(), 1350.0, 1.0), 550.0) * hands, 1.6);
    });
    return oneShot("clap", kRate32k, finished(withRoom(dry, hz, 0.8, 0.5), hz, 0.85, 0.1));
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

// Its neighbour, for the other side.
XmInstrument makeSecondHat()
{
    return makeCymbal("second-hat", {kRate45k, 0.1, 0.028, 1.0, 0.6, 74, 1.09});
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
    return makeGrains("shaker", 7600.0, 31);
}

XmInstrument makeSecondShaker()
{
    return makeGrains("second-shaker", 8500.0, 32);
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
    return makeBigCymbal("crash", 81);
}

XmInstrument makeSecondCrash()
{
    return makeBigCymbal("second-crash", 82);
}

// A sheet of iron under a hammer: partials that no string has, torn by their own loudness.
XmInstrument makeMetal()
{
    struct Mode {
        double hertz;
        double amplitude;
        double seconds;
    };
    constexpr std::array kModes = {
        Mode{73.4,   0.9,  0.5 },
        Mode{155.6,  0.8,  0.7 },
        Mode{233.1,  0.7,  0.9 },
        Mode{415.3,  0.8,  0.8 },
        Mode{622.3,  0.7,  0.65},
        Mode{881.0,  0.7,  0.55},
        Mode{1313.0, 0.65, 0.45},
        Mode{1867.0, 0.6,  0.36},
        Mode{2731.0, 0.5,  0.3 },
        Mode{3907.0, 0.45, 0.24},
        Mode{5501.0, 0.4,  0.18},
        Mode{7417.0, 0.35, 0.14},
    };
    const double hz = kRate32k.hertz();
    std::vector<Oscillator> modes;
    modes.reserve(kModes.size());
    for (const Mode& mode : kModes) {
        modes.emplace_back(hz, mode.hertz / 997.0);
    }
    Noise noise(83);
    Filter hammer(hz);
    const Signal dry = generate(2.2, hz, [&](double t) {
        double sheet = 0.0;
        for (std::size_t i = 0; i < kModes.size(); ++i) {
            const Mode& mode = kModes.at(i);
            const double bent = mode.hertz * (1.0 + (0.02 * decay(t, 0.03)));
            sheet += mode.amplitude * modes[i].sine(bent) * decay(t, mode.seconds);
        }
        const double blow = hammer.high(noise.next(), 900.0) * decay(t, 0.02);
        return saturate((0.35 * sheet) + (1.2 * blow), 1.2) * attack(t, 0.0003);
    });
    return oneShot("metal", kRate32k, finished(withRoom(dry, hz, 1.6, 0.3), hz, 0.95, 0.7));
}
