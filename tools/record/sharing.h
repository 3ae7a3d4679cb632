#pragma once

#include "tools/record/record_options.h"

// Makes of --part the frames and the file of this part, and of --join the frames, the rate and the
// size of the parts that there are. Throws RecordError and UsageError.
void settleSharing(RecordOptions& options);
