#pragma once

#include "sound/sound_error.h"

#include <cstdint>
#include <span>
#include <vector>

// A Zxx effect and the place in the module where it stands.
struct ZxxCell {
    std::uint16_t pattern = 0;
    std::uint16_t row = 0;
    std::uint8_t parameter = 0;

    bool operator==(const ZxxCell&) const = default;
};

// Empties every cell of the effect Zxx in the bytes of an XM file, so that whoever plays them
// afterwards hears nothing of it, and puts what stood there into `cells`: by pattern and row, and
// within a row in channel order. Nothing else in the file changes.
//
// The walk covers the whole file: patterns, instrument headers, sample headers and the beginning
// of every sample's data have to be there, and only the last sample may end early. Other files get
// unknownFormat (not an XM file), unknownVersion or unreadableFile, with `file` half done.
SoundError takeZxxCells(std::span<std::uint8_t> file, std::vector<ZxxCell>& cells);
