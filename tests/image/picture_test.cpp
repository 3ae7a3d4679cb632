#include "image/bitmap.h"
#include "image/pixel_conversion.h"
#include "reference/picture_files.h"
#include "reference/plain_picture.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

const testing::ExitedWithCode kStatus0{0};

using Load = void (Bitmap::*)(const char*, unsigned);
using PlainRead = PlainPicture (*)(const char*);

Bytes pixelsOf(const Bitmap& bitmap)
{
    const std::size_t count = std::size_t{bitmap.getWidth()} * bitmap.getHeight();
    const std::size_t size = pixelBytes(static_cast<int>(bitmap.getBpp()));
    return {bitmap.getPixels(), bitmap.getPixels() + count * size};
}

// Loads the file at its own depth and at each of the others.
void compareWithPlain(const Bytes& file, Load load, PlainRead plainRead)
{
    const TemporaryFile temporary{file};
    for (const int bpp : {plainRead(temporary.path()).bpp, 16, 24, 32}) {
        const PlainPicture expected = plainConvert(plainRead(temporary.path()), bpp);
        Bitmap bitmap;
        bitmap.create(1, 1, 8); // what it holds is given up
        (bitmap.*load)(temporary.path(), static_cast<unsigned>(bpp));
        ASSERT_EQ(bitmap.getWidth(), static_cast<unsigned>(expected.width));
        ASSERT_EQ(bitmap.getHeight(), static_cast<unsigned>(expected.height));
        ASSERT_EQ(pixelsOf(bitmap), expected.pixels) << bpp;
        if (bpp == 8) {
            const std::uint8_t* palette = bitmap.getPalette()->data();
            ASSERT_EQ(Bytes(palette, palette + 768),
                      Bytes(expected.palette.begin(), expected.palette.end()));
        }
    }
}

// Type, size, bits per pixel, descriptor, identification, first palette entry, entries.
// clang-format off
constexpr std::array kKinds = {
    TgaShape{1, 0, 0, 8, 0, 0, 0, 256}, TgaShape{1, 0, 0, 8, 0, 0, 100, 50}, TgaShape{1, 0, 0, 8},
    TgaShape{3, 0, 0, 8, 8, 0, 250, 6}, TgaShape{2, 0, 0, 15}, TgaShape{2, 0, 0, 16},
    TgaShape{2, 0, 0, 16, 1}, TgaShape{2, 0, 0, 24, 15, 0, 7, 3}, TgaShape{2, 0, 0, 32, 8},
    TgaShape{9, 0, 0, 8, 0, 0, 0, 256}, TgaShape{11, 0, 0, 8}, TgaShape{10, 0, 0, 15},
    TgaShape{10, 0, 0, 16}, TgaShape{10, 0, 0, 16, 1}, TgaShape{10, 0, 0, 24, 0, 0, 0, 40},
    TgaShape{10, 0, 0, 32},
};
// clang-format on

// Noise and runs of `run`; by its width, the file's identification is empty, full or between.
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
    // clang-format off
    const std::array<Bytes, 4> expected = {{{7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6},
                                            {10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3},
                                            {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
                                            {4, 5, 6, 1, 2, 3, 10, 11, 12, 7, 8, 9}}};
    // clang-format on
    for (unsigned i = 0; i < 4; ++i) {
        const Bytes pixels = {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10};
        const TemporaryFile file{makeTga({2, 2, 2, 24, 16 * i}, pixels)};
        Bitmap bitmap;
        bitmap.load(file.path(), 24);
        EXPECT_EQ(pixelsOf(bitmap), expected[i]) << i;
    }
}

// Files are cut anywhere, even inside a palette or a packet.
TEST(PictureReaders, TakeWhatAShortFileLacksForZeros)
{
    for (const TgaShape& kind : kKinds) {
        for (Bytes file = fileOf(kind, 4, 3, 16, 3); file.size() > 18; file.pop_back()) {
            compareWithPlain(file, &Bitmap::load, plainReadTga);
        }
    }
    for (const unsigned colours : {0U, 1U, 256U}) {
        Bytes file = makeHsiRaw(4, 3, colours, makePixels(colours == 0 ? 36 : 12, 1, 0));
        for (; file.size() > 14; file.pop_back()) {
            compareWithPlain(file, &Bitmap::loadHsiRaw, plainReadHsiRaw);
        }
    }
}

