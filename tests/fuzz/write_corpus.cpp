// Writes the inputs that fuzzing starts from: small good files of every kind, as
// DIRECTORY/fuzz_tga/... and DIRECTORY/fuzz_hsi_raw/..., each asked for at every depth.
#include "reference/picture_files.h"
#include "tests/fuzz/picture_fuzz.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

void writeInputs(const std::filesystem::path& directory, const Bytes& file)
{
    static int number = 0;
    for (std::uint8_t depth = 0; depth < kDepthChoices; ++depth) {
        std::ofstream output{directory / std::to_string(number++), std::ios::binary};
        output.put(static_cast<char>(depth));
        for (const std::uint8_t byte : file) {
            output.put(static_cast<char>(byte));
        }
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

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s DIRECTORY\n", argv[0]);
        return 2;
    }
    const std::filesystem::path directory = argv[1];
    std::filesystem::create_directories(directory / "fuzz_tga");
    std::filesystem::create_directories(directory / "fuzz_hsi_raw");
    writeTgaInputs(directory / "fuzz_tga");
    writeHsiRawInputs(directory / "fuzz_hsi_raw");
    return 0;
}
