// make_music SCORE FILE: makes a module of a score and of the instruments that it names.
#include "art/music/instruments/instruments.h"
#include "art/music/score/arrange.h"
#include "art/music/score/score_reader.h"
#include "art/music/xm.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>

namespace {

// Instruments whose numbers the score leaves out are empty.
void addInstruments(const Score& score, XmModule& module)
{
    for (const ScoreInstrument& player : score.instruments) {
        const auto number = static_cast<std::size_t>(player.number);
        if (module.instruments.size() < number) {
            module.instruments.resize(number);
        }
        module.instruments[number - 1] = makeInstrumentByName(player.name);
    }
}

bool isDeclared(const Score& score, int number)
{
    return std::any_of(score.instruments.begin(), score.instruments.end(),
                       [number](const ScoreInstrument& player) { return player.number == number; });
}

// Throws ScoreError for a note whose instrument the score does not name.
void checkPlayers(const Score& score)
{
    for (const ScorePattern& pattern : score.patterns) {
        for (int row = 0; row < pattern.rows; ++row) {
            for (int c = 0; c < pattern.channels; ++c) {
                const ScoreCell& cell = pattern.at(row, c);
                const ScoreChannel& channel = score.channels[static_cast<std::size_t>(c)];
                const bool hasNote = cell.note && *cell.note <= kXmLastNote;
                const int player = cell.instrument.value_or(hasNote ? channel.instrument : 0);
                const bool needsPlayer = hasNote && !cell.instrument;
                if ((player != 0 && !isDeclared(score, player)) || (player == 0 && needsPlayer)) {
                    throw ScoreError("pattern " + pattern.name + ", row " + std::to_string(row) +
                                     ", channel " + channel.name + ": no such instrument");
                }
            }
        }
    }
}

void makeMusic(const char* scorePath, const char* modulePath)
{
    const Score score = readScore(scorePath);
    checkPlayers(score);
    XmModule module = arrange(score);
    addInstruments(score, module);
    const std::vector<std::uint8_t> bytes = writeXm(module);

    std::ofstream file(modulePath, std::ios::binary);
    for (const std::uint8_t byte : bytes) {
        file.put(static_cast<char>(byte));
    }
    if (!file.flush()) {
        throw std::runtime_error(std::string("cannot write ") + modulePath);
    }
    std::printf("%s  %zu orders, %zu patterns, %zu instruments, %zu bytes\n", modulePath,
                module.orders.size(), module.patterns.size(), module.instruments.size(),
                bytes.size());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: make_music SCORE FILE\n", stderr);
        return 2;
    }
    try {
        makeMusic(argv[1], argv[2]);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
    return 0;
}