TEST(PixelConversion, ConvertsEveryWordAsThePlainFormDoes)
{
    Bytes words;
    for (unsigned word = 0; word < 65536; ++word) {
        words.insert(words.end(), {std::uint8_t(word & 255), std::uint8_t(word >> 8)});
    }
    for (const int pair : {1516, 1524, 1532, 1624, 1632}) {
        const int sourceBpp = pair / 100;
        const int bpp = pair % 100;
        Bitmap bitmap;
        bitmap.create(256, 256, static_cast<unsigned>(bpp));
        bitmap.convertFrom(words.data(), sourceBpp);
        Bytes expected(pixelsOf(bitmap).size());
        plainConvertPixels(words.data(), sourceBpp, expected.data(), bpp, 65536, {});
        EXPECT_TRUE(pixelsOf(bitmap) == expected) << sourceBpp << " to " << bpp;
    }
}

// What both forms could have misunderstood.
TEST(PixelConversion, CutsAndFillsLowBits)
{
    // clang-format off
    const std::array<std::tuple<int, unsigned, Bytes, Bytes>, 6> rows = {{
        {24, 16, {255, 255, 255, 8, 4, 8}, {0xff, 0xff, 0x21, 0x08}},
        {16, 24, {0xff, 0xff, 0x21, 0x08}, {248, 252, 248, 8, 4, 8}},
        {15, 16, {0xff, 0x7f, 0x01, 0x80}, {0xdf, 0xff, 0x01, 0x00}},
        {15, 32, {0xff, 0xff, 0x41, 0x0c}, {248, 248, 248, 255, 24, 16, 8, 255}},
        {8, 16, {5, 0}, {0xa3, 0x08, 0, 0}},
        {32, 32, {1, 2, 3, 4, 5, 6, 7, 8}, {0, 0, 0, 0, 0, 0, 0, 0}}, // nothing is written
    }};
    // clang-format on
    for (const auto& [sourceBpp, bpp, source, expected] : rows) {
        Bitmap bitmap;
        bitmap.create(2, 1, bpp);
        bitmap.clear();
        bitmap.getPalette()[5] = {10, 20, 30};
        bitmap.convertFrom(source.data(), sourceBpp);
        EXPECT_EQ(pixelsOf(bitmap), expected) << sourceBpp << " to " << bpp;
    }
}

// A good file with some bytes changed, and the message that it ends with.
struct Refusal {
    std::vector<std::pair<std::size_t, std::uint8_t>> patches;
    std::string message;
};

void expectRefusals(const Bytes& good, Load load, const std::vector<Refusal>& refusals)
{
    for (const auto& [patches, message] : refusals) {
        Bytes bad = good;
        for (const auto& [at, byte] : patches) {
            bad[at] = byte;
        }
        const TemporaryFile file{bad};
        std::array<char, 256> text{};
        std::snprintf(text.data(), text.size(), ("^\n\n" + message + "$").c_str(), file.path());
        EXPECT_EXIT((Bitmap{}.*load)(file.path(), 32), kStatus0, text.data());
    }
}

