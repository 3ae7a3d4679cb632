// soak HOURS: plays the show for so much virtual time with a module that never ends, and watches
// it.
//
// The module goes through the scenes in turn, each with its events, a minute for all. The program
// runs with the stand-in for SDL and OpenGL (tests/whole_show/stand_in.cpp), two frames a second,
// and each frame has to be shown and drawn by its scene with finite numbers while the program's
// memory stays what it was after ten minutes. Then the recorder draws a frame for each second, of
// which only those of the empty scene may be black.
//
// Prints an hour a line; exit status 1 after faults.
#include "cues/scenes_and_events.h"
#include "tests/whole_show/files.h"
#include "tests/whole_show/scripted_module.h"
#include "virtual/timing.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr FrameRate kRate = {2, 1};
constexpr FrameRate kPictureRate = {1, 1};

// The opening and the twister take over how the scene before has left OpenGL: the depth test of the
// tube ends with the cubes, and their blending with the dog.
constexpr auto kOrder = std::to_array<int>({
    cues::kOpening,
    cues::kTwister,
    cues::kImageTrail,
    cues::kTube,
    cues::kClosing,
    cues::kEmpty,
    cues::kWireCubes,
    cues::kLogoAndJitter,
});
constexpr int kScenes = static_cast<int>(kOrder.size());
static_assert(kOrder.size() == cues::kScenes.size());

constexpr int kRowsPerEvent = 4;
constexpr long kMostGrowth = 256; // KiB after the first ten minutes

int faults = 0;

void fault(const std::string& words)
{
    if (++faults <= 20) {
        std::printf("fault: %s\n", words.c_str());
    }
}

// An order for each scene. Its events come again and again, and one that it does not know.
XmModule endlessModule()
{
    std::vector<Cue> script;
    for (int order = 0; order < kScenes; ++order) {
        const cues::Scene& scene = *cues::sceneOf(kOrder[static_cast<std::size_t>(order)]);
        script.push_back({order, 0, 0, scene.number});
        for (int row = kRowsPerEvent; row < kRowsPerOrder; row += kRowsPerEvent) {
            const auto next = static_cast<std::size_t>(row / kRowsPerEvent - 1);
            const bool knows = next % (scene.events.size() + 1) < scene.events.size();
            script.push_back({order, row, 1,
                              knows ? scene.events[next % (scene.events.size() + 1)].value : 255});
        }
    }
    return scriptedModule(kScenes, script);
}

// The scene whose row was heard last when a frame is drawn.
int sceneAt(std::uint64_t frame, const FrameRate& rate)
{
    constexpr std::uint64_t kSamplesPerOrder = kRowsPerOrder * kSamplesPerRow;
    return kOrder[rate.samplesBefore(frame) / kSamplesPerOrder % kScenes];
}

std::string nameOf(int scene)
{
    return cues::sceneOf(scene)->name;
}

bool says(const std::string& line, const char* words)
{
    return line.find(words) != std::string::npos;
}

// KiB of the process that are in memory.
long memoryOf(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kibibytes = 0;
            status >> kibibytes;
            return kibibytes;
        }
    }
    return 0;
}

// What has been heard of the frames since the last line that was printed.
struct Hour {
    std::array<int, kScenes> drawn{}; // frames of each scene, by number
    long least = 0;                   // KiB
    long most = 0;
};

class Watch {
public:
    explicit Watch(pid_t process) : process_(process) {}

    // A line of the stand-in's log.
    void hear(const std::string& line)
    {
        if (says(line, "nan") || says(line, "inf") || says(line, "not all finite")) {
            fault("frame " + std::to_string(frame_) + ": " + line);
        } else if (line.starts_with("draw ")) {
            ++draws_;
        } else if (line == "SDL_GL_SwapBuffers") {
            ++swaps_;
        } else if (line.starts_with("-- pass")) {
            endFrame();
        }
    }

    [[nodiscard]] std::uint64_t frames() const { return frame_; }

private:
    void endFrame()
    {
        const int scene = sceneAt(frame_, kRate);
        if (swaps_ != 1 || (draws_ > 0) == (scene == cues::kEmpty)) {
            fault("frame " + std::to_string(frame_) + ", " + nameOf(scene) + ": drawn " +
                  std::to_string(draws_) + " times and shown " + std::to_string(swaps_));
        }
        ++hour_.drawn[static_cast<std::size_t>(scene)];
        draws_ = swaps_ = 0;
        ++frame_;
        if (frame_ % kRate.firstFrameFrom(60 * kMicrosecondsPerSecond) == 0) {
            watchMemory();
        }
        if (frame_ % kRate.firstFrameFrom(3600 * kMicrosecondsPerSecond) == 0) {
            report();
        }
    }

