#include "image/picture_file.h"

#include "base/fatal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// How many pixels a file may lack: this number, which is more than any of the show's pictures has,
// or this multiple of the pixels that it holds, whichever is larger. So a damaged header cannot ask
// for all of the machine's memory.
constexpr auto kMaxMissingPixels = std::uint64_t{2048} * 2048;
constexpr std::uint64_t kMaxMissingMultiple = 63;

// Opens a pipe without waiting for a writer; the constructor then refuses it.
int openToRead(const char* path)
{
    return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

} // namespace

PictureFile::PictureFile(const char* path) : file_{openToRead(path)}
{
    struct stat status {};
    if (fstat(file_, &status) != 0 || !S_ISREG(status.st_mode)) {
        if (file_ >= 0) {
            close(file_);
        }
        fatal(stderr, 0, "\n\nError opening %s!\n\n", path);
    }
    size_ = status.st_size;
}

PictureFile::~PictureFile()
{
    close(file_);
}

std::size_t PictureFile::readSome(std::uint8_t* destination, std::size_t count)
{
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = pread(file_, destination + done, count - done, position_);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
        position_ += got;
    }
    return done;
}

void PictureFile::read(std::uint8_t* destination, std::size_t count)
{
    const std::size_t done = readSome(destination, count);
    std::memset(destination + done, 0, count - done);
}

PixelBuffer allocatePicture(std::int32_t width, std::int32_t height, std::size_t bytesPerPixel,
                            std::uint64_t supplied)
{
    const auto w = static_cast<std::uint32_t>(width);
    const auto h = static_cast<std::uint32_t>(height);
    const std::uint64_t pixels = std::uint64_t{w} * h;
    if (pixels > supplied &&
        pixels - supplied > std::max(kMaxMissingPixels, kMaxMissingMultiple * supplied)) {
        return nullptr;
    }
    return allocatePixels(w, h, static_cast<std::uint32_t>(bytesPerPixel));
}