// clang-format off
TEST(PictureReadersDeathTest, RefuseWhatTheyCannotRead)
{
    const std::string tooBig = "Error! Too big palette in TARGA!!\n";
    const std::string alpha = "Error! Unsupported number of bits for alpha-channel!!\n\n";
    expectRefusals(makeTga({2, 1, 1, 24, 0, 0, 0, 5}, {1, 2, 3}), &Bitmap::load, {
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
    expectRefusals(makeHsiRaw(1, 1, 2, {1}), &Bitmap::loadHsiRaw, {
        {{{1, 'n'}}, "Error! Not valid HSIRAW!!\n\n"},
        {{{2, 'x'}, {12, 1}}, "Error! Not valid HSIRAW!!\n\n"},
        {{{12, 1}, {13, 1}}, "Error! Too many colors!!\n\n"}, // 257
    });
}
// clang-format on

TEST(PictureReadersDeathTest, OpenNothingButFiles)
{
    const std::string pipe = testing::TempDir() + "kso_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {std::string{"no/such.file"}, std::string{"/"}, pipe}) {
        const std::string message = "^\n\nError opening " + path + "!\n\n$";
        EXPECT_EXIT(Bitmap{}.load(path.c_str(), 32), kStatus0, message);
        EXPECT_EXIT(Bitmap{}.loadHsiRaw(path.c_str(), 32), kStatus0, message);
    }
    unlink(pipe.c_str());
}

TEST(PixelConversionDeathTest, ConvertsToThreeDepthsOnly)
{
    const std::string to8 = "^\nError! Can't convert to 8bpp!!\n\n$";
    const std::string destination = "^\n\nError! Not supported destination-bpp!!\n\n$";
    Bitmap bitmap;
    bitmap.create(0, 0, 8);
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 12), kStatus0,
                "^\n\nError! Not a valid bitdepth for the source!!\n\n$");
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 24), kStatus0, to8);
    EXPECT_EXIT(bitmap.convertFrom(nullptr, 8), kStatus0, destination);
    const TemporaryFile file{makeTga({2, 32767, 100}, {})};
    EXPECT_EXIT(bitmap.load(file.path(), 15), kStatus0, destination);
    EXPECT_EXIT(bitmap.load(file.path(), 0xffffffffU), kStatus0,
                "\n\nError allocating memory!!\n\n$");
}

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr long kSanitizing = 8; // times the time and the memory
#else
constexpr long kSanitizing = 1;
#endif

// Ends the process with status 1 if it takes more than so long or 64 MiB until its end.
void watchCosts(int milliseconds)
{
    static const std::clock_t limit = CLOCKS_PER_SEC / 1000 * milliseconds * kSanitizing;
    static const auto resident = [] {
        rusage now = {};
        getrusage(RUSAGE_SELF, &now);
        return now.ru_maxrss; // KiB
    };
    static const std::clock_t clockBefore = std::clock();
    static const long residentBefore = resident();
    std::atexit([] {
        const bool slow = std::clock() - clockBefore > limit;
        if (slow || resident() - residentBefore > 65536 * kSanitizing) {
            _exit(1);
        }
    });
}

TEST(PictureReadersDeathTest, AHugePictureThatTheFileLacksCostsNothing)
{
    for (const unsigned type : {2U, 10U}) {
        for (const unsigned bits : {8U, 16U, 24U, 32U}) {
            const TemporaryFile file{makeTga({type, 32767, 32767, bits}, {})};
            for (const unsigned bpp : {bits, 32U}) {
                EXPECT_EXIT((watchCosts(50), Bitmap{}.load(file.path(), bpp)), kStatus0,
                            "^\n\nError allocating memory for .*!\n\n$");
            }
        }
        const TemporaryFile cut{makeTga({type, 2048, 2048}, {})}; // may still be a cut file
        EXPECT_EXIT((watchCosts(500), Bitmap{}.load(cut.path(), 32), std::exit(0)), kStatus0, "^$");
        const TemporaryFile most{makeTga({3, 3000, 3000, 8}, makePixels(300000, 1, 0))};
        EXPECT_EXIT((Bitmap{}.load(most.path(), 32), std::exit(0)), kStatus0, "^$");
    }
    for (const unsigned colours : {0U, 1U}) {
        const TemporaryFile file{makeHsiRaw(65535, 65535, colours, {})};
        EXPECT_EXIT((watchCosts(50), Bitmap{}.loadHsiRaw(file.path(), 32)), kStatus0,
                    "^\n\nMemory allocation failed!!\n\n$");
    }
}

} // namespace
