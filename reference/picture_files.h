// Picture files for tests and measurements, made in memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct TgaShape {
    unsigned type = 2; // 1, 2, 3; 9, 10, 11 encode the pixels
    unsigned width = 0;
    unsigned height = 0;
    unsigned bits = 24;      // per pixel
    unsigned descriptor = 0; // attribute bits and origin
    unsigned identificationLength = 0;
    unsigned firstEntry = 0;
    unsigned entries = 0; // of the colour map; none leaves it out
};

// A file of `pixels`, in the file's own order and layout. Palette entries are made up. Runs of two
// and more equal pixels are encoded as such, whatever row they are in.
Bytes makeTga(const TgaShape& shape, const Bytes& pixels);

// An 8-bit picture where there are colours, a 24-bit one where there are none.
Bytes makeHsiRaw(unsigned width, unsigned height, unsigned colours, const Bytes& pixels);

// `count` pixels of `size` bytes: every one by chance, but a run of `run` equal ones each time.
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
