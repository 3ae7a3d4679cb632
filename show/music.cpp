#include "show/music.h"

#include "base/fatal.h"
#include "cues/scenes_and_events.h"
#include "show/options.h"
#include "show/scheduler.h"
#include "show/sync_queue.h"
#include "sound/fsound.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <optional>

namespace {

constexpr float kOldestVersion = 3.3F;
constexpr int kSilentOutput = 0;
constexpr int kFirstDriver = 0;
constexpr int kMixRateHz = 44100;
constexpr int kSoftwareChannels = 64;
constexpr unsigned kInitFlags = 1;
constexpr int kMasterVolume = 255;

// By error code. The double and trailing blanks are the library's own.
constexpr std::array kErrorTexts = {
    "No errors",
    "Cannot call this command after FSOUND_Init.  Call FSOUND_Close first.",
    "This command failed because FSOUND_Init was not called",
    "Error initializing output device.",
    "The output device is already in use and cannot be reused.",
    "Playing the sound failed.",
    "Soundcard does not support the features needed for this soundsystem (16bit stereo output)",
    "Error setting cooperative level for hardware.",
    "Error creating hardware sound buffer.",
    "File not found",
    "Unknown file format",
    "Error loading file",
    "Not enough memory ",
    "The version number of this file format is not supported",
    "An invalid parameter was passed to this function",
    "Tried to use an EAX command on a non EAX enabled channel or output.",
    "Tried to use an advanced EAX2 command on a non EAX2 enabled channel or output.",
    "Failed to allocate a new channel",
    "Recording not supported on this device",
    "Required Mediaplayer codec is not installed",
};

FMUSIC_MODULE* song = nullptr;

[[noreturn]] void fatalSoundError()
{
    fatal(stdout, 0, "Error!\n%s\n", fmodErrorText(FSOUND_GetError()));
}

} // namespace

void initMusic()
{
    if (FSOUND_GetVersion() < kOldestVersion) {
        fatal(stdout, 0, "Error : You are using the wrong DLL version!\n");
    }

    if (options.noSound) {
        FSOUND_SetOutput(kSilentOutput);
    }
    FSOUND_SetDriver(kFirstDriver);
    if (!FSOUND_Init(kMixRateHz, kSoftwareChannels, kInitFlags)) {
        fatalSoundError();
    }

    song = FMUSIC_LoadSong(cues::kModulePath);
    if (song == nullptr) {
        fatalSoundError();
    }
    FMUSIC_SetMasterVolume(song, kMasterVolume);
    FMUSIC_SetZxxCallback(song, onZxx);
}

void startMusic(int startScene)
{
    FMUSIC_PlaySong(song);
    if (const std::optional<int> order = cues::startOrderOf(startScene)) {
        FMUSIC_SetOrder(song, *order);
    }
}

void stopMusic()
{
    FMUSIC_StopSong(song);
    FMUSIC_FreeSong(song);
    FSOUND_Close();
}

void onZxx(FMUSIC_MODULE* /*module*/, unsigned char value)
{
    if (cues::isEvent(value)) {
        syncQueue.append(value);
    } else {
        currentScene.store(value, std::memory_order_relaxed);
    }
}

const char* fmodErrorText(int code)
{
    if (code < 0 || static_cast<std::size_t>(code) >= kErrorTexts.size()) {
        return "Unknown error";
    }
    return kErrorTexts[static_cast<std::size_t>(code)];
}
