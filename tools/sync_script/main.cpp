// sync_script [MODULE]                             prints the script
// sync_script --still-times [MODULE]               prints when stills are taken: 12.05,40.70
// sync_script --strip FILE [--stills DIR] [MODULE] draws it into FILE.png or FILE.svg
#include "cues/catalogue.h"
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

struct Wishes {
    std::string module = cues::kModulePath;
    std::string strip;
    std::string stills;
    bool stillTimes = false;
};

// None if they make no sense.
std::optional<Wishes> readArguments(std::span<char*> arguments)
{
    Wishes wishes;
    bool hasModule = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string word = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (word == "--still-times") {
            wishes.stillTimes = true;
        } else if (word == "--strip" && hasValue) {
            wishes.strip = arguments[++i];
        } else if (word == "--stills" && hasValue) {
            wishes.stills = arguments[++i];
        } else if (!hasModule && !word.starts_with("-")) {
            wishes.module = word;
            hasModule = true;
        } else {
            return std::nullopt;
        }
    }
    return wishes;
}

void grant(const Wishes& wishes)
{
    const Script script = readScript(wishes.module);
    if (wishes.stillTimes) {
        std::cout << stillTimes(chooseStills(script)) << '\n';
        return;
    }
    const std::vector<ScoreSection> sections = sectionsOf(wishes.module);
    if (wishes.strip.empty()) {
        writeText(std::cout, script, sections);
    } else {
        drawStrip(wishes.strip, script, sections, wishes.stills);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::optional<Wishes> wishes =
        readArguments(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!wishes) {
        std::cerr << "usage: sync_script [--still-times | --strip FILE [--stills DIR]] [MODULE]\n";
        return 2;
    }
    try {
        grant(*wishes);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return 1;
    }
    return 0;
}
