// The file of a picture, read once from start to end.
//
// Reading never fails: past the end of the file it gives zeros.
#pragma once

#include "image/pixels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

class PictureFile {
public:
    // Ends the process with "\n\nError opening %s!\n\n" if the file does not exist, may not be read
    // or is not a regular file, like a directory or a pipe.
    explicit PictureFile(const char* path);
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;
    ~PictureFile();

    void read(std::uint8_t* destination, std::size_t count);

    // Reads at most `count` bytes and returns how many there were.
    std::size_t readSome(std::uint8_t* destination, std::size_t count);

    void skip(std::size_t count) { position_ += static_cast<std::int64_t>(count); }

    // Bytes from the current position to the end.
    [[nodiscard]] std::uint64_t remaining() const
    {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(size_ - position_, 0));
    }

private:
    int file_;
    std::int64_t size_ = 0;
    std::int64_t position_ = 0;
};

// Allocates a picture of which the file can supply at most `supplied` pixels. Empty if there is no
// memory, or if the picture is huge and the file has less than a 64th of it.
PixelBuffer allocatePicture(std::int32_t width, std::int32_t height, std::size_t bytesPerPixel,
                            std::uint64_t supplied);
