// From a signal to a module's sample and instrument, in tune.
#pragma once

#include "art/music/synth/signal.h"
#include "art/music/xm.h"

#include <string>

// A sampling rate on the format's own scale: 8363 Hz raised by whole semitones, so that a sample
// made at it is in tune without finetuning.
struct Rate {
    int semitones = 0;

    [[nodiscard]] double hertz() const;
};

constexpr Rate kRate16k{11};
constexpr Rate kRate22k{17};
constexpr Rate kRate32k{23};
constexpr Rate kRate45k{29};

// Notes, by name and octave.
constexpr int noteC(int octave)
{
    return 1 + (12 * octave);
}
constexpr int noteD(int octave)
{
    return 3 + (12 * octave);
}
constexpr int noteF(int octave)
{
    return 6 + (12 * octave);
}
constexpr int noteA(int octave)
{
    return 10 + (12 * octave);
}

// The frequency of a note from 1 (C-0) on; A-4 is 440 Hz.
double noteHertz(int note);

// A sample, and the note at which it sounds as it was made.
struct Zone {
    int root = 0;
    XmSample sample;
};

constexpr std::size_t kNoLoop = SIZE_MAX;

// A sample of the signal, which plays once, or repeats from `loopStart` to its end.
Zone makeZone(int root, Rate rate, const Signal& signal, std::size_t loopStart = kNoLoop);

// An instrument whose zones follow each other up the keyboard: each serves the notes up to
// halfway to the next one's root.
XmInstrument makeInstrument(const std::string& name, std::vector<Zone> zones);

// Volume that rises over `attackTicks`, falls to `sustain` of 64 over `decayTicks`, and after
// release dies away over `releaseTicks`. There are 50 ticks in a second.
void setEnvelope(XmInstrument& instrument, int attackTicks, int decayTicks, int sustain,
                 int releaseTicks);

// Panning that wanders to both sides of the channel's own and turns back every `ticks`; a `depth`
// of 32 reaches the nearer side.
void setDrift(XmInstrument& instrument, int depth, int ticks);

// A pitch that wavers, in the format's own units, and reaches its depth after `sweepTicks`.
void setVibrato(XmInstrument& instrument, int depth, int rate, int sweepTicks);
