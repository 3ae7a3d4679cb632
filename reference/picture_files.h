// Makers of picture files for tests and benchmarks: good files in memory, which a test may then
// spoil.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// What a TGA file's header says.
struct TgaShape {
    unsigned type = 2; // 1 palette, 2 colours, 3 grey; 9, 10 and 11 the same, run-length encoded
    unsigned width = 0;
    unsigned height = 0;
    unsigned bits = 24;      // per pixel
    unsigned descriptor = 0; // attribute bits and origin
    unsigned identificationLength = 0;
    unsigned firstEntry = 0; // of the palette
    unsigned entries = 0;    // 0 for a file without a palette
};

// A TGA file of `pixels`, which are in the file's own order and layout. Its palette is made up.
// Runs of two and more equal pixels are encoded as such, across rows too.
Bytes makeTga(const TgaShape& shape, const Bytes& pixels);

// An HSI raw file of `pixels`: 8-bit with a made-up palette of so many colours, 24-bit with none.
Bytes makeHsiRaw(unsigned width, unsigned height, unsigned colours, const Bytes& pixels);

// `count` pixels of `size` bytes, the same each time: random ones, each with `run` copies behind
// it. Fewer than two copies are left out.
Bytes makePixels(std::size_t count, std::size_t size, std::size_t run);

// A file without a name, but with a path, that is gone with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const Bytes& bytes);
    [[nodiscard]] const char* path() const { return path_.c_str(); }

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, CloseFile> file_;
    std::string path_;
};
