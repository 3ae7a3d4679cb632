#include "image/bitmap.h"

#include "base/fatal.h"
#include "image/hsi_raw_reader.h"
#include "image/pixel_conversion.h"
#include "image/tga_reader.h"

#include <GL/gl.h>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

constexpr std::uint32_t kEmpty = 0;
constexpr std::uint32_t kHoldsPixels = 5;

// A 32-bit pixel as one word, whatever the machine's byte order.
constexpr std::uint32_t pixelWord(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a)
{
    return std::bit_cast<std::uint32_t>(std::array<std::uint8_t, 4>{r, g, b, a});
}

constexpr std::uint32_t kColourMask = pixelWord(255, 255, 255, 0);

// Four 32-bit pixels, which fill a register. Comparing two of these gives a word for each pixel,
// all ones if equal and all zeros if not.
using FourPixels [[gnu::vector_size(16)]] = std::uint32_t;

// Replaces every 32-bit pixel by what `change` makes of it, four at a time.
template <class Change>
void changePixels(std::uint8_t* pixels, std::size_t count, Change change)
{
    constexpr std::size_t kBytes = sizeof(FourPixels);
    const auto changeSome = [&](std::uint8_t* first, std::size_t bytes) {
        FourPixels four{};
        std::memcpy(&four, first, bytes);
        four = change(four);
        std::memcpy(first, &four, bytes);
    };

    const std::size_t size = 4 * count;
    std::size_t done = 0;
    for (; size - done >= 4 * kBytes; done += 4 * kBytes) {
        changeSome(pixels + done, kBytes);
        changeSome(pixels + done + kBytes, kBytes);
        changeSome(pixels + done + 2 * kBytes, kBytes);
        changeSome(pixels + done + 3 * kBytes, kBytes);
    }
    for (; size - done >= kBytes; done += kBytes) {
        changeSome(pixels + done, kBytes);
    }
    if (done < size) {
        changeSome(pixels + done, size - done);
    }
}

// 255 * alpha, truncated; 0 for NaN and for numbers that do not fit into 64 bits.
std::uint8_t alphaByte(float alpha)
{
    constexpr double kTooLarge = 0x1p63;
    const double value = 255.0 * alpha;
    if (!(std::fabs(value) < kTooLarge)) {
        return 0;
    }
    return static_cast<std::uint8_t>(static_cast<std::int64_t>(value));
}

GLenum uploadFormat(std::uint32_t bpp)
{
    return bpp == 24 ? GL_RGB : GL_RGBA;
}

[[noreturn]] void refuse16BitTexture()
{
    fatal(stderr, 0, "\nError! 16bpp textures not yet supported!!\n\n");
}

} // namespace

void Bitmap::create(unsigned width, unsigned height, unsigned bpp)
{
    if (bpp != 8 && bpp != 16 && bpp != 24 && bpp != 32) {
        fatal(stderr, 0, "\n\nError! Wrong bpp for the picture!!\n\n");
    }

    pixels_.reset();
    pixels_ = allocatePixels(width, height, bpp / 8);
    if (pixels_ == nullptr) {
        fatal(stderr, 0, "\nError allocating memory for Bitmap!!\n");
    }

    width_ = width;
    height_ = height;
    bpp_ = bpp;
    state_ = kHoldsPixels;
}

void Bitmap::load(const char* path, unsigned bpp)
{
    pixels_.reset();
    LoadedImage image;
    readTga(path, image);
    takeOver(std::move(image), bpp);
}

void Bitmap::loadHsiRaw(const char* path, unsigned bpp)
{
    pixels_.reset();
    LoadedImage image;
    readHsiRaw(path, image);
    takeOver(std::move(image), bpp);
}

