#include "tests/show/fake_ticks.h"

#include <SDL.h>

std::uint32_t fakeTicks = 0;

Uint32 SDL_GetTicks()
{
    return fakeTicks;
}
