// Loaded before SDL (LD_PRELOAD), takes its place: the program draws into memory and lives in
// virtual time, and every frame and every sample goes to the recorder, through a pipe.
//
// There is one counter, of passes of the program's main loop; a pass is a frame and ends when no
// event is left. Whenever the program looks at the clock, it reads the moment of the current
// frame, and has heard the sound up to and including that moment. So what the music does at a
// moment reaches the first frame at or after it.

#include "tools/capture/frame_rate.h"
#include "tools/capture/offscreen.h"
#include "tools/capture/packets.h"
#include "tools/capture/settings.h"

#include <SDL.h>
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;
constexpr std::time_t kBirth = 1'000'000'000; // the time of day when the program starts
constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

const char* text(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::uint64_t number(const char* name, std::uint64_t otherwise)
{
    const char* const value = text(name);
    return *value != '\0' ? std::strtoull(value, nullptr, 10) : otherwise;
}

// What the recorder wants; its settings are taken for well-formed.
struct Wishes {
    int pipe = static_cast<int>(number(setting::kPipe, 0));
    FrameRate rate;
    PictureSize size;
    std::uint64_t from = number(setting::kFrom, 0);
    std::uint64_t to = number(setting::kTo, kNever);
    Uint8 closingEvent = static_cast<Uint8>(number(setting::kClose, SDL_QUIT));
    std::optional<std::set<std::uint64_t>> pictures; // none: all

    Wishes()
    {
        unsigned long frames = 0;
        unsigned long seconds = 0;
        if (std::sscanf(text(setting::kRate), "%lu/%lu", &frames, &seconds) == 2) {
            rate = {frames, seconds};
        }
        std::sscanf(text(setting::kSize), "%dx%d", &size.width, &size.height);
        if (const char* list = text(setting::kWanted); std::string_view(list) != "all") {
            pictures.emplace();
            unsigned long frame = 0;
            int used = 0;
            while (std::sscanf(list, "%lu%n", &frame, &used) == 1) {
                pictures->insert(frame);
                list += used;
                list += *list == ',' ? 1 : 0;
            }
        }
    }

    [[nodiscard]] bool wantsFrame(std::uint64_t frame) const { return frame >= from && frame < to; }
    [[nodiscard]] bool wantsPicture(std::uint64_t frame) const
    {
        return wantsFrame(frame) && (!pictures || pictures->contains(frame));
    }
};

const Wishes& wishes()
{
    static const Wishes all;
    return all;
}

// The virtual world.
std::uint64_t frame = 0;   // of the pass at hand
bool isShown = false;      // its picture was swapped to the front
bool lastWasShown = true;  // the same of the pass before
std::uint32_t delayed = 0; // milliseconds that the program slept before the first frame
bool isClosed = false;     // the closing event was taken
std::uint64_t heard = 0;   // samples since the first frame's moment
std::optional<SDL_AudioSpec> audio;
bool audioPlays = false;

// A program whose recorder is gone ends like any writer into a closed pipe: by SIGPIPE.
void writeAll(const void* bytes, std::size_t count)
{
    const auto* next = static_cast<const std::byte*>(bytes);
    while (count > 0) {
        const ssize_t written = ::write(wishes().pipe, next, count);
        if (written < 0 && errno != EINTR) {
            std::_Exit(EXIT_FAILURE);
        }
        next += std::max<ssize_t>(written, 0);
        count -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    }
}

void send(PacketKind kind, std::uint64_t position, const void* bytes, std::size_t count)
{
    const PacketHeader header{kind, static_cast<std::uint32_t>(count), position};
    writeAll(&header, sizeof header);
    writeAll(bytes, count);
}

void sendPicture(std::uint64_t ofFrame)
{
    static std::vector<std::uint8_t> pixels;
    if (ofFrame >= wishes().to) {
        return; // the show may need one more pass to hear that it is over
    }
    if (wishes().wantsPicture(ofFrame)) {
        readPicture(pixels);
        send(PacketKind::picture, ofFrame, pixels.data(), pixels.size());
    } else {
        send(PacketKind::unseen, ofFrame, nullptr, 0);
    }
}

// Plays the sound on, to this many samples after the first frame's moment.
void hearUntil(std::uint64_t moment)
{
    static std::vector<std::int16_t> samples;
    if (moment <= heard) {
        return;
    }
    samples.assign((moment - heard) * kSoundChannels, 0);
    // One by one, since a player may round a little differently with the lengths that it is asked
    // for: the sound is the same at every frame rate.
    for (std::size_t i = 0; audio && audioPlays && i < samples.size(); i += kSoundChannels) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as SDL's callbacks want it
        audio->callback(audio->userdata, reinterpret_cast<Uint8*>(&samples[i]),
                        kSoundChannels * sizeof samples[i]);
    }
    send(PacketKind::sound, heard, samples.data(), samples.size() * sizeof samples[0]);
    heard = moment;
}

