#include "image/tga_reader.h"

#include "base/fatal.h"
#include "image/byte_shuffle.h"
#include "image/picture_file.h"
#include "image/pixel_conversion.h"
#include "image/tga_packets.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

struct TgaHeader {
    unsigned identificationLength;
    bool hasColourMap;
    unsigned imageType;
    unsigned firstEntry;
    unsigned entryCount;
    unsigned entryBits;
    int width;
    int height;
    int depth; // 15 for 5-5-5
    bool rightToLeft;
    bool topDown;

    [[nodiscard]] bool isRunLength() const { return imageType >= 9; }
    [[nodiscard]] bool isGrey() const { return imageType == 3 || imageType == 11; }
};

unsigned readLe16(std::uint8_t low, std::uint8_t high)
{
    return low + 256U * high;
}

int depthOf(unsigned bits, unsigned attributeBits)
{
    if (bits != 16 || attributeBits == 0) {
        return static_cast<int>(bits);
    }
    if (attributeBits != 1) {
        fatal(stderr, 0, "\n\nError! Unsupported number of bits for alpha-channel!!\n\n");
    }
    return 15;
}

TgaHeader readHeader(PictureFile& file)
{
    std::array<std::uint8_t, 18> bytes{};
    file.read(bytes.data(), bytes.size());
    return {
        .identificationLength = bytes[0],
        .hasColourMap = bytes[1] != 0,
        .imageType = bytes[2],
        .firstEntry = readLe16(bytes[3], bytes[4]),
        .entryCount = readLe16(bytes[5], bytes[6]),
        .entryBits = bytes[7],
        .width = static_cast<std::int16_t>(readLe16(bytes[12], bytes[13])),
        .height = static_cast<std::int16_t>(readLe16(bytes[14], bytes[15])),
        .depth = depthOf(bytes[16], bytes[17] & 15U),
        .rightToLeft = (bytes[17] & 16U) != 0,
        .topDown = (bytes[17] & 32U) != 0,
    };
}

// Sixteen bytes hold five pixels of three bytes and the first byte of the next.
constexpr ByteShuffle kSwap24 = {
    {2,  1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15},
    {},
    15, 15
};
constexpr ByteShuffle kSwap32 = {
    {2,  1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15},
    {},
    16, 16
};

// Copies pixels and exchanges the red and blue bytes of those that have 3 or 4 bytes.
void swapRedBlue(const std::uint8_t* source, std::uint8_t* destination, std::size_t count,
                 std::size_t pixelSize)
{
    const std::size_t bytes = count * pixelSize;
    if (pixelSize < 3) {
        std::memcpy(destination, source, bytes);
        return;
    }
    const ByteShuffle& shuffle = pixelSize == 3 ? kSwap24 : kSwap32;
    const std::size_t groups = shuffleBytes(shuffle, source, bytes, destination, bytes);
    for (std::size_t i = groups * shuffle.sourceStep; i < bytes; i += pixelSize) {
        destination[i] = source[i + 2];
        destination[i + 1] = source[i + 1];
        destination[i + 2] = source[i];
        if (pixelSize == 4) {
            destination[i + 3] = source[i + 3];
        }
    }
}

template <std::size_t kPixelSize>
void mirrorPixels(std::uint8_t* row, std::size_t width)
{
    std::uint8_t* left = row;
    std::uint8_t* right = row + width * kPixelSize;
    for (std::size_t i = 0; i < width / 2; ++i) {
        right -= kPixelSize;
        std::swap_ranges(left, left + kPixelSize, right);
        left += kPixelSize;
    }
}

// Reverses the order of a row's pixels, which have 1 to 4 bytes each.
void mirrorRow(std::uint8_t* row, std::size_t width, std::size_t pixelSize)
{
    constexpr std::array kMirrors = {mirrorPixels<1>, mirrorPixels<2>, mirrorPixels<3>,
                                     mirrorPixels<4>};
    kMirrors[pixelSize - 1](row, width);
}

void readColourMap(PictureFile& file, const TgaHeader& header, Palette& palette)
{
    if (header.entryCount > 256) {
        fatal(stderr, 0, "\n\nError! Too big palette in TARGA!!\n");
    }
    if (header.firstEntry + header.entryCount > 256) {
        fatal(stderr, 0, "\n\nError! Too big palette in TARGA!!\n\n");
    }
    if (header.entryBits != 24) {
        fatal(stderr, 0, "\n\nError! Unsupported paletteformat!\n\n");
    }
    std::uint8_t* entries = palette.data()->data() + 3 * std::size_t{header.firstEntry};
    file.read(entries, 3 * std::size_t{header.entryCount});
    for (std::size_t i = 0; i < header.entryCount; ++i) {
        std::swap(entries[3 * i], entries[3 * i + 2]);
    }
}

