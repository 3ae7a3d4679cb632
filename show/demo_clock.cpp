#include "show/demo_clock.h"

#include <SDL.h>

constinit DemoClock demoClock;

void DemoClock::start()
{
    startTicks_ = SDL_GetTicks();
    offset_ = 0.0F;
}

float DemoClock::seconds()
{
    lastTicks_ = SDL_GetTicks();
    const std::uint32_t elapsed = lastTicks_ - startTicks_;
    return static_cast<float>(elapsed / 1000.0) + offset_;
}
