#pragma once

#include <cstdint>

// What SDL_GetTicks returns, milliseconds: the test program's own takes the place of SDL's.
extern std::uint32_t fakeTicks;
