// Loaded before SDL (LD_PRELOAD), takes its place where the show meets its display: SDL's calls for
// the window, events and frames end here, sound and the rest go on to SDL. The show draws as ever,
// at the size and the pace of the display.
//
// What cannot be done here is left to SDL, with a sentence, from the first call that fails on.

#include "stage/pacer.h"
#include "stage/performance.h"
#include "stage/row_watch.h"
#include "stage/settings.h"
#include "stage/window.h"
#include "virtual/environment.h"

#include <SDL.h>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kSwapsToSettle = 6;
constexpr int kSwapsToMeasure = 20;
constexpr Uint32 kTimeToMeasureMs = 600; // what the swaps may take at 50 Hz, and some more

// SDL's own function.
template <typename Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

std::optional<PictureSize> readSize(const char* text)
{
    PictureSize size;
    const bool isSize = std::sscanf(text, "%dx%d", &size.width, &size.height) == 2;
    return isSize ? std::optional(size) : std::nullopt;
}

// What the launcher wants; its settings are taken for well-formed.
struct Settings {
    std::optional<PictureSize> size = readSize(environmentText(setting::kSize));
    int display = static_cast<int>(environmentNumber(setting::kDisplay, 1));
    double refresh = std::strtod(environmentText(setting::kRefresh), nullptr); // 0: the display's
    bool pacesByTime = std::string(environmentText(setting::kPace)) == "time";
    bool isVerbose = environmentNumber(setting::kVerbose, 0) != 0;
};

class Stage {
public:
    // True while the stage is in SDL's place.
    [[nodiscard]] bool isSet() const { return !isPlain_; }

    int init(Uint32 flags);
    void setAttribute(SDL_GLattr attribute, int value)
    {
        attributes_.push_back({attribute, value});
    }
    SDL_Surface* setVideoMode(int width, int height, int bitsPerPixel, Uint32 flags);
    void delay(Uint32 milliseconds);
    void look();
    void swap();
    bool poll(SDL_Event& event);
    void showPointer(bool isShown) { window_.showPointer(isShown); }
    void quit();

private:
    struct Attribute {
        SDL_GLattr name;
        int value;
    };

    void leaveToSdl(const std::string& reason);
    void choosePace(const std::vector<Seconds>& swaps);
    void endPass();
    [[gnu::format(printf, 2, 3)]] void tell(const char* format, ...) const;

    Settings settings_;
    Window window_;
    Pacer pacer_{Pace{}};
    std::optional<Performance> performance_; // while verbose
    std::vector<Attribute> attributes_;
    SDL_Surface surface_{};
    bool isPlain_ = false;
    bool isPaced_ = false;    // the pace has been chosen
    bool hasBegun_ = false;   // the pass has looked at the clock
    bool hasSwapped_ = false; // the pass has shown its frame
};

void Stage::leaveToSdl(const std::string& reason)
{
    std::fprintf(stderr, "kso: plain, without the stage: %s\n", reason.c_str());
    isPlain_ = true;
}

int Stage::init(Uint32 flags)
{
    const std::string problem = window_.connect();
    if (!problem.empty() && window_.isDisplayMissing()) {
        // An older SDL would play in the terminal, or nowhere.
        std::fprintf(stderr, "kso: %s\n", problem.c_str());
        return -1;
    }
    if (!problem.empty()) {
        leaveToSdl(problem);
        return original<decltype(&SDL_Init)>("SDL_Init")(flags);
    }
    const Uint32 others = flags & ~static_cast<Uint32>(SDL_INIT_VIDEO);
    return others != 0 ? original<decltype(&SDL_Init)>("SDL_Init")(others) : 0;
}

SDL_Surface* Stage::setVideoMode(int width, int height, int bitsPerPixel, Uint32 flags)
{
    WindowWishes wishes;
    wishes.isFullScreen = (flags & SDL_FULLSCREEN) != 0;
    wishes.picture = settings_.size;
    wishes.display = settings_.display;
    wishes.icon = environmentText(setting::kIcon);
    if (const std::string problem = window_.open(wishes); !problem.empty()) {
        leaveToSdl(problem);
        if (original<decltype(&SDL_Init)>("SDL_Init")(SDL_INIT_VIDEO) < 0) {
            return nullptr;
        }
        for (const Attribute& each : attributes_) {
            original<decltype(&SDL_GL_SetAttribute)>("SDL_GL_SetAttribute")(each.name, each.value);
        }
        return original<decltype(&SDL_SetVideoMode)>("SDL_SetVideoMode")(width, height,
                                                                         bitsPerPixel, flags);
    }
    if (!window_.remark().empty()) {
        std::fprintf(stderr, "kso: %s\n", window_.remark().c_str());
    }
    const PictureSize picture = window_.picture();
    const PictureSize size = window_.size();
    const bool keepsSmall = window_.drawsInSoftware() && !settings_.size;
    tell("kso: %s draws %dx%d in a window of %dx%d%s\n", window_.renderer().c_str(), picture.width,
         picture.height, size.width, size.height,
         keepsSmall ? "; it draws in software, so the picture stays small" : "");
    surface_.w = width;
    surface_.h = height;
    return &surface_;
}

// The show waits for the display to settle. Meanwhile some black frames tell how it waits for its
// refresh.
void Stage::delay(Uint32 milliseconds)
{
    const Time::time_point end = Time::now() + std::chrono::milliseconds(milliseconds);
    if (!isPaced_) {
        std::vector<Seconds> swaps;
        if (milliseconds >= kTimeToMeasureMs) {
            const double refresh =
                settings_.refresh > 0.0 ? settings_.refresh : window_.refreshesPerSecond();
            window_.setRefreshesPerSwap(refreshesPerFrame(refresh));
            Time::time_point latest = Time::now();
            for (int i = -kSwapsToSettle; i < kSwapsToMeasure && Time::now() < end; ++i) {
                window_.show();
                const Time::time_point now = Time::now();
                if (i >= 0) {
                    swaps.emplace_back(now - latest);
                }
                latest = now;
            }
        }
        choosePace(swaps);
    }
    std::this_thread::sleep_until(end);
}

