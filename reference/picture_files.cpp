#include "reference/picture_files.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace {

std::uint8_t low(unsigned value)
{
    return static_cast<std::uint8_t>(value);
}

std::uint8_t high(unsigned value)
{
    return static_cast<std::uint8_t>(value >> 8);
}

void append(Bytes& bytes, const std::uint8_t* first, std::size_t count)
{
    bytes.insert(bytes.end(), first, first + count);
}

void appendPalette(Bytes& bytes, unsigned entries)
{
    for (unsigned i = 0; i < entries; ++i) {
        bytes.insert(bytes.end(), {low(3 * i + 1), low(255 - i), low(7 * i)});
    }
}

void appendPackets(Bytes& bytes, const Bytes& pixels, std::size_t size)
{
    const auto equal = [&](std::size_t a, std::size_t b) {
        return std::equal(&pixels[a], &pixels[a] + size, &pixels[b]);
    };
    // How many pixels from `at` on, at most 128, have a neighbour behind them as `same` says.
    const auto stretch = [&](std::size_t at, bool same) {
        std::size_t next = at + size;
        while (next < pixels.size() && next < at + 128 * size && equal(next - size, next) == same) {
            next += size;
        }
        return (next - at) / size;
    };
    for (std::size_t at = 0; at < pixels.size();) {
        const std::size_t run = stretch(at, true);
        const std::size_t count = run > 1 ? run : stretch(at, false);
        bytes.push_back(static_cast<std::uint8_t>((run > 1 ? 128 : 0) + count - 1));
        append(bytes, &pixels[at], run > 1 ? size : count * size);
        at += count * size;
    }
}

} // namespace

Bytes makeTga(const TgaShape& shape, const Bytes& pixels)
{
    Bytes bytes = {low(shape.identificationLength),
                   low(shape.entries != 0 ? 1 : 0),
                   low(shape.type),
                   low(shape.firstEntry),
                   high(shape.firstEntry),
                   low(shape.entries),
                   high(shape.entries),
                   24,
                   1, // the origin's position, which no reader looks at
                   2,
                   3,
                   4,
                   low(shape.width),
                   high(shape.width),
                   low(shape.height),
                   high(shape.height),
                   low(shape.bits),
                   low(shape.descriptor)};
    bytes.resize(bytes.size() + shape.identificationLength, 0xee);
    appendPalette(bytes, shape.entries);
    if (shape.type >= 9) {
        appendPackets(bytes, pixels, (shape.bits + 7) / 8);
    } else {
        append(bytes, pixels.data(), pixels.size());
    }
    return bytes;
}

Bytes makeHsiRaw(unsigned width, unsigned height, unsigned colours, const Bytes& pixels)
{
    Bytes bytes = {'m', 'h', 'w', 1, 2, 3, 4, 5};
    for (const unsigned number : {width, height, colours}) {
        bytes.push_back(high(number));
        bytes.push_back(low(number));
    }
    bytes.resize(32, 0xee);
    appendPalette(bytes, colours);
    append(bytes, pixels.data(), pixels.size());
    return bytes;
}

Bytes makePixels(std::size_t count, std::size_t size, std::size_t run)
{
    std::mt19937 random{1};
    Bytes pixels(count * size);
    for (std::size_t at = 0; at < pixels.size(); at += size) {
        if (at / size % (run + 1) > 0 && run > 1) {
            std::copy_n(&pixels[at - size], size, &pixels[at]);
        } else {
            std::generate_n(&pixels[at], size,
                            [&] { return low(static_cast<unsigned>(random())); });
        }
    }
    return pixels;
}

TemporaryFile::TemporaryFile(const Bytes& bytes) : file_{std::tmpfile()}
{
    // An empty vector has no address to write from.
    const std::size_t count = bytes.size();
    if (file_ == nullptr ||
        (count > 0 && std::fwrite(bytes.data(), 1, count, file_.get()) != count) ||
        std::fflush(file_.get()) != 0) {
        throw std::runtime_error{"cannot write a temporary file"};
    }
    path_ = "/proc/self/fd/" + std::to_string(fileno(file_.get()));
}
