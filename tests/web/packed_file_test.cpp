#include "image/loaded_image.h"
#include "image/tga_reader.h"
#include "web/pack/packed_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

namespace {

Bytes readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const Bytes& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

Bytes picture(unsigned type, unsigned width, unsigned height, unsigned bits, const Bytes& pixels)
{
    Bytes file = {0,
                  0,
                  static_cast<std::uint8_t>(type),
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  static_cast<std::uint8_t>(width),
                  0,
                  static_cast<std::uint8_t>(height),
                  0,
                  static_cast<std::uint8_t>(bits),
                  0x20};
    for (const std::uint8_t byte : pixels) {
        file.push_back(byte);
    }
    return file;
}

} // namespace

// What the readers make of the show's own files is what they make of the packed ones.
TEST(PackedFile, GivesTheShowsPicturesBack)
{
    int pictures = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("data")) {
        if (entry.path().extension() != ".tga") {
            continue;
        }
        SCOPED_TRACE(entry.path());
        const auto again = unpack(pack(readFile(entry.path())));
        ASSERT_TRUE(again);
        const std::string copy = "build/unpacked.tga";
        writeFile(copy, *again);
        LoadedImage expected;
        readTga(entry.path().c_str(), expected);
        LoadedImage got;
        readTga(copy.c_str(), got);
        ASSERT_EQ(got.width, expected.width);
        ASSERT_EQ(got.height, expected.height);
        ASSERT_EQ(got.bpp, expected.bpp);
        const std::size_t size =
            std::size_t(got.width) * std::size_t(got.height) * std::size_t(got.bpp / 8);
        EXPECT_TRUE(std::equal(got.pixels.get(), got.pixels.get() + size, expected.pixels.get()));
        ++pictures;
    }
    EXPECT_GT(pictures, 10);
}

TEST(PackedFile, GivesSmallAndStrangeFilesBack)
{
    const Bytes plain = picture(2, 2, 1, 24, {1, 2, 3, 4, 5, 6});
    struct Case {
        const char* name;
        Bytes file;
        Bytes unpacked;
    };
    // By hand, since the formatter stumbles over lists in tables.
    // clang-format off
    const std::vector<Case> cases = {
        {"Empty", {}, {}},
        {"OneByte", {7}, {7}},
        {"Plain", plain, plain},
        {"RunLength", picture(10, 2, 1, 24, {0x81, 4, 5, 6}),
         picture(2, 2, 1, 24, {4, 5, 6, 4, 5, 6})},
        {"Grey", picture(3, 3, 1, 8, {0, 255, 0}), picture(3, 3, 1, 8, {0, 255, 0})},
        // No pictures that are known: as they are.
        {"CutRun", picture(10, 2, 1, 24, {0x81, 4, 5}), picture(10, 2, 1, 24, {0x81, 4, 5})},
        {"TooLong", picture(2, 1, 1, 24, {1, 2, 3, 4}), picture(2, 1, 1, 24, {1, 2, 3, 4})},
        {"Palette", picture(1, 2, 1, 8, {1, 2}), picture(1, 2, 1, 8, {1, 2})},
    };
    // clang-format on
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const auto again = unpack(pack(row.file));
        ASSERT_TRUE(again);
        EXPECT_EQ(*again, row.unpacked);
    }
}

TEST(PackedFile, NoticesDamage)
{
    const Bytes packed = pack(readFile("data/by.tga"));
    ASSERT_TRUE(unpack(packed));
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{8}, std::size_t{9}, packed.size() / 2}) {
        EXPECT_FALSE(unpack({packed.data(), length})) << length << " bytes";
    }
    for (std::size_t i = 0; i < packed.size() - 4; i += 7) {
        Bytes wrong = packed;
        wrong[i] ^= 0x10;
        EXPECT_FALSE(unpack(wrong)) << "byte " << i;
    }
}

TEST(PackedFile, GivesTheShowsMusicBack)
{
    const Bytes file = readFile("data/olvu.xm");
    Bytes packed = pack(file);
    EXPECT_LT(packed.size(), file.size() * 2 / 3);
    const auto again = unpack(packed);
    ASSERT_TRUE(again);
    EXPECT_EQ(*again, file);

    packed[13 + 3] = 0x7f; // its first sample would lie outside of it
    EXPECT_FALSE(unpack(packed));
}
