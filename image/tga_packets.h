// The run-length packets of a TGA file. A packet is a byte h and then (h & 127) + 1 pixels or, if
// bit 7 of h is set, one pixel that stands for all of them.
#pragma once

#include "image/picture_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

class TgaPackets {
public:
    // Pixels are written in larger pieces, so up to this many bytes after the last one are
    // overwritten.
    static constexpr std::size_t kSlack = 32;

    explicit TgaPackets(PictureFile& file) : file_{file} {}

    // Decodes the next `count` pixels, which must have the same size in every call. A packet may go
    // on in the next call. Pixels past the end of the file are zeros.
    template <std::size_t kPixelSize>
    void readRlePixels(std::uint8_t* destination, std::size_t count)
    {
        while (count > 0) {
            if (left_ == 0) {
                openPacket(kPixelSize);
            }
            const std::size_t some = std::min(count, left_);
            if (isRun_) {
                repeatPixel<kPixelSize>(destination, some);
            } else {
                copyPixels(destination, some * kPixelSize);
            }
            destination += some * kPixelSize;
            count -= some;
            left_ -= some;
        }
    }

private:
    static constexpr std::size_t kBlock = 32768;
    static constexpr std::size_t kRegister = 16;
    static constexpr std::size_t kLargestPacket = 1 + 128 * 4;

    void openPacket(std::size_t pixelSize)
    {
        if (next_ + kLargestPacket > end_ && !atEnd_) {
            refill();
        }
        if (next_ >= end_) {
            isRun_ = true;
            left_ = std::numeric_limits<std::size_t>::max();
            pixels_ = block_.data() + end_; // zeros
            return;
        }
        const unsigned head = block_[next_];
        isRun_ = (head & 128U) != 0;
        left_ = (head & 127U) + 1;
        pixels_ = block_.data() + next_ + 1;
        next_ += 1 + (isRun_ ? 1 : left_) * pixelSize;
    }

    // Moves the rest of the block to its front and fills it up from the file. After the file's last
    // byte come zeros, enough for a packet that was cut short.
    void refill()
    {
        const std::size_t rest = end_ - next_;
        std::memmove(block_.data(), block_.data() + next_, rest);
        next_ = 0;
        end_ = rest + file_.readSome(block_.data() + rest, kBlock - rest);
        atEnd_ = end_ < kBlock;
        std::memset(block_.data() + end_, 0, kLargestPacket + kSlack);
    }

    // Writes four bytes for each of the first pixels, and a register full of pixels at a time for
    // the others of a longer run; each write overwrites what the one before wrote too much. The
    // first pixels are always all written, since that is faster than counting them.
    template <std::size_t kPixelSize>
    void repeatPixel(std::uint8_t* destination, std::size_t count) const
    {
        constexpr std::size_t kWhole = kRegister / kPixelSize; // pixels in a register
        constexpr std::size_t kFirst = kWhole + 1;             // that fill it

        std::array<std::uint8_t, 4> pixel;
        std::memcpy(pixel.data(), pixels_, pixel.size());
        for (std::size_t i = 0; i < kFirst; ++i) {
            std::memcpy(destination + kPixelSize * i, pixel.data(), pixel.size());
        }
        if (count > kFirst) {
            std::array<std::uint8_t, kRegister> pixels;
            std::memcpy(pixels.data(), destination, kRegister);
            for (std::size_t i = kWhole; i < count; i += kWhole) {
                std::memcpy(destination + kPixelSize * i, pixels.data(), kRegister);
            }
        }
    }

    void copyPixels(std::uint8_t* destination, std::size_t bytes)
    {
        for (std::size_t i = 0; i < bytes; i += kRegister) {
            std::memcpy(destination + i, pixels_ + i, kRegister);
        }
        pixels_ += bytes;
    }

    PictureFile& file_;
    bool isRun_ = false;
    bool atEnd_ = false;
    std::size_t left_ = 0;                 // pixels of the packet that are still to come
    const std::uint8_t* pixels_ = nullptr; // the packet's next pixel, or its only one
    std::size_t next_ = 0;                 // where the next packet begins
    std::size_t end_ = 0;                  // where the file's bytes end
    // Not initialised: only what refill() has written is read.
    std::array<std::uint8_t, kBlock + kLargestPacket + kSlack> block_;
};
