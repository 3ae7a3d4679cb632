// What the scenes ask of the pictures that they show, held against the committed files.
#include "image/tga_reader.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <tuple>
#include <vector>

namespace {

enum Border { kFree, kBlack, kKeyed, kRowsMeet, kAllMeet };
constexpr int kHardStep = 64; // of brightness, from black

struct Row {
    const char* file;
    int width, height, bpp;
    double mean[2], peak[2]; // the bounds of the pixels' brightest channels
    Border border;
};

// clang-format off
constexpr Row kRows[] = {
    {"additiivinen_aivo.tga",     512,  512, 24, {  5,   8}, { 40,  51}, kBlack},
    {"by.tga",                     64,   32, 32, { 10,  16}, {240, 255}, kKeyed},
    {"end.tga",                   256,   64, 32, { 18,  26}, {240, 255}, kKeyed},
    {"greet.tga",                 512, 1024, 32, { 95, 130}, {240, 255}, kFree},
    {"koira.tga",                1024,  512, 24, { 55,  85}, {200, 255}, kBlack},
    {"kso.tga",                   256,  128, 32, { 17,  26}, {240, 255}, kKeyed},
    {"muljumap.tga",             1024, 1024,  8, { 75,  95}, {255, 255}, kAllMeet},
    {"oranssipallotexture2.tga",  512,  512, 24, {125, 165}, {240, 255}, kAllMeet},
    {"outohalko4_tumma.tga",     1024,  512, 24, { 36,  48}, {105, 150}, kAllMeet},
    {"quentalogo.tga",            256,  128, 32, {  8,  13}, {240, 255}, kKeyed},
    {"texture2.tga",              256,  256, 24, { 74, 105}, {200, 255}, kRowsMeet},
    {"the.tga",                   128,   32, 32, {  7,  10}, {240, 255}, kKeyed},
    {"tokapart_tausta.tga",      1024,  512, 24, { 43,  64}, {240, 255}, kFree},
    {"valo.tga",                  256,  256, 24, {105, 125}, {255, 255}, kAllMeet},
    {"velmorant.tga",             512,   64, 32, { 25,  37}, {240, 255}, kKeyed},
};
// clang-format on

// Whether the last of `count` lines differs from the first about as much as neighbours do.
bool meet(const int* light, long count, long stride, long length, long step)
{
    long inside = 0;
    long wrapped = 0;
    for (long i = 0; i < count * length; ++i) {
        const int* here = light + i / length * stride + i % length * step;
        const bool isLast = i / length == count - 1;
        (isLast ? wrapped : inside) += std::abs(*here - here[(isLast ? 1 - count : 1) * stride]);
    }
    return 2 * wrapped * (count - 1) <= 3 * inside;
}

TEST(Pictures, KeepToTheirScenesBudgets)
{
    for (const auto& [file, width, height, bpp, mean, peak, border] : kRows) {
        SCOPED_TRACE(file);
        LoadedImage image;
        readTga((std::string("data/") + file).c_str(), image);
        ASSERT_EQ(std::tie(image.width, image.height, image.bpp), std::tie(width, height, bpp));
        std::vector<int> light;
        int brightBorder = 0;
        int hardEdges = 0; // where the dark ground is missing between letters and what is keyed out
        for (int i = 0; i < width * height; ++i) {
            const std::uint8_t* pixel = image.pixels.get() + std::ptrdiff_t{i} * (bpp / 8);
            light.push_back(*std::max_element(pixel, pixel + std::min(bpp / 8, 3)));
            const bool isBorder = i % width % (width - 1) == 0 || i / width % (height - 1) == 0;
            brightBorder += isBorder && light.back() > 0 ? 1 : 0;
            const auto [low, high] = std::minmax(
                {light.back(), light.end()[i > 0 ? -2 : -1], light.end()[-1 - std::min(i, width)]});
            hardEdges += low == 0 && high > kHardStep ? 1 : 0;
        }
        const double average = std::accumulate(light.begin(), light.end(), 0.0) / width / height;
        const double highest = *std::max_element(light.begin(), light.end());
        EXPECT_TRUE(mean[0] <= average && average <= mean[1]) << average;
        EXPECT_TRUE(peak[0] <= highest && highest <= peak[1]) << highest;
        EXPECT_TRUE(brightBorder == 0 || border == kFree || border >= kRowsMeet);
        EXPECT_TRUE(hardEdges == 0 || border != kKeyed);
        EXPECT_TRUE(border < kRowsMeet || meet(light.data(), height, width, width, 1));
        EXPECT_TRUE(border < kAllMeet || meet(light.data(), width, 1, height, width));
    }
}

TEST(Data, IsSmallEnoughToCarryAlong)
{
    std::uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::directory_iterator("data")) {
        bytes += file.file_size();
    }
    EXPECT_LT(bytes, std::uintmax_t{12} << 20U);
}

} // namespace