void Stage::choosePace(const std::vector<Seconds>& swaps)
{
    const double refresh =
        settings_.refresh > 0.0 ? settings_.refresh : window_.refreshesPerSecond();
    const Pace pace = settings_.pacesByTime ? Pace{} : measuredPace(refresh, swaps);
    if (!pace.displayWaits) {
        window_.setRefreshesPerSwap(1);
    }
    pacer_ = Pacer(pace);
    isPaced_ = true;
    if (refresh > 0.0) {
        tell("kso: %.4g Hz, ", refresh);
    } else {
        tell("kso: the display does not tell its refreshes, ");
    }
    tell("a frame each %.2f ms, %s\n", pace.frame.count() * 1000.0,
         pace.displayWaits ? "which the display keeps" : "by the clock");
    if (settings_.isVerbose) {
        performance_.emplace(pace.frame);
        watchRows();
    }
}

void Stage::look()
{
    if (!hasBegun_ && performance_) {
        Performance::frameBegins();
    }
    hasBegun_ = true;
}

void Stage::swap()
{
    window_.show();
    hasSwapped_ = true;
    if (performance_) {
        performance_->frameIsShown();
    }
}

bool Stage::poll(SDL_Event& event)
{
    const Happening happening = window_.next();
    if (happening == Happening::none) {
        endPass();
        return false;
    }
    event = {};
    event.type = happening == Happening::key ? SDL_KEYDOWN : SDL_QUIT;
    return true;
}

// A frame begins when it is due, so that it reads the clock as late as it can. A pass without a
// frame leaves its picture standing and has nothing that would make it wait.
void Stage::endPass()
{
    if (!hasSwapped_) {
        if (window_.isStale()) {
            window_.show();
        }
        if (performance_) {
            performance_->pause();
        }
    }
    const Time::time_point now = Time::now();
    const bool waitsHere = hasSwapped_ || !pacer_.pace().displayWaits;
    std::this_thread::sleep_until(
        waitsHere ? pacer_.due(now)
                  : now + std::chrono::duration_cast<Time::duration>(pacer_.pace().frame));
    hasBegun_ = false;
    hasSwapped_ = false;
}

// The display takes the window back when the process ends, at once. SDL would first ask a window
// manager to take it out of full screen, and wait a tenth of a second for the answer of none.
void Stage::quit()
{
    if (performance_) {
        tell("%s", performance_->report().c_str());
    }
    if (window_.isOpen()) {
        window_.showPointer(true);
    }
}

void Stage::tell(const char* format, ...) const
{
    if (!settings_.isVerbose) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

// Null for calls of other threads, for which SDL's functions stay SDL's.
Stage* stage()
{
    // Never taken down: the program calls to its very end.
    static auto* const kStage = new Stage;
    static const pid_t kMainThread = ::getpid();
    return ::gettid() == kMainThread && kStage->isSet() ? kStage : nullptr;
}

} // namespace

// The libraries' headers name their parameters as they like.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

int SDL_Init(Uint32 flags)
{
    Stage* const here = stage();
    const bool isOurs = here != nullptr && (flags & SDL_INIT_VIDEO) != 0;
    return isOurs ? here->init(flags) : original<decltype(&SDL_Init)>("SDL_Init")(flags);
}

void SDL_Quit()
{
    if (Stage* const here = stage(); here != nullptr) {
        here->quit();
        return;
    }
    original<decltype(&SDL_Quit)>("SDL_Quit")();
}

int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    if (Stage* const here = stage(); here != nullptr) {
        here->setAttribute(attribute, value);
        return 0;
    }
    return original<decltype(&SDL_GL_SetAttribute)>("SDL_GL_SetAttribute")(attribute, value);
}

SDL_Surface* SDL_SetVideoMode(int width, int height, int bitsPerPixel, Uint32 flags)
{
    Stage* const here = stage();
    return here != nullptr ? here->setVideoMode(width, height, bitsPerPixel, flags)
                           : original<decltype(&SDL_SetVideoMode)>("SDL_SetVideoMode")(
                                 width, height, bitsPerPixel, flags);
}

int SDL_ShowCursor(int toggle)
{
    if (Stage* const here = stage(); here != nullptr) {
        here->showPointer(toggle != 0);
        return toggle;
    }
    return original<decltype(&SDL_ShowCursor)>("SDL_ShowCursor")(toggle);
}

void SDL_GL_SwapBuffers()
{
    if (Stage* const here = stage(); here != nullptr) {
        here->swap();
        return;
    }
    original<decltype(&SDL_GL_SwapBuffers)>("SDL_GL_SwapBuffers")();
}

int SDL_PollEvent(SDL_Event* event)
{
    Stage* const here = stage();
    return here != nullptr ? static_cast<int>(here->poll(*event))
                           : original<decltype(&SDL_PollEvent)>("SDL_PollEvent")(event);
}

Uint32 SDL_GetTicks()
{
    if (Stage* const here = stage(); here != nullptr) {
        here->look();
    }
    static const auto kReal = original<decltype(&SDL_GetTicks)>("SDL_GetTicks");
    return kReal();
}

void SDL_Delay(Uint32 milliseconds)
{
    if (Stage* const here = stage(); here != nullptr) {
        here->delay(milliseconds);
        return;
    }
    original<decltype(&SDL_Delay)>("SDL_Delay")(milliseconds);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
