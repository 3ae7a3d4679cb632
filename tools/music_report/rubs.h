// Notes that rub: what sounds together a semitone apart, in whatever octaves.
#pragma once

#include "tools/music_report/performance.h"
#include "tools/music_report/stems.h"

#include <string>
#include <vector>

enum class RubKind {
    kSecond,  // one semitone
    kNinth,   // the same, and octaves
    kSeventh, // eleven semitones, and octaves
    kTritone,
};

struct Rub {
    RubKind kind = RubKind::kSecond;
    PlayedNote first; // struck before the other, or in the same row
    PlayedNote second;
    int low = 0; // the two pitches: a chord in one note has others than its note
    int high = 0;
    int voices = 1;        // pairs of channels that rub so in this row
    int times = 1;         // that the same notes of the same channels rub in this order
    double seconds = 0.0;  // that the softer one is heard
    double loudness = 0.0; // of the softer one, where that is loudest for 0.4 s, in LUFS
    double underAll = 0.0; // how far that lies under everything that is played, in LU
};

// False for drums and noises, by the instrument's name.
bool hasPitch(const std::string& instrument);

// Loudest first. Drums and noises have no pitch. `all` has the whole sound's weighted powers.
std::vector<Rub> findRubs(const Performance& performance, const Stems& stems,
                          const std::vector<float>& all);

const char* inWords(RubKind kind);
