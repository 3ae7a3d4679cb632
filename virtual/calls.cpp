// SDL's calls and the C library's time(), as far as the show makes them: when these are loaded
// before the real ones (LD_PRELOAD), they take their place.

#include "virtual/text.h"
#include "virtual/virtual_world.h"

#include <SDL.h>
#include <ctime>
#include <optional>
#include <string>

namespace {

bool tell(const std::string& call)
{
    return world().sink().call(call);
}

int statusOf(bool succeeds)
{
    return succeeds ? 0 : -1;
}

} // namespace

// The libraries' headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

std::time_t time(std::time_t* now)
{
    tell("time");
    const std::time_t answer = world().timeOfDay();
    if (now != nullptr) {
        *now = answer;
    }
    return answer;
}

int SDL_Init(Uint32 flags)
{
    return statusOf(tell(text("SDL_Init 0x%x", flags)));
}

void SDL_Quit()
{
    tell("SDL_Quit");
}

// No driver has a name here.
char* SDL_VideoDriverName(char* /*name*/, int /*size*/)
{
    return nullptr;
}

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    return statusOf(tell(text("SDL_GL_SetAttribute %d %d", static_cast<int>(attribute), value)));
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int bitsPerPixel, Uint32 flags)
{
    static SDL_Surface surface{};
    const bool opens =
        tell(text("SDL_SetVideoMode %d %d %d 0x%x", width, height, bitsPerPixel, flags)) &&
        world().sink().openWindow(width, height);
    return opens ? &surface : nullptr;
}

int SDL_ShowCursor(int toggle)
{
    tell(text("SDL_ShowCursor %d", toggle));
    return toggle;
}

void SDL_GL_SwapBuffers()
{
    tell("SDL_GL_SwapBuffers");
    world().swap();
}

int SDL_PollEvent(SDL_Event* event)
{
    const std::optional<Uint8> type = world().nextEvent();
    if (type) {
        event->type = *type;
    }
    return type ? 1 : 0;
}

Uint32 SDL_GetTicks()
{
    return world().look();
}

void SDL_Delay(Uint32 milliseconds)
{
    tell(text("SDL_Delay %u", milliseconds));
    world().sleep(milliseconds);
}

int SDL_OpenAudio(SDL_AudioSpec* desired, SDL_AudioSpec* obtained)
{
    const bool opens =
        tell(text("SDL_OpenAudio %d %d %d %d%s", desired->freq, desired->format, desired->channels,
                  desired->samples, obtained != nullptr ? " obtained" : "")) &&
        world().openAudio(*desired);
    return statusOf(opens);
}

void SDL_PauseAudio(int pause)
{
    tell(text("SDL_PauseAudio %d", pause));
    world().pauseAudio(pause != 0);
}

void SDL_CloseAudio()
{
    tell("SDL_CloseAudio");
    world().closeAudio();
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
