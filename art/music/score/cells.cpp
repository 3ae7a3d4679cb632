#include "art/music/score/cells.h"

#include "art/music/score/words.h"

#include <array>
#include <cctype>

namespace {

constexpr std::uint8_t kHitNote = kXmNoteC4;

bool isUpperHex(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

// "D-4", "F#3", "Bb2": C-0 is 1. Nothing if the word is not shaped like a note.
std::optional<int> toNote(std::string_view word)
{
    constexpr std::array<int, 7> kSteps = {9, 11, 0, 2, 4, 5, 7}; // A to G, from C
    if (word.size() != 3 || word[0] < 'A' || word[0] > 'G' || word[2] < '0' || word[2] > '9') {
        return std::nullopt;
    }
    constexpr std::string_view kSigns = "b-#";
    const std::size_t sign = kSigns.find(word[1]);
    if (sign == std::string_view::npos) {
        return std::nullopt;
    }
    const int step = kSteps.at(std::size_t(word[0] - 'A'));
    return (12 * (word[2] - '0')) + step + static_cast<int>(sign);
}

std::uint8_t readNote(int note, std::string_view word)
{
    require(note >= 1 && note <= kXmLastNote, "note " + inQuotes(word) + " is out of range");
    return static_cast<std::uint8_t>(note);
}

struct VolumeCommand {
    char letter;
    int base;
    int highest;
};

constexpr std::array kVolumeCommands = {
    VolumeCommand{'v', kXmSetVolume,  64}, // set volume
    VolumeCommand{'d', 0x60,          15}, // slide down
    VolumeCommand{'c', 0x70,          15}, // slide up
    VolumeCommand{'b', 0x80,          15}, // fine slide down
    VolumeCommand{'a', 0x90,          15}, // fine slide up
    VolumeCommand{'u', 0xA0,          15}, // vibrato speed
    VolumeCommand{'h', 0xB0,          15}, // vibrato depth
    VolumeCommand{'p', kXmSetPanning, 15},
    VolumeCommand{'l', 0xD0,          15}, // pan left
    VolumeCommand{'r', 0xE0,          15}, // pan right
    VolumeCommand{'g', 0xF0,          15}, // slide to the note
};

std::uint8_t readVolume(std::string_view word)
{
    for (const VolumeCommand& command : kVolumeCommands) {
        if (command.letter == word[0]) {
            const int value = readNumber(word.substr(1), 0, command.highest, "volume column");
            return static_cast<std::uint8_t>(command.base + value);
        }
    }
    complain("volume column: no command " + inQuotes(word.substr(0, 1)));
}

ScoreEffect readEffect(std::string_view word)
{
    const char number = word[0];
    const bool known = (number >= '0' && number <= '9') || (number >= 'A' && number <= 'Z');
    require(word.size() == 3 && known && isUpperHex(word[1]) && isUpperHex(word[2]),
            inQuotes(word) + " is no note, instrument, volume or effect");
    ScoreEffect effect;
    effect.number = static_cast<std::uint8_t>(number <= '9' ? number - '0' : number - 'A' + 10);
    effect.parameter = static_cast<std::uint8_t>(*toNumber(word.substr(1), 16));
    return effect;
}

bool isNothing(std::string_view word)
{
    return word == "...";
}

// Every word has the shape of its column, so columns may be left out.
void readWord(std::string_view word, ScoreCell& cell)
{
    if (word == "x") {
        cell.note = kHitNote;
    } else if (word == "===") {
        cell.note = kXmKeyOff;
    } else if (word == "---") {
        cell.clears = true;
    } else if (word == "..") {
        cell.instrument = std::uint8_t(0);
    } else if (const std::optional<int> note = toNote(word)) {
        cell.note = readNote(*note, word);
    } else if (word.size() == 2 && isUpperHex(word[0]) && isUpperHex(word[1])) {
        cell.instrument = static_cast<std::uint8_t>(readNumber(word, 1, 128, "instrument", 16));
    } else if (std::islower(static_cast<unsigned char>(word[0])) != 0) {
        cell.volume = readVolume(word);
    } else if (!isNothing(word)) {
        cell.effect = readEffect(word);
    }
}

template <class Field>
void overlay(std::optional<Field>& below, const std::optional<Field>& above)
{
    if (above) {
        below = above;
    }
}

} // namespace

void overlay(ScoreCell& below, const ScoreCell& above)
{
    if (above.clears) {
        below = ScoreCell();
        below.clears = true;
    }
    if (above.note) {
        // A note is a whole one: nothing is left of how the covered one would have been played.
        below.instrument.reset();
        below.volume.reset();
    }
    overlay(below.note, above.note);
    overlay(below.instrument, above.instrument);
    overlay(below.volume, above.volume);
    overlay(below.effect, above.effect);
}

void putCell(const std::string& text, ScoreCell& cell)
{
    ScoreCell above;
    for (const std::string& word : splitWords(text)) {
        readWord(word, above);
    }
    overlay(cell, above);
}

bool isEmpty(const ScoreCell& cell)
{
    return !cell.note && !cell.instrument && !cell.volume && !cell.effect && !cell.clears;
}

ScoreCell transposed(ScoreCell cell, int semitones)
{
    if (cell.note && *cell.note != kXmKeyOff) {
        cell.note = readNote(*cell.note + semitones, "moved " + std::to_string(semitones));
    }
    return cell;
}

ScoreCell softened(ScoreCell cell, int percent)
{
    const bool setsVolume = cell.volume && *cell.volume <= kXmSetVolume + 64;
    if (percent != 100 && (setsVolume || (cell.note && *cell.note != kXmKeyOff && !cell.volume))) {
        const int volume = setsVolume ? *cell.volume - kXmSetVolume : 64;
        cell.volume = static_cast<std::uint8_t>(kXmSetVolume + ((volume * percent + 50) / 100));
    }
    return cell;
}
