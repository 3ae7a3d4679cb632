#include "sound/fsound.h"

#include "sound/mixer.h"
#include "sound/module.h"
#include "sound/output.h"
#include "sound/sound_error.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr float kVersion = 3.3F;
constexpr int kSilentOutput = 0;
constexpr int kFirstDriver = 0;
constexpr int kFullVolume = 256;

struct Sound {
    SoundError latestError = SoundError::none;
    bool silent = false; // whether FSOUND_Init opens the silent output
    Mixer mixer;
    std::vector<std::unique_ptr<FMUSIC_MODULE>> modules; // every handle that was not freed
    std::unique_ptr<Output> output;                      // from FSOUND_Init to FSOUND_Close

    [[nodiscard]] bool isOpen() const { return output != nullptr; }

    Sound() = default;
    Sound(const Sound&) = delete;
    Sound(Sound&&) = delete;
    Sound& operator=(const Sound&) = delete;
    Sound& operator=(Sound&&) = delete;
    // The process may exit at any time, while the mixer is running.
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
    if (sound.isOpen()) {
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
    if (sound.isOpen()) {
        return fail(SoundError::alreadyInitialised);
    }
    return driver == kFirstDriver ? 1 : fail(SoundError::invalidParameter);
}

signed char FSOUND_Init(int mixRateHz, int /*maxSoftwareChannels*/, unsigned int /*flags*/)
{
    if (sound.isOpen()) {
        return fail(SoundError::alreadyInitialised);
    }
    if (mixRateHz != kMixRateHz) {
        return fail(SoundError::invalidParameter);
    }
    sound.output = openOutput(sound.mixer, sound.silent);
    return sound.isOpen() ? 1 : fail(SoundError::noOutputDevice);
}

int FSOUND_GetError()
{
    return static_cast<int>(sound.latestError);
}

FMUSIC_MODULE* FMUSIC_LoadSong(const char* path)
{
    if (!sound.isOpen()) {
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
    if (!sound.isOpen()) {
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
    // Stopped first, so that the rest of the block that closing waits for is only silence.
    sound.mixer.stopAll();
    sound.output.reset();
    sound.silent = false;
}
