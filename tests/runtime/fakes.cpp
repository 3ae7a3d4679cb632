#include "tests/runtime/fakes.h"

#include <SDL.h>

std::uint32_t fakeTicks = 0;
FakeSound fakeSound;

Uint32 SDL_GetTicks()
{
    return fakeTicks;
}

namespace {

int handleTarget = 0; // its address is the fake module's handle

signed char note(const std::string& call)
{
    fakeSound.calls.push_back(call);
    return 1;
}

std::string handleName(const FMUSIC_MODULE* module)
{
    return module == reinterpret_cast<FMUSIC_MODULE*>(&handleTarget) ? "song" : "stranger";
}

} // namespace

float FSOUND_GetVersion()
{
    return fakeSound.version;
}

signed char FSOUND_SetOutput(int output)
{
    return note("SetOutput " + std::to_string(output));
}

signed char FSOUND_SetDriver(int driver)
{
    return note("SetDriver " + std::to_string(driver));
}

signed char FSOUND_Init(int mixRateHz, int maxSoftwareChannels, unsigned int flags)
{
    note("Init " + std::to_string(mixRateHz) + " " + std::to_string(maxSoftwareChannels) + " " +
         std::to_string(flags));
    return fakeSound.initSucceeds ? 1 : 0;
}

int FSOUND_GetError()
{
    return fakeSound.error;
}

FMUSIC_MODULE* FMUSIC_LoadSong(const char* path)
{
    note(std::string("LoadSong ") + path);
    return fakeSound.loadSucceeds ? reinterpret_cast<FMUSIC_MODULE*>(&handleTarget) : nullptr;
}

signed char FMUSIC_SetMasterVolume(FMUSIC_MODULE* module, int volume)
{
    return note("SetMasterVolume " + handleName(module) + " " + std::to_string(volume));
}

signed char FMUSIC_SetZxxCallback(FMUSIC_MODULE* module, FMUSIC_CALLBACK callback)
{
    fakeSound.callback = callback;
    return note("SetZxxCallback " + handleName(module));
}

signed char FMUSIC_PlaySong(FMUSIC_MODULE* module)
{
    return note("PlaySong " + handleName(module));
}

signed char FMUSIC_SetOrder(FMUSIC_MODULE* module, int order)
{
    return note("SetOrder " + handleName(module) + " " + std::to_string(order));
}

signed char FMUSIC_StopSong(FMUSIC_MODULE* module)
{
    return note("StopSong " + handleName(module));
}

signed char FMUSIC_FreeSong(FMUSIC_MODULE* module)
{
    return note("FreeSong " + handleName(module));
}

void FSOUND_Close()
{
    note("Close");
}
