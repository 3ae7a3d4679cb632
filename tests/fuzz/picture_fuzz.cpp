// Feeds files to one of Bitmap's loaders.
//
// The linker turns the reader's calls of open, fstat, pread and close into those below (--wrap),
// which know one file, in memory: asking the kernel would take most of the time.
#include "tests/fuzz/picture_fuzz.h"

#include "base/fatal.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::array<unsigned, kDepthChoices> kDepths = {8, 15, 16, 24, 32, 32, 0, 12};

constexpr int kFile = 1000000;      // no descriptor that a process gets
constexpr std::size_t kHeader = 32; // bytes, or fewer

struct MemoryFile {
    std::array<std::uint8_t, 65536 + kHeader> bytes;
    std::size_t size;
};
MemoryFile memoryFile;

// Large pictures take long and show little that is new, so inputs may ask for at most 15 x 15
// pixels, or for so many that they are refused.
void limitSize(std::uint8_t* file)
{
    const std::size_t high = kFuzzedLoader.highByteFirst ? 0 : 1;
    std::uint8_t* width = file + kFuzzedLoader.sizeAt;
    std::uint8_t* height = width + 2;
    if (width[high] < 64 || height[high] < 64) {
        for (std::uint8_t* number : {width, height}) {
            number[high] = 0;
            number[1 - high] &= 15;
        }
    }
}

// Reads every byte that the bitmap says it has.
void touch(const Bitmap& bitmap)
{
    const std::size_t count = std::size_t{bitmap.getWidth()} * bitmap.getHeight();
    const std::size_t bytes = count * pixelBytes(static_cast<int>(bitmap.getBpp()));
    const std::uint8_t* pixels = bitmap.getPixels();
    std::uint64_t words = 0;
    std::size_t i = 0;
    for (; bytes - i >= 8; i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, pixels + i, 8);
        words += word;
    }
    for (; i < bytes; ++i) {
        words += pixels[i];
    }
    [[maybe_unused]] const volatile std::uint64_t sum = words;
}

// What the readers' fatal() throws here, so that everything is released on the way back to the next
// input.
struct FatalError {};

} // namespace

void fatal(std::FILE* /*stream*/, int /*status*/, const char* /*format*/, ...)
{
    throw FatalError{};
}

extern "C" {
// The linker and the library that makes the inputs give these names.
// NOLINTBEGIN(readability-identifier-naming)
int __real_fstat(int file, struct stat* status);
ssize_t __real_pread(int file, void* destination, size_t count, off_t offset);
int __real_close(int file);

int __wrap_open(const char* /*path*/, int /*flags*/, ...)
{
    return kFile;
}

int __wrap_fstat(int file, struct stat* status)
{
    if (file != kFile) {
        return __real_fstat(file, status);
    }
    *status = {};
    status->st_mode = S_IFREG;
    status->st_size = static_cast<off_t>(memoryFile.size);
    return 0;
}

ssize_t __wrap_pread(int file, void* destination, size_t count, off_t offset)
{
    if (file != kFile) {
        return __real_pread(file, destination, count, offset);
    }
    const auto from = std::min(static_cast<std::size_t>(offset), memoryFile.size);
    const std::size_t some = std::min(count, memoryFile.size - from);
    std::memcpy(destination, memoryFile.bytes.data() + from, some);
    return static_cast<ssize_t>(some);
}

int __wrap_close(int file)
{
    return file == kFile ? 0 : __real_close(file);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    memoryFile.size = std::min(size - 1, memoryFile.bytes.size() - kHeader);
    std::copy_n(data + 1, memoryFile.size, memoryFile.bytes.begin());
    std::fill_n(memoryFile.bytes.begin() + memoryFile.size, kHeader, 0);
    limitSize(memoryFile.bytes.data());

    try {
        Bitmap bitmap;
        (bitmap.*kFuzzedLoader.load)("picture", kDepths[data[0] % kDepths.size()]);
        touch(bitmap);
    } catch (const FatalError&) {
        return 0;
    }
    return 0;
}
// NOLINTEND(readability-identifier-naming)
} // extern "C"