void requireImage(const TgaHeader& header, const char* path)
{
    if (header.imageType == 0) {
        fatal(stderr, 0, "\n\nNo image data in %s\n\n", path);
    }
    const unsigned plainType = header.imageType & ~8U;
    if (plainType < 1 || plainType > 3) {
        fatal(stderr, 0, "\n\nError! Unsupported image type in %s!!\n\n", path);
    }
    if (header.width < 0 || header.height < 0) {
        fatal(stderr, 0, "\n\nError! Negative size in %s!!\n\n", path);
    }
    if (pixelBytes(header.depth) == 0) {
        fatal(stderr, 0, "\n\nError! Not a valid bitdepth for the source!!\n\n");
    }
}

// Fills the palette of a grey picture.
void makeGreyRamp(Palette& palette)
{
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i].fill(static_cast<std::uint8_t>(i));
    }
}

// The pixels of a file, run-length encoded or plain, one after the other.
class TgaPixels {
public:
    TgaPixels(PictureFile& file, bool isRunLength)
        : file_{file}, packets_{file}, isRunLength_{isRunLength}
    {
    }

    // May overwrite up to TgaPackets::kSlack bytes after the last pixel.
    void read(std::uint8_t* destination, std::size_t count, std::size_t pixelSize)
    {
        if (!isRunLength_) {
            file_.read(destination, count * pixelSize);
            return;
        }
        constexpr std::array kReaders = {
            &TgaPackets::readRlePixels<1>, &TgaPackets::readRlePixels<2>,
            &TgaPackets::readRlePixels<3>, &TgaPackets::readRlePixels<4>};
        (packets_.*kReaders[pixelSize - 1])(destination, count);
    }

private:
    PictureFile& file_;
    TgaPackets packets_;
    bool isRunLength_;
};

// Reads a few rows at a time into memory that stays in the processor's cache, and copies each from
// there to its place in the picture.
void readPixels(PictureFile& file, const TgaHeader& header, std::uint8_t* pixels)
{
    constexpr std::size_t kWidestRow = std::size_t{32767} * 4;
    constexpr std::size_t kBlock = 65536;

    const auto width = static_cast<std::size_t>(header.width);
    const auto height = static_cast<std::size_t>(header.height);
    const std::size_t pixelSize = pixelBytes(header.depth);
    const std::size_t rowBytes = width * pixelSize;
    const std::size_t blockRows =
        std::max<std::size_t>(kBlock / std::max<std::size_t>(rowBytes, 1), 1);

    TgaPixels source{file, header.isRunLength()};
    std::array<std::uint8_t, kWidestRow + TgaPackets::kSlack> block;
    for (std::size_t r = 0; r < height; ++r) {
        std::uint8_t* row = block.data() + r % blockRows * rowBytes;
        if (r % blockRows == 0) {
            source.read(row, std::min(blockRows, height - r) * width, pixelSize);
        }
        if (header.rightToLeft) {
            mirrorRow(row, width, pixelSize);
        }
        const std::size_t place = header.topDown ? r : height - 1 - r;
        swapRedBlue(row, pixels + place * rowBytes, width, pixelSize);
    }
}

} // namespace

void readTga(const char* path, LoadedImage& image)
{
    PictureFile file{path};
    const TgaHeader header = readHeader(file);
    file.skip(header.identificationLength);
    if (header.hasColourMap) {
        readColourMap(file, header, image.palette);
    }
    requireImage(header, path);
    if (header.isGrey()) {
        makeGreyRamp(image.palette);
    }

    const std::size_t pixelSize = pixelBytes(header.depth);
    const std::uint64_t supplied = header.isRunLength() ? file.remaining() / (1 + pixelSize) * 128
                                                        : file.remaining() / pixelSize;
    image.pixels = allocatePicture(header.width, header.height, pixelSize, supplied);
    if (image.pixels == nullptr) {
        fatal(stderr, 0, "\n\nError allocating memory for %s!\n\n", path);
    }
    image.width = header.width;
    image.height = header.height;
    image.bpp = header.depth;
    readPixels(file, header, image.pixels.get());
}
