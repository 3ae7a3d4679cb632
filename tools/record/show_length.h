#pragma once

#include "tools/record/record_options.h"

#include <cstdint>
#include <optional>

// How many samples the show will last, by its module: from the order that it starts with to the
// effect that ends it. None when the module does not tell.
std::optional<std::uint64_t> expectedSamples(const RecordOptions& options);
