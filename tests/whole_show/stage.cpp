#include "tests/whole_show/stage.h"

#include "tests/whole_show/files.h"
#include "tests/whole_show/pictures.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr unsigned kPatienceSeconds = 300; // ends what hangs, nothing else

void writePictures(const fs::path& folder, const Performance& performance)
{
    static const auto kFiles = [] {
        std::map<std::string, std::vector<std::uint8_t>> files;
        for (const Loaded& loaded : kAllLoaded) {
            files[loaded.file] = tgaOf(loaded);
        }
        return files;
    }();
    for (const auto& [file, bytes] : kFiles) {
        if (!file.empty() && file != performance.missingPicture) {
            const bool wrong = file == performance.wrongPicture;
            write(folder / file, wrong ? kFiles.at("by.tga") : bytes);
        }
    }
}

// The child's side: into the folder, streams to files, and off.
[[noreturn]] void become(const Performance& performance, const fs::path& folder)
{
    std::vector<std::string> words = {KSO_PROGRAM};
    words.insert(words.end(), performance.arguments.begin(), performance.arguments.end());
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    const auto set = [](const char* name, const std::string& value) {
        ::setenv(name, value.c_str(), 1);
    };
    if (performance.standIn) {
        set("LD_PRELOAD", KSO_STAND_IN);
    }
    set("STAND_IN_LOG", (folder / "log").string());
    set("STAND_IN_FPS", std::to_string(performance.framesPerSecond));
    set("STAND_IN_FRAMES", std::to_string(performance.frameCount));
    set("STAND_IN_EVENTS", performance.events);
    set("STAND_IN_FAIL", performance.failingCall);
    set("STAND_IN_EXIT", performance.exitingCall);

    for (const auto& [name, value] : performance.environment) {
        value ? set(name.c_str(), *value) : static_cast<void>(::unsetenv(name.c_str()));
    }

    fs::current_path(folder);
    if (std::freopen("output", "w", stdout) && std::freopen("errors", "w", stderr)) {
        ::alarm(kPatienceSeconds); // outlives exec: a program that hangs is ended
        ::execv(arguments[0], arguments.data());
    }
    ::_exit(126);
}

void splitLog(const std::string& log, Outcome& outcome)
{
    std::istringstream lines(log);
    std::vector<std::string> calls;
    for (std::string line; std::getline(lines, line);) {
        const bool firstFrameBegins = outcome.startUp.empty() && line.starts_with("glClear ");
        if (firstFrameBegins) {
            outcome.startUp.swap(calls);
        }
        if (line.starts_with("-- pass")) {
            outcome.frames.push_back(calls);
            calls.clear();
        } else {
            calls.push_back(line);
        }
    }
    outcome.shutDown = calls;
}

} // namespace

Outcome perform(const Performance& performance)
{
    const fs::path folder = newFolder("stage");
    fs::create_directory(folder / "data");
    if (!performance.moduleBytes.empty()) {
        std::ofstream(folder / "data/olvu.xm") << performance.moduleBytes;
    } else if (performance.module) {
        write(folder / "data/olvu.xm", writeXm(*performance.module));
    }
    writePictures(folder / "data", performance);

    const pid_t child = ::fork();
    if (child == 0) {
        become(performance, folder);
    }
    int status = 0;
    ::waitpid(child, &status, 0);

    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.output = contents(folder / "output");
    outcome.errors = contents(folder / "errors");
    splitLog(contents(folder / "log"), outcome);
    fs::remove_all(folder);
    return outcome;
}
