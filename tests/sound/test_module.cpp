#include "tests/sound/test_module.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string_view>
#include <unistd.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

void put(Bytes& out, std::size_t value, int size)
{
    for (int i = 0; i < size; ++i) {
        out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

void putText(Bytes& out, std::string_view text, std::size_t size)
{
    const std::size_t end = out.size() + size;
    out.insert(out.end(), text.begin(), text.end());
    out.resize(end);
}

void putCell(Bytes& out, const TestCell& cell, bool packed)
{
    const std::uint8_t instrument = cell.note != 0 ? 1 : 0;
    if (!packed) {
        out.insert(out.end(), {cell.note, instrument, 0, cell.effect, cell.parameter});
        return;
    }
    put(out,
        0x80U | (cell.note != 0 ? 3U : 0U) | (cell.effect != 0 ? 8U : 0U) |
            (cell.parameter != 0 ? 16U : 0U),
        1);
    for (const std::uint8_t field : {cell.note, instrument, cell.effect, cell.parameter}) {
        if (field != 0) {
            out.push_back(field);
        }
    }
}

void putPattern(Bytes& out, const TestModule& module, const TestPattern& pattern)
{
    Bytes cells;
    for (int row = 0; row < pattern.rows && !pattern.cells.empty(); ++row) {
        for (int channel = 0; channel < module.channels; ++channel) {
            const auto found = std::ranges::find_if(pattern.cells, [&](const TestCell& cell) {
                return cell.row == row && cell.channel == channel;
            });
            putCell(cells, found == pattern.cells.end() ? TestCell{} : *found, module.packed);
        }
    }
    const auto rows = static_cast<std::size_t>(pattern.rows);
    const bool byteRows = module.version == 0x0102;
    put(out, byteRows ? 8 : 9, 4);
    put(out, 0, 1);
    put(out, byteRows ? rows - 1 : rows, byteRows ? 1 : 2);
    put(out, cells.size(), 2);
    out.insert(out.end(), cells.begin(), cells.end());
}

void putInstrumentHeaders(Bytes& out)
{
    const std::size_t end = out.size() + kInstrumentHeaderBytes;
    put(out, kInstrumentHeaderBytes, 4);
    putText(out, "saw", 23);
    put(out, 1, 2);
    put(out, kSampleHeaderBytes, 4);
    out.resize(end);

    put(out, kSampleBytes, 4);
    put(out, 0, 4); // the loop: all of it
    put(out, kSampleBytes, 4);
    out.insert(out.end(), {64, 0, 1, 128, 0, 0}); // full volume, forward loop, centre
    putText(out, "saw", 22);
}

// Stored as differences: a rise of 8 each, wrapping round.
void putSample(Bytes& out)
{
    out.insert(out.end(), kSampleBytes, 8);
}

class TemporaryFolder {
public:
    TemporaryFolder() { std::filesystem::create_directories(path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path); }

    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("kso_sound_" + std::to_string(::getpid()));
};

} // namespace

std::vector<std::uint8_t> TestModule::build() const
{
    Bytes out;
    putText(out, "Extended Module: ", 17);
    putText(out, "test", 20);
    put(out, 0x1A, 1);
    putText(out, tracker, 20);
    put(out, version, 2);
    put(out, 276, 4);
    for (const std::size_t value :
         {orders.size(), std::size_t{0}, static_cast<std::size_t>(channels), patterns.size(),
          static_cast<std::size_t>(instruments), std::size_t{1}, static_cast<std::size_t>(speed),
          std::size_t{125}}) {
        put(out, value, 2);
    }
    out.insert(out.end(), orders.begin(), orders.end());
    out.resize(kPatternsAt);

    // Before version 0x0104 the order is headers, patterns, samples.
    const bool patternsFirst = version >= 0x0104;
    for (int i = 0; i < instruments && !patternsFirst; ++i) {
        putInstrumentHeaders(out);
    }
    for (const TestPattern& pattern : patterns) {
        putPattern(out, *this, pattern);
    }
    for (int i = 0; i < instruments; ++i) {
        if (patternsFirst) {
            putInstrumentHeaders(out);
        }
        putSample(out);
    }
    return out;
}

TestModule TestModule::withoutZxx() const
{
    TestModule plain = *this;
    for (TestPattern& pattern : plain.patterns) {
        for (TestCell& cell : pattern.cells) {
            if (cell.effect == kZxx) {
                cell.effect = 0;
                cell.parameter = 0;
            }
        }
    }
    return plain;
}

std::string writeTemporary(const std::string& name, const std::vector<std::uint8_t>& bytes)
{
    static const TemporaryFolder folder;
    const std::filesystem::path path = folder.path / name;
    std::ofstream file(path, std::ios::binary);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path.string();
}
