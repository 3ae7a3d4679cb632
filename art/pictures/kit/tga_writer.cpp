#include "art/pictures/kit/tga_writer.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kLongestPacket = 128;
constexpr int kTrueColourRunLength = 10;
constexpr int kGreyRunLength = 11;

// The one place where display values become bytes: clamped to 0 ... 1 and rounded to the nearest.
std::uint8_t toByte(float value)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255.0F));
}

Bytes header(int type, int width, int height, int depth)
{
    const auto low = [](int value) { return static_cast<std::uint8_t>(value & 0xff); };
    const auto high = [](int value) { return static_cast<std::uint8_t>(value >> 8); };
    const int topFirst = 0x20;
    const int alphaBits = depth == 32 ? 8 : 0;
    Bytes bytes(18, 0);
    bytes[2] = low(type);
    bytes[12] = low(width);
    bytes[13] = high(width);
    bytes[14] = low(height);
    bytes[15] = high(height);
    bytes[16] = low(depth);
    bytes[17] = low(topFirst | alphaBits);
    return bytes;
}

// One row: runs of two or more equal pixels, and packets of pixels as they are between them.
void appendRow(Bytes& file, const Bytes& row, int pixelBytes)
{
    const int pixels = static_cast<int>(row.size()) / pixelBytes;
    const auto first = [&](int i) { return row.begin() + std::ptrdiff_t{i} * pixelBytes; };
    const auto isLikeNext = [&](int i) {
        return i + 1 < pixels && std::equal(first(i), first(i + 1), first(i + 1));
    };
    int i = 0;
    while (i < pixels) {
        int count = 1;
        const bool isRun = isLikeNext(i);
        while (count < kLongestPacket && i + count < pixels &&
               (isRun ? isLikeNext(i + count - 1) : !isLikeNext(i + count))) {
            ++count;
        }
        file.push_back(static_cast<std::uint8_t>((isRun ? 0x80 : 0) | (count - 1)));
        file.insert(file.end(), first(i), first(i + (isRun ? 1 : count)));
        i += count;
    }
}

void save(const Bytes& bytes, const std::string& path)
{
    std::ofstream file(path, std::ios::binary);
    for (const std::uint8_t byte : bytes) {
        file.put(static_cast<char>(byte));
    }
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace

void writeTga(const Picture& picture, int depth, const std::string& path)
{
    assert(depth == 24 || depth == 32);
    Bytes file = header(kTrueColourRunLength, picture.width(), picture.height(), depth);
    for (int y = 0; y < picture.height(); ++y) {
        Bytes row;
        for (int x = 0; x < picture.width(); ++x) {
            const glm::vec4 pixel = picture.at(x, y);
            row.insert(row.end(), {toByte(pixel.b), toByte(pixel.g), toByte(pixel.r)});
            if (depth == 32) {
                row.push_back(toByte(pixel.a));
            }
        }
        appendRow(file, row, depth / 8);
    }
    save(file, path);
}

void writeTga(const GreyPicture& picture, const std::string& path)
{
    Bytes file = header(kGreyRunLength, picture.width(), picture.height(), 8);
    for (int y = 0; y < picture.height(); ++y) {
        Bytes row;
        for (int x = 0; x < picture.width(); ++x) {
            row.push_back(toByte(picture.at(x, y)));
        }
        appendRow(file, row, 1);
    }
    save(file, path);
}
