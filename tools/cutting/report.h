#pragma once

#include "tools/cutting/frame_values.h"
#include "tools/cutting/moments.h"
#include "tools/sync_script/script.h"
#include "virtual/timing.h"

#include <iosfwd>
#include <span>

// Writes what a film of the show measures: first what falls short of what is wanted, then a line
// for each measure. The film begins with the show; what lies outside the part is left out.
void writeReport(std::ostream& stream, const Script& script, const Part& part, FrameRate rate,
                 std::span<const FrameValues> film);
