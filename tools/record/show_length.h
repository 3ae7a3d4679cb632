#pragma once

#include "tools/record/record_options.h"

#include <optional>

// Roughly how many seconds the show will last, by its module: from the scene that it starts with to
// the effect that ends it. None when the module does not tell.
std::optional<double> expectedSeconds(const RecordOptions& options);