    void watchMemory()
    {
        const long memory = memoryOf(process_);
        if (frame_ == kRate.firstFrameFrom(600 * kMicrosecondsPerSecond)) {
            settled_ = memory;
        }
        if (settled_ != 0 && memory > settled_ + kMostGrowth) {
            fault("frame " + std::to_string(frame_) + ": memory has grown from " +
                  std::to_string(settled_) + " to " + std::to_string(memory) + " KiB");
        }
        hour_.least = hour_.least == 0 ? memory : std::min(hour_.least, memory);
        hour_.most = std::max(hour_.most, memory);
    }

    void report()
    {
        const auto [fewest, most] = std::ranges::minmax(hour_.drawn);
        std::printf("%5.1f h: each scene drawn %d to %d times, memory %ld to %ld KiB\n",
                    static_cast<double>(kRate.momentOf(frame_, 1)) / 3600, fewest, most,
                    hour_.least, hour_.most);
        hour_ = {};
    }

    pid_t process_;
    std::uint64_t frame_ = 0;
    int draws_ = 0;
    int swaps_ = 0;
    long settled_ = 0; // KiB, once the first ten minutes are over
    Hour hour_;
};

[[noreturn]] void becomeShow(const fs::path& folder, int log, std::uint64_t frames)
{
    const auto set = [](const char* name, const std::string& value) {
        ::setenv(name, value.c_str(), 1);
    };
    set("LD_PRELOAD", KSO_STAND_IN);
    set("STAND_IN_LOG", "/proc/self/fd/" + std::to_string(log));
    set("STAND_IN_FPS", std::to_string(kRate.frames));
    set("STAND_IN_FRAMES", std::to_string(frames));
    fs::current_path(folder);
    ::execl(KSO_PROGRAM, "kso", "-window", nullptr);
    ::_exit(126);
}

void watchCalls(const fs::path& folder, std::uint64_t frames)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        fault("there is no pipe");
        return;
    }
    const pid_t show = ::fork();
    if (show == 0) {
        ::close(ends[0]);
        becomeShow(folder, ends[1], frames);
    }
    ::close(ends[1]);
    Watch watch(show);
    std::FILE* const log = ::fdopen(ends[0], "r");
    char* text = nullptr;
    std::size_t size = 0;
    for (ssize_t length = 0; (length = ::getline(&text, &size, log)) > 0;) {
        watch.hear(std::string(text, static_cast<std::size_t>(length - 1)));
    }
    std::free(text);
    std::fclose(log);
    int status = 0;
    ::waitpid(show, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 1 || watch.frames() != frames) {
        fault("the show ended with status " + std::to_string(status) + " after " +
              std::to_string(watch.frames()) + " frames");
    }
}

void watchPictures(const fs::path& folder, std::uint64_t seconds)
{
    const std::string command = "cd '" + folder.string() +
                                "' && '" KSO_RECORD "' --show . --hashes list --size 320x136" +
                                " --fps 1 --to " + std::to_string(seconds) + " >output 2>&1";
    if (std::system(command.c_str()) != 0) {
        fault("the recorder failed: " + contents(folder / "output"));
        return;
    }
    std::map<int, std::set<std::string>> pictures; // by scene
    std::ifstream list(folder / "list");
    std::uint64_t frame = 0;
    std::string number;
    std::string picture;
    std::string sound;
    std::uint64_t frames = 0;
    for (; list >> number >> picture >> sound; ++frame, ++frames) {
        pictures[sceneAt(frame, kPictureRate)].insert(picture);
    }
    const std::set<std::string>& black = pictures[cues::kEmpty];
    if (black.size() != 1) {
        fault("the empty scene has " + std::to_string(black.size()) + " pictures");
    }
    std::printf("%llu pictures; different ones:", static_cast<unsigned long long>(frames));
    for (const auto& [scene, different] : pictures) {
        std::printf(" %s %zu", nameOf(scene).c_str(), different.size());
        if (scene != cues::kEmpty && different.contains(*black.begin())) {
            fault(nameOf(scene) + " is black");
        }
    }
    std::printf("\n");
}

} // namespace

int main(int argc, char** argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const double hours = argc == 2 ? std::strtod(argv[1], nullptr) : 0.0;
    if (!(hours >= 0.1 && hours <= 1000.0)) {
        std::fprintf(stderr, "usage: %s HOURS, at least 0.1\n", argv[0]);
        return 2;
    }
    const auto seconds = static_cast<std::uint64_t>(hours * 3600.0);
    const fs::path folder = newFolder("soak");
    fs::create_directory(folder / "data");
    for (const auto& file : fs::directory_iterator("data")) {
        if (file.path().extension() == ".tga") {
            fs::create_symlink(fs::absolute(file.path()), folder / file.path());
        }
    }
    write(folder / "data/olvu.xm", writeXm(endlessModule()));
    watchCalls(folder, kRate.firstFrameFrom(seconds * kMicrosecondsPerSecond));
    watchPictures(folder, seconds);
    fs::remove_all(folder);
    std::printf("%d faults in %.1f hours\n", faults, hours);
    return faults == 0 ? 0 : 1;
}
