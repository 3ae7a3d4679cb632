// music_report [OPTION...] [PART|SECTION|ORDER|FILE.xm]...; tools/hear says what they mean.
#include "cues/scenes_and_events.h"
#include "tools/music_report/report.h"
#include "tools/music_report/stems.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <iostream>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace {

struct Options {
    std::string module = cues::kModulePath;
    std::string stems; // folder; empty: none
    ReportWishes wishes;
    std::vector<std::string> stretches; // sections and orders, by name
};

std::optional<int> toNumber(const std::string& word)
{
    int number = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && stop == end && number >= 0 ? std::optional(number)
                                                              : std::nullopt;
}

// None if they are wrong.
std::optional<Options> readOptions(std::span<char*> arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string word = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (word == "--stems" && hasValue) {
            options.stems = arguments[++i];
        } else if (word == "--rubs" && hasValue && toNumber(arguments[i + 1])) {
            options.wishes.rubs = static_cast<std::size_t>(*toNumber(arguments[++i]));
        } else if (word.starts_with("-")) {
            return std::nullopt;
        } else if (word.ends_with(".xm")) {
            options.module = word;
        } else if (isPart(word)) {
            options.wishes.parts.insert(partNamed(word));
        } else {
            options.stretches.push_back(word);
        }
    }
    if (options.wishes.parts.empty() && options.stems.empty()) {
        options.wishes.parts = {Part::kLoudness, Part::kWidth,  Part::kOctaves,
                                Part::kArrivals, Part::kOrders, Part::kKick,
                                Part::kChord,    Part::kRubs,   Part::kSevenths};
    }
    return options;
}

Section stretchNamed(const Performance& performance, const std::string& name)
{
    const std::optional<int> order = toNumber(name);
    if (order && *order < performance.endOrder()) {
        return {name, *order, *order + 1};
    }
    const auto section = std::ranges::find(performance.sections(), name, &Section::name);
    if (section == performance.sections().end()) {
        std::string known;
        for (const Section& each : performance.sections()) {
            known += " " + each.name;
        }
        throw std::runtime_error("there is no part, section or order \"" + name +
                                 "\"; the sections are:" + known);
    }
    return *section;
}

void run(Options options)
{
    const Performance performance(options.module);
    for (const std::string& name : options.stretches) {
        options.wishes.stretches.push_back(stretchNamed(performance, name));
    }
    if (!options.stems.empty()) {
        std::int64_t begin = 0;
        std::int64_t end = performance.samples();
        if (!options.wishes.stretches.empty()) {
            const auto& stretches = options.wishes.stretches;
            begin = performance.startOf(
                std::ranges::min(stretches, {}, &Section::firstOrder).firstOrder);
            end = performance.startOf(std::ranges::max(stretches, {}, &Section::endOrder).endOrder);
            end = std::max(begin, end); // orders may be played in another order
        }
        writeStems(performance, options.stems, begin, end);
    }
    if (!options.wishes.parts.empty()) {
        writeReport(std::cout, performance, options.wishes);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::optional<Options> options =
        readOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!options) {
        std::cerr << "usage: music_report [--stems FOLDER] [--rubs N] "
                     "[PART|SECTION|ORDER|FILE.xm]...\n";
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
