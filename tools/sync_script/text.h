#pragma once

#include "art/music/score/score.h"
#include "tools/sync_script/script.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

// Writes the script as a table with a line for each cue, under the name of its section if there are
// sections.
void writeText(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections);

// "3:07.680"
std::string clockTime(std::int64_t sample);
