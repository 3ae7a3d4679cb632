#include "image/tga_reader.h"

#include "image/picture_file.h"
#include "image/pixel_conversion.h"
#include "runtime/fatal.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
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

// Exchanges red and blue, bytes 0 and 2, of each pixel.
void swapRedBlue(std::uint8_t* pixels, std::size_t count, int depth)
{
    if (depth == 24) {
        for (std::size_t i = 0; i < count; ++i) {
            std::swap(pixels[3 * i], pixels[3 * i + 2]);
        }
    }
    if (depth == 32) {
        constexpr auto kMoved =
            std::bit_cast<std::uint32_t>(std::array<std::uint8_t, 4>{255, 0, 255, 0});
        for (std::size_t i = 0; i < count; ++i) {
            std::uint32_t word = 0;
            std::memcpy(&word, pixels + 4 * i, 4);
            word = (word & ~kMoved) | std::rotl(word & kMoved, 16);
            std::memcpy(pixels + 4 * i, &word, 4);
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

// Turns a row around, whole pixels of 1 to 4 bytes.
void mirrorRow(std::uint8_t* row, std::size_t width, std::size_t pixelSize)
{
    constexpr std::array kMirrors = {mirrorPixels<1>, mirrorPixels<2>, mirrorPixels<3>,
                                     mirrorPixels<4>};
    kMirrors[pixelSize - 1](row, width);
}

void readColourMap(PictureFile& file, const TgaHeader& header,
                   std::array<PaletteEntry, 256>& palette)
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
    swapRedBlue(entries, header.entryCount, 24);
}

void requireImage(const TgaHeader& header, const char* path)
{
    if (header.imageType == 0) {
        fatal(stderr, 0, "\n\nNo image data in %s\n\n", path);
    }
    const unsigned plainType = header.imageType & ~8U;
    if (plainType < 1 || plainType > 3 || header.imageType > 11) {
        fatal(stderr, 0, "\n\nError! Unsupported image type in %s!!\n\n", path);
    }
    if (header.width < 0 || header.height < 0) {
        fatal(stderr, 0, "\n\nError! Negative size in %s!!\n\n", path);
    }
    if (pixelBytes(header.depth) == 0) {
        fatal(stderr, 0, "\n\nError! Not a valid bitdepth for the source!!\n\n");
    }
}

// Run-length packets: a byte h, then (h & 127) + 1 pixels, or one for all of them if bit 7 is set.
class RunLengthReader {
public:
    RunLengthReader(PictureFile& file, std::size_t pixelSize) : file_{file}, pixelSize_{pixelSize}
    {
    }

    // Decodes the next `count` pixels. A packet may reach into those that are read after them.
    void readRlePixels(std::uint8_t* destination, std::size_t count)
    {
        while (count > 0) {
            if (left_ == 0) {
                openPacket();
            }
            const std::size_t some = std::min(count, left_);
            const std::size_t bytes = some * pixelSize_;
            if (isRun_) {
                repeatPixel(destination, bytes);
            } else {
                std::memcpy(destination, pixels_, bytes);
                pixels_ += bytes;
            }
            destination += bytes;
            count -= some;
            left_ -= some;
        }
    }

private:
    static constexpr std::size_t kBlock = 32768;
    static constexpr std::size_t kLargestPacket = 1 + 128 * 4;

    void openPacket()
    {
        if (next_ + kLargestPacket > end_ && !atEnd_) {
            refill();
        }
        if (next_ >= end_) { // zeros without end
            isRun_ = true;
            left_ = std::numeric_limits<std::size_t>::max();
            pixels_ = block_.data() + end_;
            return;
        }
        const unsigned head = block_[next_];
        isRun_ = (head & 128U) != 0;
        left_ = (head & 127U) + 1;
        pixels_ = block_.data() + next_ + 1;
        next_ += 1 + (isRun_ ? 1 : left_) * pixelSize_;
    }

    // Moves the block's rest to its front and reads on behind it. Behind the file's end there are
    // zeros, enough for a packet that was cut short.
    void refill()
    {
        const std::size_t rest = end_ - next_;
        std::memmove(block_.data(), block_.data() + next_, rest);
        next_ = 0;
        end_ = rest + file_.readSome(block_.data() + rest, kBlock - rest);
        atEnd_ = end_ < kBlock;
        std::memset(block_.data() + end_, 0, kLargestPacket);
    }

    void repeatPixel(std::uint8_t* destination, std::size_t bytes) const
    {
        std::memcpy(destination, pixels_, pixelSize_);
        for (std::size_t done = pixelSize_; done < bytes;) {
            const std::size_t some = std::min(done, bytes - done);
            std::memcpy(destination + done, destination, some);
            done += some;
        }
    }

    PictureFile& file_;
    std::size_t pixelSize_;
    bool isRun_ = false;
    bool atEnd_ = false;
    std::size_t left_ = 0;                 // pixels of the packet that are still to come
    const std::uint8_t* pixels_ = nullptr; // the packet's next pixel, or its only one
    std::size_t next_ = 0;                 // where the next packet begins
    std::size_t end_ = 0;                  // where the file's bytes end
    // Not initialised: what refill() brings is read, nothing else.
    std::array<std::uint8_t, kBlock + kLargestPacket> block_;
};

// Fills the palette of a grey picture.
void makeGreyRamp(std::array<PaletteEntry, 256>& palette)
{
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i].fill(static_cast<std::uint8_t>(i));
    }
}

// Rows are read straight to where they belong, in groups that are small enough to be still in the
// processor's cache when their bytes are put right.
void readPixels(PictureFile& file, const TgaHeader& header, std::uint8_t* pixels)
{
    constexpr std::size_t kGroupBytes = 131072;

    const auto width = static_cast<std::size_t>(header.width);
    const auto height = static_cast<std::size_t>(header.height);
    const std::size_t pixelSize = pixelBytes(header.depth);
    const std::size_t rowBytes = width * pixelSize;
    const std::size_t groupRows = kGroupBytes / std::max<std::size_t>(rowBytes, 1) + 1;

    RunLengthReader packets{file, pixelSize};
    std::size_t rows = 0;
    for (std::size_t r = 0; r < height; r += rows) {
        rows = std::min(groupRows, height - r);
        std::uint8_t* group = pixels + (header.topDown ? r : height - r - rows) * rowBytes;
        const auto rowAt = [&](std::size_t i) { // the i-th of the group in the file
            return group + (header.topDown ? i : rows - 1 - i) * rowBytes;
        };

        if (header.isRunLength()) {
            for (std::size_t i = 0; i < rows; ++i) {
                packets.readRlePixels(rowAt(i), width);
            }
        } else {
            file.readRows(rowAt(0), rowBytes, rows, !header.topDown);
        }
        for (std::size_t i = 0; header.rightToLeft && i < rows; ++i) {
            mirrorRow(rowAt(i), width, pixelSize);
        }
        swapRedBlue(group, rows * width, header.depth);
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
