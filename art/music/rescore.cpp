// rescore SCORE MODULE FILE: what make_music makes of a score, in a hundredth of the time, if
// MODULE was made by it and has the instruments that the score names: these are taken over as they
// are.
//
// Exit status 3: MODULE has other instruments.
#include "art/music/score/arrange.h"
#include "art/music/score/score_reader.h"
#include "art/music/xm.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kOtherInstruments = 3;

// Places in a file that writeXm makes.
constexpr std::size_t kHeaderAt = 60;
constexpr std::size_t kPatternCountAt = 70;
constexpr std::size_t kInstrumentCountAt = 72;
constexpr std::size_t kPackedSizeAt = 7; // in a pattern's header
constexpr std::size_t kNameAt = 4;       // in an instrument's header
constexpr std::size_t kNameLength = 22;
constexpr std::size_t kSampleCountAt = 27;
constexpr std::size_t kSampleHeaderBytes = 40;

std::size_t number(const Bytes& file, std::size_t at, std::size_t size)
{
    std::size_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::size_t{file.at(at + i)} << (8 * i);
    }
    return value;
}

std::size_t instrumentsAt(const Bytes& file)
{
    std::size_t at = kHeaderAt + number(file, kHeaderAt, 4);
    for (std::size_t i = 0; i < number(file, kPatternCountAt, 2); ++i) {
        at += number(file, at, 4) + number(file, at + kPackedSizeAt, 2);
    }
    return at;
}

std::vector<std::string> instrumentNames(const Bytes& file)
{
    std::vector<std::string> names;
    std::size_t at = instrumentsAt(file);
    for (std::size_t i = 0; i < number(file, kInstrumentCountAt, 2); ++i) {
        std::string& name = names.emplace_back();
        for (std::size_t c = 0; c < kNameLength && file.at(at + kNameAt + c) != 0; ++c) {
            name += static_cast<char>(file.at(at + kNameAt + c));
        }
        const std::size_t samples = number(file, at + kSampleCountAt, 2);
        at += number(file, at, 4);
        std::size_t sampleBytes = 0;
        for (std::size_t s = 0; s < samples; ++s) {
            sampleBytes += number(file, at + s * kSampleHeaderBytes, 4);
        }
        at += samples * kSampleHeaderBytes + sampleBytes;
    }
    return names;
}

// The score's module, whose instruments have nothing but their names.
XmModule readModule(const char* path)
{
    const Score score = readScore(path);
    checkPlayers(score);
    XmModule module = arrange(score);
    for (const ScoreInstrument& player : score.instruments) {
        const auto count = static_cast<std::size_t>(player.number);
        module.instruments.resize(std::max(module.instruments.size(), count));
        module.instruments[count - 1].name = player.name;
    }
    return module;
}

int rescore(const char* scorePath, const char* modulePath, const char* newPath)
{
    const Bytes head = writeXm(readModule(scorePath));
    std::ifstream stream(modulePath, std::ios::binary);
    const Bytes tail(std::istreambuf_iterator<char>(stream), {});
    if (tail.empty()) {
        throw std::runtime_error(std::string("cannot read ") + modulePath);
    }
    if (instrumentNames(head) != instrumentNames(tail)) {
        return kOtherInstruments;
    }
    std::ofstream file(newPath, std::ios::binary);
    const auto write = [&file](const Bytes& bytes, std::size_t begin, std::size_t end) {
        file.write(reinterpret_cast<const char*>(bytes.data() + begin),
                   static_cast<std::streamsize>(end - begin));
    };
    write(head, 0, instrumentsAt(head));
    write(tail, instrumentsAt(tail), tail.size());
    if (!file.flush()) {
        throw std::runtime_error(std::string("cannot write ") + newPath);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: rescore SCORE MODULE FILE\n", stderr);
        return 2;
    }
    try {
        return rescore(argv[1], argv[2], argv[3]);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 1;
    }
}
