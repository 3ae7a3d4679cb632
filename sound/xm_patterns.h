#pragma once

#include "sound/sound_error.h"

#include <cstdint>
#include <span>
#include <vector>

// A Zxx effect and its place in the module.
struct ZxxCell {
    std::uint16_t pattern = 0;
    std::uint16_t row = 0;
    std::uint8_t parameter = 0;

    bool operator==(const ZxxCell&) const = default;
};

// Takes every Zxx effect out of the bytes of an XM file, so that the player does not see it, and
// puts it into `cells`: by pattern and row, and within a row in channel order. Nothing else in the
// file changes.
//
// Reads up to the end of the patterns; whether what lies behind them is good is for the player to
// say. For other files it returns unknownFormat (not an XM file), unknownVersion or unreadableFile
// (it ends in a pattern or before), and may have changed a part of `file`.
SoundError takeZxxCells(std::span<std::uint8_t> file, std::vector<ZxxCell>& cells);
