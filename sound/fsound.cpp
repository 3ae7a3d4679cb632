#include "sound/fsound.h"

#include "sound/mixer.h"
#include "sound/module.h"
#include "sound/silent_output.h"
#include "sound/sound_error.h"

#include <SDL.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr float kVersion = 3.3F;
constexpr int kSilentOutput = 0;
constexpr int kFirstDriver = 0;
constexpr int kFullVolume = 256;

struct Sound {
    SoundError latestError = SoundError::none;
    bool silent = false; // as chosen for the next FSOUND_Init
    bool open = false;
    Mixer mixer;
    std::vector<std::unique_ptr<FMUSIC_MODULE>> modules; // every handle that was not freed
    std::optional<SilentOutput> silentOutput;

    Sound() = default;
    Sound(const Sound&) = delete;
    Sound(Sound&&) = delete;
    Sound& operator=(const Sound&) = delete;
    Sound& operator=(Sound&&) = delete;
    // A process may end in the middle of everything, with the mixer at work.
    ~Sound();
};

Sound sound;

signed char fail(SoundError error)
{
    sound.latestError = error;
    return 0;
}

bool isModule(const FMUSIC_MODULE* handle)
{
    return std::ranges::any_of(sound.modules,
                               [&](const auto& module) { return module.get() == handle; });
}

void feedDevice(void* /*userdata*/, Uint8* stream, int length)
{
    // SDL's buffers are aligned for the samples that were asked for, and hold whole frames.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    auto* const samples = reinterpret_cast<std::int16_t*>(stream);
    sound.mixer.mix({samples, static_cast<std::size_t>(length) / sizeof(std::int16_t)});
}

// SDL_OpenAudio brings up SDL's audio by itself, and with no format asked back it converts
// whatever the device plays.
bool openDevice()
{
    SDL_AudioSpec wanted{};
    wanted.freq = kMixRateHz;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = kMixChannels;
    wanted.samples = kBlockFrames;
    wanted.callback = feedDevice;
    if (SDL_OpenAudio(&wanted, nullptr) != 0) {
        return false;
    }
    SDL_PauseAudio(0);
    return true;
}

Sound::~Sound()
{
    FSOUND_Close();
}

} // namespace

float FSOUND_GetVersion()
{
    return kVersion;
}

signed char FSOUND_SetOutput(int output)
{
    if (sound.open) {
        return fail(SoundError::alreadyInitialised);
    }
    if (output != kSilentOutput) {
        return fail(SoundError::invalidParameter);
    }
    sound.silent = true;
    return 1;
}

signed char FSOUND_SetDriver(int driver)
{
    if (sound.open) {
        return fail(SoundError::alreadyInitialised);
    }
    return driver == kFirstDriver ? 1 : fail(SoundError::invalidParameter);
}

signed char FSOUND_Init(int mixRateHz, int /*maxSoftwareChannels*/, unsigned int /*flags*/)
{
    if (sound.open) {
        return fail(SoundError::alreadyInitialised);
    }
    if (mixRateHz != kMixRateHz) {
        return fail(SoundError::invalidParameter);
    }
    if (sound.silent) {
        sound.silentOutput.emplace(sound.mixer);
    } else if (!openDevice()) {
        return fail(SoundError::noOutputDevice);
    }
    sound.open = true;
    return 1;
}

int FSOUND_GetError()
{
    return static_cast<int>(sound.latestError);
}

FMUSIC_MODULE* FMUSIC_LoadSong(const char* path)
{
    if (!sound.open) {
        fail(SoundError::notInitialised);
        return nullptr;
    }
    if (path == nullptr) {
        fail(SoundError::invalidParameter);
        return nullptr;
    }
    std::unique_ptr<FMUSIC_MODULE> module;
    if (const SoundError error = loadModule(path, module); error != SoundError::none) {
        fail(error);
        return nullptr;
    }
    return sound.modules.emplace_back(std::move(module)).get();
}

signed char FMUSIC_SetMasterVolume(FMUSIC_MODULE* module, int volume)
{
    if (!isModule(module) || volume < 0 || volume > kFullVolume) {
        return fail(SoundError::invalidParameter);
    }
    sound.mixer.setGain(*module, static_cast<float>(volume) / kFullVolume);
    return 1;
}

signed char FMUSIC_SetZxxCallback(FMUSIC_MODULE* module, FMUSIC_CALLBACK callback)
{
    if (!isModule(module)) {
        return fail(SoundError::invalidParameter);
    }
    sound.mixer.setCallback(*module, callback);
    return 1;
}

signed char FMUSIC_PlaySong(FMUSIC_MODULE* module)
{
    if (!sound.open) {
        return fail(SoundError::notInitialised);
    }
    if (!isModule(module)) {
        return fail(SoundError::invalidParameter);
    }
    sound.mixer.play(*module);
    return 1;
}

signed char FMUSIC_SetOrder(FMUSIC_MODULE* module, int order)
{
    if (!isModule(module) || !sound.mixer.jump(*module, order)) {
        return fail(SoundError::invalidParameter);
    }
    return 1;
}

signed char FMUSIC_StopSong(FMUSIC_MODULE* module)
{
    if (!isModule(module)) {
        return fail(SoundError::invalidParameter);
    }
    sound.mixer.stop(*module);
    return 1;
}

signed char FMUSIC_FreeSong(FMUSIC_MODULE* module)
{
    if (!isModule(module)) {
        return fail(SoundError::invalidParameter);
    }
    sound.mixer.stop(*module);
    std::erase_if(sound.modules, [&](const auto& owned) { return owned.get() == module; });
    return 1;
}

void FSOUND_Close()
{
    // Silence first: the output may be in the middle of a long block, and closing waits for it.
    sound.mixer.stopAll();
    if (sound.silentOutput) {
        sound.silentOutput.reset();
    } else if (sound.open) {
        SDL_CloseAudio();
    }
    sound.open = false;
    sound.silent = false;
}
