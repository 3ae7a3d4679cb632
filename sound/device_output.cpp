#include "sound/device_output.h"

#include <SDL.h>
#include <cstddef>
#include <cstdint>

namespace {

void feedDevice(void* mixer, Uint8* stream, int length)
{
    // SDL's buffers are aligned for the format that was asked for, and hold whole audio frames.
    auto* const samples = reinterpret_cast<std::int16_t*>(stream);
    static_cast<Mixer*>(mixer)->mix(
        {samples, static_cast<std::size_t>(length) / sizeof(std::int16_t)});
}

} // namespace

// SDL_OpenAudio also starts SDL's audio subsystem. Without a second argument it converts our format
// to whatever the device plays.
std::unique_ptr<Output> DeviceOutput::open(Mixer& mixer)
{
    SDL_AudioSpec wanted{};
    wanted.freq = kMixRateHz;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = kMixChannels;
    wanted.samples = kBlockFrames;
    wanted.callback = feedDevice;
    wanted.userdata = &mixer;
    if (SDL_OpenAudio(&wanted, nullptr) != 0) {
        return nullptr;
    }
    SDL_PauseAudio(0);
    return std::unique_ptr<Output>(new DeviceOutput);
}

DeviceOutput::~DeviceOutput()
{
    SDL_CloseAudio();
}
