#pragma once

#include "art/music/score/score.h"
#include "tools/sync_script/script.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

// Writes the script as a table with a line for each cue, under the name of its section if there are
// sections, and then its shots.
void writeText(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections);

// Writes a line for each shot, by sections, and how long they are. A shot belongs to the section
// that it begins in.
void writeShots(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections);

// "3:07.680"
std::string clockTime(std::int64_t sample);
