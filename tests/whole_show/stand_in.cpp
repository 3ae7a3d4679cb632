// Stands in for SDL, OpenGL and the clock when it is loaded before them (LD_PRELOAD): nothing is
// shown or heard, and every call of the program becomes a line of a log: the name, then the
// arguments. OpenGL's part is in gl_log.cpp.
//
// The program lives in virtual time. A pass of its main loop, which ends when no event is left,
// lasts one frame, and the audio callback is fed the frame's samples there. Environment variables
// say how:
//
//   STAND_IN_LOG     the log's path
//   STAND_IN_FPS     frames per second
//   STAND_IN_FRAMES  the window is closed in the pass of this number (the first is 1)
//   STAND_IN_EVENTS  further events, "PASS:TYPE,PASS:TYPE,..." with SDL's type numbers
//   STAND_IN_FAIL    the name of one SDL call that fails

#include "tests/whole_show/gl_log.h"

#include <SDL.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <vector>

namespace {

constexpr int kMixRateHz = 44100;
constexpr std::size_t kBytesPerSample = 4;         // stereo, 16 bit
constexpr std::uint32_t kFirstTicks = 0xFFFFF000U; // the millisecond counter wraps during the show

const char* setting(const char* name, const char* otherwise)
{
    const char* value = std::getenv(name);
    return value ? value : otherwise;
}

std::uint64_t number(const char* name, const char* otherwise)
{
    return std::strtoull(setting(name, otherwise), nullptr, 10);
}

bool fails(const char* call)
{
    return std::strcmp(setting("STAND_IN_FAIL", ""), call) == 0;
}

// The virtual world: how many passes are over, and what the program has opened in it.
std::uint64_t passes = 0;
std::uint64_t samplesFed = 0;
std::uint32_t delayed = 0;
bool audioOpen = false;
bool audioPlays = false;
SDL_AudioSpec audio{};
std::multimap<std::uint64_t, Uint8> pendingEvents; // by pass
std::uint64_t randomState = 1;

void readEvents()
{
    static bool done = false;
    if (done) {
        return;
    }
    done = true;
    if (const std::uint64_t last = number("STAND_IN_FRAMES", "0")) {
        pendingEvents.emplace(last, SDL_QUIT);
    }
    const char* text = setting("STAND_IN_EVENTS", "");
    unsigned pass = 0;
    unsigned type = 0;
    int used = 0;
    while (std::sscanf(text, "%u:%u%n", &pass, &type, &used) == 2) {
        pendingEvents.emplace(pass, static_cast<Uint8>(type));
        text += used;
        if (*text == ',') {
            ++text;
        }
    }
}

void feedAudio()
{
    const std::uint64_t due = passes * kMixRateHz / number("STAND_IN_FPS", "60");
    if (audioOpen && audioPlays && due > samplesFed) {
        std::vector<Uint8> buffer((due - samplesFed) * kBytesPerSample);
        audio.callback(audio.userdata, buffer.data(), static_cast<int>(buffer.size()));
    }
    samplesFed = due;
}

} // namespace

void tell(const std::string& line)
{
    static std::FILE* const log = std::fopen(setting("STAND_IN_LOG", "/dev/null"), "w");
    std::fputs((line + '\n').c_str(), log);
}

// The libraries' headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

std::time_t time(std::time_t* now)
{
    if (now) {
        *now = kSeed;
    }
    return kSeed;
}

void srand(unsigned seed)
{
    tell(text("srand %u", seed));
    randomState = seed;
}

int rand()
{
    return nextRandom(randomState);
}

// SDL

int SDL_Init(Uint32 flags)
{
    tell(text("SDL_Init 0x%x", flags));
    return fails("SDL_Init") ? -1 : 0;
}

void SDL_Quit()
{
    tell("SDL_Quit");
}

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    tell(text("SDL_GL_SetAttribute %d %d", static_cast<int>(attribute), value));
    return 0;
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int bitsPerPixel, Uint32 flags)
{
    static SDL_Surface surface{};
    tell(text("SDL_SetVideoMode %d %d %d 0x%x", width, height, bitsPerPixel, flags));
    return fails("SDL_SetVideoMode") ? nullptr : &surface;
}

int SDL_ShowCursor(int toggle)
{
    tell(text("SDL_ShowCursor %d", toggle));
    return 0;
}

int SDL_PollEvent(SDL_Event* event)
{
    readEvents();
    const auto next = pendingEvents.begin();
    if (next != pendingEvents.end() && next->first <= passes + 1) {
        event->type = next->second;
        pendingEvents.erase(next);
        return 1;
    }
    ++passes;
    tell(text("-- pass %llu", static_cast<unsigned long long>(passes)));
    feedAudio();
    return 0;
}

Uint32 SDL_GetTicks()
{
    const std::uint64_t elapsed = passes * 1000 / number("STAND_IN_FPS", "60");
    return kFirstTicks + delayed + static_cast<std::uint32_t>(elapsed);
}

void SDL_Delay(Uint32 milliseconds)
{
    tell(text("SDL_Delay %u", milliseconds));
    delayed += milliseconds;
}

void SDL_GL_SwapBuffers()
{
    tell("SDL_GL_SwapBuffers");
}

int SDL_OpenAudio(SDL_AudioSpec* desired, SDL_AudioSpec* obtained)
{
    tell(text("SDL_OpenAudio %d %d %d %d%s", desired->freq, desired->format, desired->channels,
              desired->samples, obtained ? " obtained" : ""));
    if (fails("SDL_OpenAudio")) {
        return -1;
    }
    audio = *desired;
    audioOpen = true;
    return 0;
}

void SDL_PauseAudio(int pause)
{
    audioPlays = pause == 0;
}

void SDL_CloseAudio()
{
    tell("SDL_CloseAudio");
    audioOpen = false;
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
