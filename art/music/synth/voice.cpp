#include "art/music/synth/voice.h"

#include <algorithm>
#include <utility>

// Kept out of the header, where a compiler could compute it: compilers round powers in a way of
// their own, and a last bit can decide which loop fits best.
double Rate::hertz() const
{
    return 8363.0 * std::exp2(semitones / 12.0);
}

double noteHertz(int note)
{
    return 440.0 * std::exp2((note - noteA(4)) / 12.0);
}

Zone makeZone(int root, Rate rate, const Signal& signal, std::size_t loopStart)
{
    Zone zone;
    zone.root = root;
    zone.sample.relativeNote = rate.semitones + kXmNoteC4 - root;
    zone.sample.data.reserve(signal.size());
    for (const double value : signal) {
        const double scaled = std::round(32767.0 * std::clamp(value, -1.0, 1.0));
        zone.sample.data.push_back(static_cast<std::int16_t>(scaled));
    }
    if (loopStart != kNoLoop) {
        zone.sample.loopStart = static_cast<int>(loopStart);
        zone.sample.loopLength = static_cast<int>(signal.size() - loopStart);
    }
    return zone;
}

XmInstrument makeInstrument(const std::string& name, std::vector<Zone> zones)
{
    XmInstrument instrument;
    instrument.name = name;
    for (std::size_t i = 0; i < zones.size(); ++i) {
        const int lowest = i == 0 ? 1 : (zones[i - 1].root + zones[i].root + 1) / 2;
        std::fill(instrument.keymap.begin() + lowest - 1, instrument.keymap.end(),
                  static_cast<std::uint8_t>(i));
        zones[i].sample.name = name;
        instrument.samples.push_back(std::move(zones[i].sample));
    }
    return instrument;
}

void setEnvelope(XmInstrument& instrument, int attackTicks, int decayTicks, int sustain,
                 int releaseTicks)
{
    constexpr int kFull = 64;
    constexpr int kFadeFull = 32768;
    constexpr int kFastestFade = 4095;
    std::vector<XmEnvelopePoint>& points = instrument.volume.points;
    points = {
        {0, attackTicks > 0 ? 0 : kFull}
    };
    if (attackTicks > 0) {
        points.push_back({attackTicks, kFull});
    }
    if (decayTicks > 0) {
        points.push_back({attackTicks + decayTicks, sustain});
    }
    instrument.volume.sustain = static_cast<int>(points.size()) - 1;
    instrument.fadeout = std::min(kFadeFull / releaseTicks, kFastestFade);
}

void setDrift(XmInstrument& instrument, int depth, int ticks)
{
    constexpr int kMiddle = 32;
    constexpr int kTurns = 10;
    std::vector<XmEnvelopePoint>& points = instrument.panning.points;
    points = {
        {0, kMiddle}
    };
    for (int turn = 1; turn <= kTurns; ++turn) {
        points.push_back({turn * ticks, turn % 2 == 1 ? kMiddle + depth : kMiddle - depth});
    }
}

void setVibrato(XmInstrument& instrument, int depth, int rate, int sweepTicks)
{
    instrument.vibratoDepth = depth;
    instrument.vibratoRate = rate;
    instrument.vibratoSweep = sweepTicks;
}