// The program looks at the clock, with which a frame begins.
void look()
{
    // A pass that shows nothing leaves the picture before it on the screen. The very last such pass
    // is no frame any more, and the program does not look at the clock again.
    if (!lastWasShown) {
        sendPicture(frame - 1);
        lastWasShown = true;
    }
    // Nobody can tell the first frame from what comes before it, so each look until it is over
    // hears one sample, and the last one's counts.
    if (frame == 0) {
        heard = 0;
    }
    hearUntil(wishes().rate.samplesBefore(frame) + 1);
}

void endPass()
{
    lastWasShown = isShown;
    isShown = false;
    ++frame;
}

} // namespace

// SDL's headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

std::time_t time(std::time_t* now)
{
    const auto elapsed = static_cast<std::time_t>(wishes().rate.momentOf(frame, 1));
    if (now != nullptr) {
        *now = kBirth + elapsed;
    }
    return kBirth + elapsed;
}

int SDL_Init(Uint32 /*flags*/)
{
    return 0;
}

void SDL_Quit()
{
}

int SDL_GL_SetAttribute(SDL_GLattr /*attribute*/, int /*value*/)
{
    return 0;
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int /*bitsPerPixel*/, Uint32 /*flags*/)
{
    static SDL_Surface surface{};
    if (!openOffscreen({width, height}, wishes().size)) {
        return nullptr;
    }
    const std::string renderer = rendererName();
    send(PacketKind::started, 0, renderer.data(), renderer.size());
    return &surface;
}

int SDL_ShowCursor(int toggle)
{
    return toggle;
}

void SDL_GL_SwapBuffers()
{
    if (!isShown) {
        sendPicture(frame);
        isShown = true;
    }
}

int SDL_PollEvent(SDL_Event* event)
{
    // A pass that shows nothing may be the show's own end and no frame, so that it takes one more
    // to know.
    const bool isLast = frame + 1 == wishes().to && isShown;
    if ((isLast || frame >= wishes().to) && !isClosed) {
        hearUntil(wishes().rate.samplesBefore(wishes().to));
        event->type = wishes().closingEvent;
        isClosed = true;
        return 1;
    }
    endPass();
    return 0;
}

Uint32 SDL_GetTicks()
{
    look();
    const std::uint64_t elapsed = wishes().rate.momentOf(frame, kMillisecondsPerSecond);
    return delayed + static_cast<Uint32>(elapsed);
}

// A frame lasts as long as it lasts.
void SDL_Delay(Uint32 milliseconds)
{
    delayed += frame == 0 ? milliseconds : 0;
}

int SDL_OpenAudio(SDL_AudioSpec* desired, SDL_AudioSpec* /*obtained*/)
{
    if (desired->freq != static_cast<int>(kSamplesPerSecond) || desired->format != AUDIO_S16SYS ||
        desired->channels != kSoundChannels) {
        std::fputs("kso: only 44100 Hz, 16 bits and stereo can be recorded\n", stderr);
        return -1;
    }
    audio = *desired;
    audioPlays = false;
    return 0;
}

void SDL_PauseAudio(int pause)
{
    audioPlays = pause == 0;
}

void SDL_CloseAudio()
{
    audio.reset();
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
