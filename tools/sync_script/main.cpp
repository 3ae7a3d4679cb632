// sync_script [MODULE]                             prints the script and its shots
// sync_script --shots [MODULE]                     prints the shots alone
// sync_script --still-times [MODULE]               prints when stills are taken: 12.05,40.70
// sync_script --strip FILE [--stills DIR] [MODULE] draws it into FILE.png or FILE.svg
#include "cues/scenes_and_events.h"
#include "tools/sync_script/script.h"
#include "tools/sync_script/sections.h"
#include "tools/sync_script/stills.h"
#include "tools/sync_script/strip.h"
#include "tools/sync_script/text.h"

#include <exception>
#include <iostream>
#include <optional>
#include <span>
#include <string>

namespace {

struct Options {
    std::string module = cues::kModulePath;
    std::string strip;
    std::string stills;
    bool stillTimes = false;
    bool shots = false;
};

// None if they are wrong.
std::optional<Options> readOptions(std::span<char*> arguments)
{
    Options options;
    bool hasModule = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string word = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (word == "--still-times") {
            options.stillTimes = true;
        } else if (word == "--shots") {
            options.shots = true;
        } else if (word == "--strip" && hasValue) {
            options.strip = arguments[++i];
        } else if (word == "--stills" && hasValue) {
            options.stills = arguments[++i];
        } else if (!hasModule && !word.starts_with("-")) {
            options.module = word;
            hasModule = true;
        } else {
            return std::nullopt;
        }
    }
    return options;
}

void run(const Options& options)
{
    const Script script = readScript(options.module);
    if (options.stillTimes) {
        std::cout << stillTimes(chooseStills(script)) << '\n';
        return;
    }
    const std::vector<ScoreSection> sections = sectionsOf(options.module);
    if (options.shots) {
        writeShots(std::cout, script, sections);
    } else if (options.strip.empty()) {
        writeText(std::cout, script, sections);
    } else {
        drawStrip(options.strip, script, sections, options.stills);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::optional<Options> options =
        readOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!options) {
        std::cerr << "usage: sync_script [--shots | --still-times | --strip FILE [--stills DIR]] "
                     "[MODULE]\n";
        return 2;
    }
    try {
        run(*options);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
