// Small modules for tests, with patterns written as text.
#pragma once

#include "art/music/xm.h"

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// Places within a file that writeXm makes, and the sizes of what follows the patterns there: one
// instrument of one sample.
constexpr int kPatternsAt = 60 + 276;
constexpr int kInstrumentBytes = 263;
constexpr int kSampleHeaderBytes = 40;
constexpr int kSampleBytes = 128;

// A module of four channels that plays its patterns in turn. In their text a bar ends a pattern and
// a slash a row; a cell is an effect as trackers show it ("Z7F") or "...", and those at a row's end
// may be left out. Every channel plays a saw from the first row on: a filter on it would be heard.
XmModule makeModule(int speed, const std::string& text);

// The same text without its Zxx effects.
std::string withoutZxx(std::string text);

// The module's file in the layout of `version`, with packed cells or with all five bytes of each.
// Its patterns must be so small that a byte tells the length of their cells.
Bytes writeAs(const XmModule& module, int version, bool packed);