void Bitmap::takeOver(LoadedImage image, unsigned bpp)
{
    width_ = static_cast<std::uint32_t>(image.width);
    height_ = static_cast<std::uint32_t>(image.height);
    bpp_ = bpp;
    if (image.bpp == 8) {
        palette_ = image.palette;
    }

    if (static_cast<unsigned>(image.bpp) == bpp) {
        pixels_ = std::move(image.pixels);
    } else {
        pixels_ = allocatePixels(width_, height_, bpp / 8);
        if (pixels_ == nullptr) {
            fatal(stderr, 0, "\n\nError allocating memory!!\n\n");
        }
        convertFrom(image.pixels.get(), image.bpp);
    }
    state_ = kHoldsPixels;
}

void Bitmap::convertFrom(const std::uint8_t* source, int sourceBpp)
{
    if (pixelBytes(sourceBpp) == 0) {
        fatal(stderr, 0, "\n\nError! Not a valid bitdepth for the source!!\n\n");
    }
    if (bpp_ == 8 && sourceBpp != 8) {
        fatal(stderr, 0, "\nError! Can't convert to 8bpp!!\n\n");
    }
    if (bpp_ != 16 && bpp_ != 24 && bpp_ != 32) {
        fatal(stderr, 0, "\n\nError! Not supported destination-bpp!!\n\n");
    }
    convertPixels(source, sourceBpp, pixels_.get(), static_cast<int>(bpp_),
                  std::size_t{width_} * height_, palette_);
}

void Bitmap::release()
{
    if (state_ == kEmpty) {
        return;
    }
    pixels_.reset();
    state_ = kEmpty;
    width_ = 0;
    height_ = 0;
    bpp_ = 0;
    textureName_ = 0;
}

void Bitmap::setAlpha(float alpha)
{
    const std::uint32_t alphaWord = pixelWord(0, 0, 0, alphaByte(alpha));
    changePixels(pixels_.get(), std::size_t{width_} * height_,
                 [=](FourPixels four) { return (four & kColourMask) | alphaWord; });
}

void Bitmap::setColourKeyAlpha(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a)
{
    const std::uint32_t key = pixelWord(r, g, b, 0);
    const std::uint32_t alphaWord = pixelWord(0, 0, 0, a);
    const std::size_t count = std::size_t{width_} * height_;
    const auto alphaOfKey = [=](FourPixels four) {
        return FourPixels((four & kColourMask) == key) & ~kColourMask;
    };
    if (a == 0) { // the only case in the show, and one operation less
        changePixels(pixels_.get(), count,
                     [=](FourPixels four) { return four & ~alphaOfKey(four); });
    } else {
        changePixels(pixels_.get(), count, [=](FourPixels four) {
            const FourPixels change = alphaOfKey(four);
            return (four & ~change) | (change & alphaWord);
        });
    }
}

void Bitmap::clear()
{
    const bool clearable = bpp_ == 8 || bpp_ == 16 || bpp_ == 24 || bpp_ == 32;
    if (clearable) {
        std::memset(pixels_.get(), 0, std::size_t{width_} * height_ * (bpp_ / 8));
    }
}

void Bitmap::makeTexture()
{
    if ((state_ & kHoldsPixels) != kHoldsPixels) {
        fatal(stderr, 0, "\nError! Bitmap not in use yet!! Cannot generate GL-texture!\n");
    }

    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);

    if (bpp_ == 8) {
        fatal(stderr, 0, "\nError! 8bpp textures NOT supported as a GL-texture!!\n");
    }
    if (bpp_ == 16) {
        refuse16BitTexture();
    }
    if (bpp_ == 24 || bpp_ == 32) {
        const GLenum format = uploadFormat(bpp_);
        glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), static_cast<GLsizei>(width_),
                     static_cast<GLsizei>(height_), 0, format, GL_UNSIGNED_BYTE, pixels_.get());
    }
    textureName_ = name;
}

void Bitmap::updateTextureAs(unsigned texture) const
{
    if (bpp_ == 16) {
        refuse16BitTexture();
    }
    if (bpp_ == 24 || bpp_ == 32) {
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, static_cast<GLsizei>(width_),
                        static_cast<GLsizei>(height_), uploadFormat(bpp_), GL_UNSIGNED_BYTE,
                        pixels_.get());
    }
}
