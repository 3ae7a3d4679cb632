#include "reference/plain_picture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File openFile(const char* path)
{
    File file{std::fopen(path, "rb")};
    if (file == nullptr) {
        std::perror(path);
        std::exit(1);
    }
    return file;
}

std::size_t pixelSizeOf(int bpp)
{
    switch (bpp) {
    case 8:
        return 1;
    case 15:
    case 16:
        return 2;
    case 24:
        return 3;
    default:
        return 4;
    }
}

// What the file lacks is zeros.
void readBytes(std::uint8_t* destination, std::size_t count, std::FILE* file)
{
    const std::size_t got = std::fread(destination, 1, count, file);
    if (got < count) {
        std::memset(destination + got, 0, count - got);
    }
}

std::uint8_t readByte(std::FILE* file)
{
    const int byte = std::fgetc(file);
    return byte == EOF ? std::uint8_t{0} : static_cast<std::uint8_t>(byte);
}

void swapRedBlue(std::uint8_t* row, std::size_t width, int depth)
{
    const std::size_t size = pixelSizeOf(depth);
    if (size < 3) {
        return;
    }
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint8_t first = row[i * size];
        row[i * size] = row[i * size + 2];
        row[i * size + 2] = first;
    }
}

void mirrorRow(int depth, std::size_t width, const std::uint8_t* source, std::uint8_t* destination)
{
    const std::size_t size = pixelSizeOf(depth);
    for (std::size_t i = 0; i < width; ++i) {
        for (std::size_t byte = 0; byte < size; ++byte) {
            destination[(width - 1 - i) * size + byte] = source[i * size + byte];
        }
    }
}

void readRlePixels(std::uint8_t* destination, std::FILE* file, std::size_t count, int depth)
{
    const std::size_t size = pixelSizeOf(depth);
    std::size_t written = 0;
    while (written < count) {
        const unsigned head = readByte(file);
        const std::size_t length = std::min(std::size_t{head & 0x7f} + 1, count - written);
        if ((head & 0x80) != 0) {
            std::array<std::uint8_t, 4> pixel{};
            for (std::size_t byte = 0; byte < size; ++byte) {
                pixel[byte] = readByte(file);
            }
            for (std::size_t i = 0; i < length; ++i) {
                for (std::size_t byte = 0; byte < size; ++byte) {
                    *destination++ = pixel[byte];
                }
            }
        } else {
            for (std::size_t i = 0; i < length * size; ++i) {
                *destination++ = readByte(file);
            }
        }
        written += length;
    }
}

struct Colour {
    unsigned r;
    unsigned g;
    unsigned b;
};

Colour colourOfBytes(const std::uint8_t* pixel)
{
    return {pixel[0], pixel[1], pixel[2]};
}

template <std::size_t kSourceSize, class ColourOf>
void convertFrom(const std::uint8_t* source, std::uint8_t* destination, int bpp, std::size_t count,
                 ColourOf colourOf)
{
    if (bpp == 16) {
        for (std::size_t i = 0; i < count; ++i) {
            const auto [r, g, b] = colourOf(source + kSourceSize * i);
            const unsigned word = r >> 3 << 11 | g >> 2 << 5 | b >> 3;
            destination[2 * i] = static_cast<std::uint8_t>(word);
            destination[2 * i + 1] = static_cast<std::uint8_t>(word >> 8);
        }
        return;
    }
    const std::size_t size = bpp == 24 ? 3 : 4;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [r, g, b] = colourOf(source + kSourceSize * i);
        destination[size * i] = static_cast<std::uint8_t>(r);
        destination[size * i + 1] = static_cast<std::uint8_t>(g);
        destination[size * i + 2] = static_cast<std::uint8_t>(b);
        if (bpp == 32) {
            destination[4 * i + 3] = 255;
        }
    }
}

} // namespace

