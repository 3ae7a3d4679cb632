// Starts the show: on the stage, or plain, from wherever it is installed.

#include "packaging/places.h"
#include "stage/launcher/child.h"
#include "stage/launcher/launch_options.h"
#include "stage/launcher/message_box.h"
#include "stage/sdl2.h"
#include "stage/settings.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kStatusOfFailure = 0; // as the show's
constexpr int kStatusAfterShow = 1;
constexpr int kStatusOfBadUsage = 2;

std::string inherited(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

void set(const char* name, const std::string& value)
{
    ::setenv(name, value.c_str(), 1);
}

void setUnlessSet(const char* name, const char* value)
{
    if (inherited(name).empty()) {
        ::setenv(name, value, 1);
    }
}

// Puts the library before those that the show is linked with. It is named by a descriptor, since
// the loader cuts paths at blanks and colons.
bool preload(const std::filesystem::path& library)
{
    const int descriptor = ::open(library.c_str(), O_RDONLY);
    if (descriptor < 0) {
        std::fprintf(stderr, "kso: plain, without the stage: cannot read %s: %s\n", library.c_str(),
                     std::strerror(errno));
        return false;
    }
    const std::string others = inherited("LD_PRELOAD");
    set("LD_PRELOAD",
        "/proc/self/fd/" + std::to_string(descriptor) + (others.empty() ? "" : ':' + others));
    return true;
}

void setStage(const LaunchOptions& options, const Places& places)
{
    const PictureSize size = options.size.value_or(PictureSize{});
    set(setting::kSize,
        options.size ? std::to_string(size.width) + 'x' + std::to_string(size.height) : "");
    set(setting::kIcon, places.icon);
    set(setting::kDisplay, options.display ? std::to_string(*options.display) : "");
    set(setting::kRefresh, options.refresh ? std::to_string(*options.refresh) : "");
    set(setting::kPace, options.pacesByTime ? "time" : "");
    set(setting::kVerbose, options.isVerbose ? "1" : "");
}

// The show's environment.
void prepare(const LaunchOptions& options, const Places& places)
{
    // What desktops know the window by.
    setUnlessSet("SDL_VIDEO_X11_WMCLASS", "kso");
    setUnlessSet("SDL_VIDEO_WAYLAND_WMCLASS", "kso");
    // Kicks die away by a step a frame, so they look as they should only at the display's rate.
    setUnlessSet("SDL12COMPAT_SYNC_TO_VBLANK", "1");
    if (!options.isPlain && preload(places.library)) {
        setStage(options, places);
    }
}

// Takes this process's place; returns only if that fails, with a message.
void become(const std::filesystem::path& program, const std::vector<std::string>& arguments)
{
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    ::execv(program.c_str(), words.data());
    std::fprintf(stderr, "kso: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
}

int launch(const LaunchOptions& options)
{
    const Places places = findPlaces();
    if (::chdir(places.folder.c_str()) != 0) {
        std::fprintf(stderr, "kso: cannot go to %s: %s\n", places.folder.c_str(),
                     std::strerror(errno));
        return kStatusOfFailure;
    }
    prepare(options, places);
    become(places.program, options.forTheShow);
    return kStatusOfFailure;
}

// As above, and when the show does not end as a show, what it has said is shown in a box.
int launchFromMenu(const LaunchOptions& options)
{
    const ChildEnd end = runListening([&] { return launch(options); });
    if (end.status != kStatusAfterShow) {
        showMessage(end.said.empty() ? "The show has ended early." : end.said);
    }
    return end.status;
}

bool hasDisplay()
{
    const Sdl2* const sdl = loadSdl2();
    return sdl == nullptr || openVideo(*sdl).empty(); // without SDL 2, nobody can tell
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const LaunchOptions options =
            readLaunchOptions({argv + 1, static_cast<std::size_t>(argc - 1)});
        if (options.help) {
            std::fputs(kLaunchHelp, stdout);
            return EXIT_SUCCESS;
        }
        if (options.version) {
            std::puts("kso " KSO_VERSION);
            return EXIT_SUCCESS;
        }
        if (options.onlyTriesDisplay) {
            return hasDisplay() ? EXIT_SUCCESS : EXIT_FAILURE;
        }
        return options.isFromMenu ? launchFromMenu(options) : launch(options);
    } catch (const UsageError& error) {
        std::fprintf(stderr, "kso: %s\n", error.what());
        return kStatusOfBadUsage;
    }
}
