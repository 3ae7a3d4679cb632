// Stand-ins for SDL's clock and the sound library: the test program's own definitions take the
// place of the libraries' ones.
#pragma once

#include "sound/fsound.h"

#include <cstdint>
#include <string>
#include <vector>

// What SDL_GetTicks returns, milliseconds.
extern std::uint32_t fakeTicks;

// What the sound library does and what was asked of it.
struct FakeSound {
    float version = 3.3F;
    bool initSucceeds = true;
    bool loadSucceeds = true;
    int error = 0;
    FMUSIC_CALLBACK callback = nullptr;
    std::vector<std::string> calls;
};
extern FakeSound fakeSound;