std::size_t PlainPicture::pixelCount() const
{
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

PlainPicture plainReadTga(const char* path)
{
    const File owner = openFile(path);
    std::FILE* file = owner.get();
    std::array<std::uint8_t, 18> header{};
    readBytes(header.data(), header.size(), file);
    const int type = header[2];
    const std::size_t first = std::size_t{header[3]} + std::size_t{256} * header[4];
    const std::size_t entries = std::size_t{header[5]} + std::size_t{256} * header[6];
    const unsigned descriptor = header[17];

    PlainPicture picture;
    picture.width = header[12] + 256 * header[13];
    picture.height = header[14] + 256 * header[15];
    picture.bpp = header[16] == 16 && (descriptor & 15) == 1 ? 15 : header[16];
    for (int i = 0; i < header[0]; ++i) {
        readByte(file);
    }
    for (std::size_t i = 0; header[1] != 0 && i < entries; ++i) {
        for (const std::size_t channel : {2U, 1U, 0U}) {
            picture.palette[3 * (first + i) + channel] = readByte(file);
        }
    }
    for (std::size_t i = 0; (type == 3 || type == 11) && i < picture.palette.size(); ++i) {
        picture.palette[i] = static_cast<std::uint8_t>(i / 3);
    }

    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    const std::size_t rowBytes = width * pixelSizeOf(picture.bpp);
    picture.pixels.resize(height * rowBytes);
    std::vector<std::uint8_t> readBuffer(height * rowBytes);
    std::vector<std::uint8_t> rowBuffer(rowBytes);
    if (type >= 9) {
        readRlePixels(readBuffer.data(), file, width * height, picture.bpp);
    }
    for (std::size_t r = 0; r < height; ++r) {
        std::uint8_t* row = readBuffer.data() + r * rowBytes;
        if (type < 9) {
            readBytes(row, rowBytes, file);
        }
        if ((descriptor & 16) != 0) {
            mirrorRow(picture.bpp, width, row, rowBuffer.data());
            row = rowBuffer.data();
        }
        swapRedBlue(row, width, picture.bpp);
        const std::size_t place = (descriptor & 32) != 0 ? r : height - 1 - r;
        std::copy_n(row, rowBytes, picture.pixels.data() + place * rowBytes);
    }
    return picture;
}

PlainPicture plainReadHsiRaw(const char* path)
{
    const File owner = openFile(path);
    std::FILE* file = owner.get();
    std::array<std::uint8_t, 32> header{};
    readBytes(header.data(), header.size(), file);
    PlainPicture picture;
    picture.width = 256 * header[8] + header[9];
    picture.height = 256 * header[10] + header[11];
    const std::size_t colours = std::size_t{256} * header[12] + std::size_t{header[13]};
    picture.bpp = colours == 0 ? 24 : 8;
    for (std::size_t i = 0; i < 3 * colours; ++i) {
        picture.palette[i] = readByte(file);
    }
    picture.pixels.resize(picture.pixelCount() * pixelSizeOf(picture.bpp));
    for (std::uint8_t& byte : picture.pixels) {
        byte = readByte(file);
    }
    return picture;
}

void plainConvertPixels(const std::uint8_t* source, int sourceBpp, std::uint8_t* destination,
                        int bpp, std::size_t count, const std::array<std::uint8_t, 768>& palette)
{
    switch (sourceBpp) {
    case 8:
        return convertFrom<1>(source, destination, bpp, count, [&](const std::uint8_t* pixel) {
            const std::size_t entry = 3 * std::size_t{*pixel};
            return Colour{palette[entry], palette[entry + 1], palette[entry + 2]};
        });
    case 15:
        return convertFrom<2>(source, destination, bpp, count, [](const std::uint8_t* pixel) {
            const unsigned word = pixel[0] + 256U * pixel[1];
            return Colour{(word >> 10 & 31) << 3, (word >> 5 & 31) << 3, (word & 31) << 3};
        });
    case 16:
        return convertFrom<2>(source, destination, bpp, count, [](const std::uint8_t* pixel) {
            const unsigned word = pixel[0] + 256U * pixel[1];
            return Colour{word >> 11 << 3, (word >> 5 & 63) << 2, (word & 31) << 3};
        });
    case 24:
        return convertFrom<3>(source, destination, bpp, count, colourOfBytes);
    default:
        return convertFrom<4>(source, destination, bpp, count, colourOfBytes);
    }
}

PlainPicture plainConvert(PlainPicture picture, int bpp)
{
    if (picture.bpp == bpp) {
        return picture;
    }
    PlainPicture converted;
    converted.palette = picture.palette;
    converted.width = picture.width;
    converted.height = picture.height;
    converted.bpp = bpp;
    converted.pixels.resize(converted.pixelCount() * pixelSizeOf(bpp));
    plainConvertPixels(picture.pixels.data(), picture.bpp, converted.pixels.data(), bpp,
                       converted.pixelCount(), picture.palette);
    return converted;
}
