// Writes the inputs that fuzzing starts from: small good files of every kind, as
// DIRECTORY/READER/...; pictures are asked for at every depth. The files KEPT/READER.hex add inputs
// that fuzzing has found.
#include "reference/picture_files.h"
#include "tests/fuzz/picture_fuzz.h"
#include "tests/support/test_module.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void writeInput(const std::filesystem::path& directory, const Bytes& input)
{
    static int number = 0;
    std::filesystem::create_directories(directory);
    std::ofstream output{directory / std::to_string(number++), std::ios::binary};
    std::ranges::copy(input, std::ostreambuf_iterator<char>(output));
}

void writeInputs(const std::filesystem::path& directory, const Bytes& file)
{
    for (std::uint8_t depth = 0; depth < kDepthChoices; ++depth) {
        Bytes input = file;
        input.insert(input.begin(), depth);
        writeInput(directory, input);
    }
}

void writeTgaInputs(const std::filesystem::path& directory)
{
    for (const unsigned type : {1U, 2U, 3U, 9U, 10U, 11U}) {
        const bool mapped = type % 8 == 1;
        for (const unsigned bits : {8U, 15U, 16U, 24U, 32U}) {
            for (const unsigned descriptor : {0x00U, 0x01U, 0x10U, 0x20U, 0x31U}) {
                const TgaShape shape = {.type = type,
                                        .width = 9,
                                        .height = 3,
                                        .bits = bits,
                                        .descriptor = descriptor,
                                        .identificationLength = descriptor % 2 * 3,
                                        .firstEntry = descriptor,
                                        .entries = mapped ? 4U : 0U};
                writeInputs(directory, makeTga(shape, makePixels(27, (bits + 7) / 8, 5)));
            }
        }
    }
}

void writeHsiRawInputs(const std::filesystem::path& directory)
{
    for (const unsigned colours : {0U, 1U, 7U, 256U}) {
        writeInputs(directory, makeHsiRaw(5, 4, colours, makePixels(20, colours == 0 ? 3 : 1, 0)));
    }
}

void writeXmInputs(const std::filesystem::path& directory)
{
    for (const int version : {0x0102, 0x0103, 0x0104}) {
        for (const bool packed : {false, true}) {
            const XmModule module = makeModule(6, "... Z09 / ZC8 ... Z07 | / Z00 Y05");
            writeInput(directory, writeAs(module, version, packed));
        }
    }
}

// What a line can say, each in a score that is right.
void writeScoreInputs(const std::filesystem::path& directory)
{
    const std::string head = "title one two\ntempo 130\nspeed 6\ninstrument 02 kick\n"
                             "channel kick 02\nchannel bell 18 pan 30\n"
                             "channel echo pan D0 echo bell 3 50\nchannel sync\norder one a a\n";
    for (const char* body : {
             "pattern a\nkick: 05 C-4 1F v40 A0F, 06 x, 07 ===, 08 c4, 09 .. v00, 10 Bb3\n",
             "pattern a 24\nswing 7 5\nsync: 00 Z02, 08 Z80\n",
             "block hit 4\n| kick | bell\n00 | C-4 v40 |\n03 | D-4 A01\npattern a\n"
             "play hit 00\nplay hit up 12 level 50 08 16 ; twice\nkick: 03 v20, 08 ---\n",
             "block hit 1\nkick: 00 x\nblock bar 16\nplay hit on bell 00 04 down 2\n"
             "pattern b\nplay bar 0 16\npattern a 32\nplay bar level 30 00\norder two b\n",
         }) {
        const std::string text = head + body;
        writeInput(directory, Bytes(text.begin(), text.end()));
    }
}

// What earlier rounds have found: an input a line, in hexadecimal digits.
void writeKeptInputs(const std::filesystem::path& kept, const std::filesystem::path& directory)
{
    std::ifstream lines(kept);
    for (std::string line; std::getline(lines, line);) {
        Bytes input;
        for (std::size_t i = 0; i + 1 < line.size(); i += 2) {
            input.push_back(static_cast<std::uint8_t>(std::stoi(line.substr(i, 2), nullptr, 16)));
        }
        writeInput(directory, input);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s KEPT DIRECTORY\n", argv[0]);
        return 2;
    }
    const std::filesystem::path kept = argv[1];
    const std::filesystem::path directory = argv[2];
    writeTgaInputs(directory / "fuzz_tga");
    writeHsiRawInputs(directory / "fuzz_hsi_raw");
    writeXmInputs(directory / "fuzz_xm_patterns");
    writeScoreInputs(directory / "fuzz_score");
    for (const char* reader : {"fuzz_tga", "fuzz_hsi_raw", "fuzz_xm_patterns", "fuzz_score"}) {
        writeKeptInputs(kept / (std::string(reader) + ".hex"), directory / reader);
    }
    return 0;
}
