#pragma once

#include "tools/record/record_options.h"

#include <cstdint>
#include <optional>

// How many audio frames the show will last, according to its module: from the order that it starts
// with to the effect that ends it. None if the module cannot be read or does not end the show.
std::optional<std::uint64_t> expectedSamples(const RecordOptions& options);

// The frame before which the recording will end, as far as that can be told.
std::optional<std::uint64_t> expectedEnd(const RecordOptions& options);
