// Stands in for SDL, OpenGL and the clock when it is loaded before them (LD_PRELOAD): the program
// lives in the virtual world (virtual/virtual_world.h), nothing is shown or heard, and every call
// becomes a line of a log: the name, then the arguments. OpenGL's part is in gl_log.cpp. The end of
// a pass is a line too. Environment variables say how:
//
//   STAND_IN_LOG     the log's path
//   STAND_IN_FPS     frames per second
//   STAND_IN_FRAMES  the window is closed after this many frames
//   STAND_IN_EVENTS  further events, "FRAME:TYPE,FRAME:TYPE,..." with SDL's type numbers, the first
//                    frame being 0
//   STAND_IN_FAIL    the name of one SDL call that fails
//   STAND_IN_EXIT    the name of one SDL call in which the process ends with status 1

#include "tests/whole_show/gl_log.h"
#include "virtual/environment.h"
#include "virtual/virtual_world.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

namespace {

constexpr std::uint32_t kFirstTicks = 0xFFFFF000U; // the millisecond counter wraps during the show

WorldSettings worldSettings()
{
    WorldSettings settings;
    settings.rate.frames = environmentNumber("STAND_IN_FPS", settings.rate.frames);
    settings.firstTicks = kFirstTicks;
    if (const std::uint64_t frames = environmentNumber("STAND_IN_FRAMES", 0)) {
        settings.end = frames;
    }
    const char* text = environmentText("STAND_IN_EVENTS");
    unsigned frame = 0;
    unsigned type = 0;
    int used = 0;
    while (std::sscanf(text, "%u:%u%n", &frame, &type, &used) == 2) {
        settings.events.emplace(frame, static_cast<Uint8>(type));
        text += used;
        text += *text == ',' ? 1 : 0;
    }
    return settings;
}

class CallLog : public Sink {
public:
    bool call(const std::string& words) override
    {
        tell(words);
        const std::string name = words.substr(0, words.find(' '));
        if (name == environmentText("STAND_IN_EXIT")) {
            std::exit(1);
        }
        return name != environmentText("STAND_IN_FAIL");
    }

    void passEnds(std::uint64_t frame) override
    {
        tell(text("-- pass %llu", static_cast<unsigned long long>(frame)));
    }
};

} // namespace

void tell(const std::string& line)
{
    static std::FILE* const log = std::fopen(environmentText("STAND_IN_LOG", "/dev/null"), "w");
    std::fputs((line + '\n').c_str(), log);
}

VirtualWorld& world()
{
    // Neither is ever taken down: the program calls to its very end.
    static auto* const kWorld = new VirtualWorld(worldSettings(), *new CallLog);
    return *kWorld;
}

// Told, and the C library's own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" void srand(unsigned seed)
{
    tell(text("srand %u", seed));
    reinterpret_cast<void (*)(unsigned)>(::dlsym(RTLD_NEXT, "srand"))(seed);
}
