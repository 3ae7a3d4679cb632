#include "tests/support/test_module.h"

#include <algorithm>
#include <sstream>

XmModule makeModule(int speed, const std::string& text)
{
    XmModule module;
    module.channels = 4;
    module.speed = speed;
    XmSample& saw = module.instruments.emplace_back().samples.emplace_back();
    for (; saw.loopLength < kSampleBytes / 2; ++saw.loopLength) {
        saw.data.push_back(static_cast<std::int16_t>(1000 * (saw.loopLength - 32)));
    }
    std::istringstream patterns(text);
    for (std::string rows; std::getline(patterns, rows, '|');) {
        module.orders.push_back(static_cast<std::uint8_t>(module.patterns.size()));
        const auto slashes = static_cast<int>(std::ranges::count(rows, '/'));
        XmPattern& pattern = module.patterns.emplace_back(slashes + 1, module.channels);
        std::istringstream words(rows);
        int row = 0;
        int channel = 0;
        for (std::string word; words >> word; ++channel) {
            if (word == "/") {
                ++row;
                channel = -1;
            } else if (word != "...") {
                XmCell& cell = pattern.at(row, channel);
                cell.effect = static_cast<std::uint8_t>(std::stoi(word.substr(0, 1), nullptr, 36));
                cell.parameter = static_cast<std::uint8_t>(std::stoi(word.substr(1), nullptr, 16));
            }
        }
    }
    for (int channel = 0; channel < module.channels; ++channel) {
        module.patterns[0].at(0, channel).note = kXmNoteC4;
        module.patterns[0].at(0, channel).instrument = 1;
    }
    return module;
}

std::string withoutZxx(std::string text)
{
    while (text.find('Z') != std::string::npos) {
        text.replace(text.find('Z'), 3, "...");
    }
    return text;
}

Bytes writeAs(const XmModule& module, int version, bool packed)
{
    const Bytes written = writeXm(module);
    auto at = written.begin() + kPatternsAt;
    Bytes file(written.begin(), at);
    file[58] = static_cast<std::uint8_t>(version);
    Bytes patterns;
    for (const XmPattern& pattern : module.patterns) {
        patterns.insert(patterns.end(), at, at + 7);
        if (version == 0x0102) { // a single byte for the rows, less one
            patterns.pop_back();
            --patterns.back();
            --patterns.end()[-6];
        }
        const auto packedCells = at + 9;
        at = packedCells + at[7];
        Bytes cells(packedCells, packed ? at : packedCells);
        for (int i = 0; i < pattern.rows() * module.channels && !packed; ++i) {
            const auto [note, instrument, volume, effect, parameter] =
                pattern.at(i / module.channels, i % module.channels);
            cells.insert(cells.end(), {note, instrument, volume, effect, parameter});
        }
        patterns.insert(patterns.end(), {static_cast<std::uint8_t>(cells.size()), 0});
        patterns.insert(patterns.end(), cells.begin(), cells.end());
    }
    // In older files the patterns stand between all headers and all samples.
    const auto split = at + (version < 0x0104 ? kInstrumentBytes + kSampleHeaderBytes : 0);
    file.insert(file.end(), at, split);
    file.insert(file.end(), patterns.begin(), patterns.end());
    file.insert(file.end(), split, written.end());
    return file;
}
