// What the scenes ask of the pictures that they show, held against the committed files.
#include "image/tga_reader.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <vector>

namespace {

enum Border { kFree, kBlack, kKeyed, kRowsMeet, kAllMeet };

struct Row {
    const char* file;
    std::array<int, 3> shape;         // width, height, bits per pixel
    std::array<double, 2> mean, peak; // the bounds of the pixels' brightest channels
    Border border;
};

// clang-format off
constexpr Row kRows[] = {
    {"additiivinen_aivo.tga",    { 256,  256, 24}, {  0,  10}, {  0,  51}, kBlack},
    {"by.tga",                   {  64,   32, 32}, {  0, 255}, {240, 255}, kKeyed},
    {"end.tga",                  { 256,   64, 32}, {  0, 255}, {240, 255}, kKeyed},
    {"greet.tga",                { 256,  512, 32}, {  0, 255}, {240, 255}, kFree},
    {"koira.tga",                { 512,  256, 24}, {  0, 255}, {200, 255}, kFree},
    {"kso.tga",                  { 256,  128, 32}, {  0, 255}, {240, 255}, kKeyed},
    {"muljumap.tga",             {1024, 1024,  8}, { 55,  95}, {255, 255}, kAllMeet},
    {"oranssipallotexture2.tga", { 256,  256, 24}, {  0, 255}, {240, 255}, kAllMeet},
    {"outohalko4_tumma.tga",     { 512,  512, 24}, { 31,  51}, {  0, 165}, kAllMeet},
    {"quentalogo.tga",           { 256,  128, 32}, {  0, 255}, {240, 255}, kKeyed},
    {"texture2.tga",             { 256,  256, 24}, {  0, 255}, {200, 255}, kRowsMeet},
    {"the.tga",                  { 128,   32, 32}, {  0, 255}, {240, 255}, kKeyed},
    {"tokapart_tausta.tga",      {1024,  512, 24}, { 20,  60}, {  0, 220}, kFree},
    {"valo.tga",                 { 256,  256, 24}, {105, 125}, {255, 255}, kAllMeet},
    {"velmorant.tga",            { 512,   64, 32}, {  0, 255}, {240, 255}, kKeyed},
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
        (isLast ? wrapped : inside) +=
            std::abs(*here - here[isLast ? stride - count * stride : stride]);
    }
    return 2 * wrapped * (count - 1) <= 3 * inside;
}

TEST(Pictures, KeepToTheirScenesBudgets)
{
    for (const auto& [file, shape, mean, peak, border] : kRows) {
        SCOPED_TRACE(file);
        LoadedImage picture;
        readTga((std::string("data/") + file).c_str(), picture);
        ASSERT_EQ((std::array{picture.width, picture.height, picture.bpp}), shape);
        const auto [width, height, bpp] = shape;
        std::vector<int> light;
        int brightBorder = 0;
        int hardEdges = 0; // where the dark ground is missing between letters and what is keyed out
        for (int i = 0; i < width * height; ++i) {
            const std::uint8_t* pixel = picture.pixels.get() + std::ptrdiff_t{i} * (bpp / 8);
            light.push_back(*std::max_element(pixel, pixel + std::min(bpp / 8, 3)));
            const bool isBorder = i % width % (width - 1) == 0 || i / width % (height - 1) == 0;
            brightBorder += isBorder && light.back() > 0 ? 1 : 0;
            const auto [low, high] = std::minmax(
                {light.back(), light.end()[i > 0 ? -2 : -1], light.end()[-1 - std::min(i, width)]});
            hardEdges += low == 0 && high > 64 ? 1 : 0;
        }
        const double average = std::accumulate(light.begin(), light.end(), 0.0) / width / height;
        const double highest = *std::max_element(light.begin(), light.end());
        EXPECT_TRUE(mean[0] <= average && average <= mean[1]) << average;
        EXPECT_TRUE(peak[0] <= highest && highest <= peak[1]) << highest;
        EXPECT_TRUE(brightBorder == 0 || (border != kBlack && border != kKeyed));
        EXPECT_TRUE(hardEdges == 0 || border != kKeyed);
        EXPECT_TRUE(border < kRowsMeet || meet(light.data(), height, width, width, 1));
        EXPECT_TRUE(border < kAllMeet || meet(light.data(), width, 1, height, width));
    }
}

} // namespace
