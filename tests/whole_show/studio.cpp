#include "tests/whole_show/studio.h"

#include "tests/whole_show/files.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

// What hangs is ended.
constexpr const char* kRecord = "/usr/bin/timeout --foreground 120 " KSO_RECORD;

} // namespace

Studio::Studio(const XmModule& module) : folder_(newFolder("studio"))
{
    fs::create_directory(folder_ / "data");
    for (const auto& file : fs::directory_iterator("data")) {
        if (file.path().extension() == ".tga") {
            fs::create_symlink(fs::absolute(file.path()), folder_ / file.path());
        }
    }
    if (!module.patterns.empty()) {
        write(folder_ / "data/olvu.xm", writeXm(module));
    }
}

Studio::~Studio()
{
    fs::remove_all(folder_);
}

Result Studio::run(const std::string& command) const
{
    ::setenv("RECORD", kRecord, 1);
    ::setenv("RECORDER", KSO_RECORD, 1);
    const std::string whole =
        "cd " + folder_.string() + " && { " + command + "\n} >output 2>errors";
    const int status = std::system(whole.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_ / "output"),
            contents(folder_ / "errors")};
}

std::vector<FrameLine> Studio::list(const std::string& options) const
{
    const Result result = run("$RECORD --show . --hashes list " + options);
    EXPECT_EQ(result.status, 0) << options << '\n' << result.errors;
    EXPECT_EQ(result.output, "");
    std::vector<FrameLine> lines;
    std::istringstream text(contents(folder_ / "list"));
    for (FrameLine line; text >> line.number >> line.picture >> line.sound;) {
        lines.push_back(line);
    }
    return lines;
}

std::string fps(const FrameRate& rate)
{
    return " --fps " + std::to_string(rate.frames) + '/' + std::to_string(rate.seconds) + ' ';
}
