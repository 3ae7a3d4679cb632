// A picture's file, read once from its first byte to its last.
//
// Reading never fails: behind its end a file counts as zeros.
#pragma once

#include "image/pixels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

class PictureFile {
public:
    // Dies with "\n\nError opening %s!\n\n" where there is no such file, where it may not be read,
    // and where it is none: a directory or a pipe.
    explicit PictureFile(const char* path);
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;
    ~PictureFile();

    void read(std::uint8_t* destination, std::size_t count);

    // Reads what is left, but at most `count` bytes, and returns how many they were.
    std::size_t readSome(std::uint8_t* destination, std::size_t count);

    void skip(std::size_t count) { position_ += static_cast<std::int64_t>(count); }

    // Bytes from here to the end.
    [[nodiscard]] std::uint64_t remaining() const
    {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(size_ - position_, 0));
    }

private:
    int file_;
    std::int64_t size_ = 0;
    std::int64_t position_ = 0;
};

// Memory for a picture of which the file can supply at most `supplied` pixels. Empty when there is
// none and, before any of it is touched, when all but a 64th of a huge picture is missing.
PixelBuffer allocatePicture(std::int32_t width, std::int32_t height, std::size_t bytesPerPixel,
                            std::uint64_t supplied);
