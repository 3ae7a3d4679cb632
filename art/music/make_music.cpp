// make_music SCORE FILE: makes a module of a score and of the instruments that it names.
#include "art/music/instruments/instruments.h"
#include "art/music/score/arrange.h"
#include "art/music/score/score_reader.h"
#include "art/music/xm.h"

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
