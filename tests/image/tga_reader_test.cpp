#include "tests/image/picture_checks.h"

#include <array>

namespace {

// Every kind of pixels and palette; the size comes later.
// clang-format off
constexpr TgaShape kKinds[] = {
    {.type = 1, .bits = 8, .entries = 256},
    {.type = 1, .bits = 8, .firstEntry = 100, .entries = 50},
    {.type = 1, .bits = 8},
    {.type = 3, .bits = 8, .descriptor = 8, .firstEntry = 250, .entries = 6},
    {.type = 2, .bits = 15},
    {.type = 2, .bits = 16},
    {.type = 2, .bits = 16, .descriptor = 1},
    {.type = 2, .bits = 24, .descriptor = 15, .firstEntry = 7, .entries = 3},
    {.type = 2, .bits = 32, .descriptor = 8},
    {.type = 9, .bits = 8, .entries = 256},
    {.type = 11, .bits = 8},
    {.type = 10, .bits = 15},
    {.type = 10, .bits = 16},
    {.type = 10, .bits = 16, .descriptor = 1},
    {.type = 10, .bits = 24, .entries = 40},
    {.type = 10, .bits = 32},
};
// clang-format on

// A file of this kind with noise and runs. The width also chooses the length of its identification.
Bytes fileOf(TgaShape kind, unsigned width, unsigned height, unsigned origin, std::size_t run)
{
    kind.width = width;
    kind.height = height;
    kind.descriptor |= origin;
    kind.identificationLength = width % 4 * 85;
    return makeTga(kind, makePixels(std::size_t{width} * height, (kind.bits + 7) / 8, run));
}

TEST(TgaReader, ReadsEveryKindAsThePlainFormDoes)
{
    for (const TgaShape& kind : kKinds) {
        for (const unsigned origin : {0U, 16U, 32U, 48U}) {
            SCOPED_TRACE(testing::PrintToString(std::array{kind.type, kind.bits, origin}));
            // Widths around the registers' sizes; runs inside a row, across rows, over packets.
            for (const unsigned width : {0U, 1U, 2U, 7U, 16U, 17U, 35U, 300U}) {
                for (const std::size_t run : {0U, 3U, 400U}) {
                    compareWithPlain(fileOf(kind, width, 5, origin, run), &Bitmap::load,
                                     plainReadTga);
                }
            }
            // More than one block of rows and of packets; no rows.
            compareWithPlain(fileOf(kind, 97, 700, origin, 5), &Bitmap::load, plainReadTga);
            compareWithPlain(fileOf(kind, 5, 0, origin, 0), &Bitmap::load, plainReadTga);
        }
    }
}

TEST(TgaReader, PlacesRowsByOriginWithRedFirst)
{
    struct Placement {
        const char* firstPixel; // of the file
        unsigned descriptor;
        Bytes pixels;
    };
    const Placement placements[] = {
        {"bottom left",  0x00, {7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6}},
        {"bottom right", 0x10, {10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3}},
        {"top left",     0x20, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
        {"top right",    0x30, {4, 5, 6, 1, 2, 3, 10, 11, 12, 7, 8, 9}},
    };
    const Bytes written = {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10};
    for (const auto& [firstPixel, descriptor, pixels] : placements) {
        const TgaShape shape = {.width = 2, .height = 2, .descriptor = descriptor};
        const TemporaryFile file{makeTga(shape, written)};
        Bitmap bitmap;
        bitmap.load(file.path(), 24);
        EXPECT_EQ(pixelsOf(bitmap), pixels) << firstPixel;
    }
}

// Files are cut anywhere, even inside a palette or a packet.
TEST(TgaReader, TakesWhatAShortFileLacksForZeros)
{
    for (const TgaShape& kind : kKinds) {
        for (Bytes file = fileOf(kind, 4, 3, 16, 3); file.size() > 18; file.pop_back()) {
            compareWithPlain(file, &Bitmap::load, plainReadTga);
        }
    }
}

// clang-format off
TEST(TgaReaderDeathTest, RefusesWhatItCannotRead)
{
    const std::string tooBig = "Error! Too big palette in TARGA!!\n";
    const std::string alpha = "Error! Unsupported number of bits for alpha-channel!!\n\n";
    expectRefusals(makeTga({.width = 1, .height = 1, .entries = 5}, {1, 2, 3}), &Bitmap::load, {
        {{{16, 16}, {17, 8}, {6, 2}}, alpha},
        {{{16, 16}, {17, 2}}, alpha},
        {{{6, 1}, {5, 1}, {7, 32}}, tooBig},           // 257 entries
        {{{3, 250}, {5, 7}, {7, 32}}, tooBig + "\n"},  // up to the 257th
        {{{3, 255}, {4, 255}, {5, 1}}, tooBig + "\n"}, // up to the 65536th
        {{{7, 32}, {2, 0}}, "Error! Unsupported paletteformat!\n\n"},
        {{{2, 0}, {13, 128}}, "No image data in %s\n\n"},
        {{{2, 4}, {13, 128}}, "Error! Unsupported image type in %s!!\n\n"},
        {{{2, 12}}, "Error! Unsupported image type in %s!!\n\n"},
        {{{15, 128}, {16, 12}}, "Error! Negative size in %s!!\n\n"},
        {{{16, 12}}, "Error! Not a valid bitdepth for the source!!\n\n"},
    });
    expectRefusals({}, &Bitmap::load, {{{}, "No image data in %s\n\n"}});
}
// clang-format on

} // namespace
