#pragma once

#include "sound/fsound.h"
#include "sound/sound_error.h"
#include "sound/xm_patterns.h"

#include <cstdint>
#include <libopenmpt/libopenmpt.hpp>
#include <memory>
#include <ostream>
#include <span>
#include <vector>

// A loaded module and how it is played. Once it plays, the mixer's lock guards all of it.
// NOLINTNEXTLINE(readability-identifier-naming): the library's own name
struct FMUSIC_MODULE {
    FMUSIC_MODULE(std::span<const std::uint8_t> file, std::vector<ZxxCell> cells);

    std::ostream noLog{nullptr}; // where the player reports, as long as it lives; drops everything
    openmpt::module player;
    std::vector<ZxxCell> zxxCells; // by pattern and row

    FMUSIC_CALLBACK callback = nullptr;
    float gain = 1.0F;

    // The row whose effects were performed last; order -1 if there was none since the start or the
    // latest jump.
    int order = -1;
    int row = 0;
};

// Reads the XM file at `path` into `module`, which stays as it is if there is an error.
SoundError loadModule(const char* path, std::unique_ptr<FMUSIC_MODULE>& module);
