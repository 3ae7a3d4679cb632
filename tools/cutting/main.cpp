// cutting times KIND [OPTION...]               prints when a sheet's stills are taken: 12.05,40.7
// cutting sheet KIND STILLS PREFIX [OPTION...] draws its pages, and prints their names
// cutting end [OPTION...]                      prints when the recording may end, in seconds
// cutting measure [OPTION...]                  reports on the frames of the standard input, which
//                                              has what the recorder's --pixels writes
//
// KIND is cuts, events or film. tools/sheet and tools/measure say what the options are.
#include "base/window_and_view.h"
#include "cues/scenes_and_events.h"
#include "tools/cutting/moments.h"
#include "tools/cutting/report.h"
#include "tools/cutting/sheet.h"
#include "tools/sync_script/sections.h"

#include <charconv>
#include <exception>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Options {
    std::vector<std::string> words; // that are no options
    std::string section;
    Part part;
    FrameRate rate{24, 1};
    double everySeconds = 2.0;
};

class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <typename Number>
Number toNumber(const std::string& text, Number least, Number most)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !(number >= least && number <= most)) {
        throw UsageError("\"" + text + "\" is no number from " + std::to_string(least) + " to " +
                         std::to_string(most));
    }
    return number;
}

void readOption(Options& options, const std::string& name, const std::string& value)
{
    if (name == "--section") {
        options.section = value;
    } else if (name == "--orders") {
        const std::optional<Part> part = partOf(value);
        if (!part) {
            throw UsageError("--orders needs a position like 12, or two like 12-15");
        }
        options.part = *part;
    } else if (name == "--fps") {
        options.rate.frames = toNumber<std::uint64_t>(value, 1, 1000);
    } else if (name == "--every") {
        options.everySeconds = toNumber<double>(value, 0.04, 60.0);
    } else {
        throw UsageError("there is no option " + name);
    }
}

Options readOptions(std::span<char*> arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string word = arguments[i];
        if (!word.starts_with("--")) {
            options.words.push_back(word);
        } else if (i + 1 < arguments.size()) {
            readOption(options, word, arguments[++i]);
        } else {
            throw UsageError(word + " needs a value");
        }
    }
    return options;
}

// The show, and the part of it that the options name.
struct Show {
    Script script = readScript(cues::kModulePath);
    std::vector<ScoreSection> sections = sectionsOf(cues::kModulePath);
    Part part;

    explicit Show(const Options& options)
        : part(options.section.empty() ? options.part : partOf(sections, options.section))
    {
    }
};

std::vector<Moment> momentsOf(const Show& show, const std::string& kind, const Options& options)
{
    std::vector<Moment> moments;
    if (kind == "cuts") {
        moments = cutsOf(show.script);
    } else if (kind == "events") {
        moments = eventsOf(show.script);
    } else if (kind == "film") {
        moments = momentsEvery(show.script, options.everySeconds);
    } else {
        throw UsageError("sheets are cuts, events and film");
    }
    keepPart(moments, show.part);
    if (moments.empty()) {
        throw std::runtime_error("there are no " + kind + " in this part of the show");
    }
    return moments;
}

void printTimes(const std::string& kind, const Options& options)
{
    const Show show(options);
    // The frames before the part's first cut and after its last one are wanted too.
    const FrameRange whole = framesOf(show.script, {}, options.rate);
    const char* comma = "";
    for (const std::uint64_t frame :
         framesOnSheet(momentsOf(show, kind, options), kind == "film", whole, options.rate)) {
        std::cout << comma << stillTime(frame, options.rate);
        comma = ",";
    }
    std::cout << '\n';
}

void drawSheet(const std::string& kind, const std::string& stills, const std::string& prefix,
               const Options& options)
{
    const Show show(options);
    const std::vector<Moment> moments = momentsOf(show, kind, options);
    const std::string title = show.script.title + ": " + kind + "    " +
                              std::to_string(options.rate.frames) + " frames a second";
    const auto& draw = kind == "film" ? drawFilmPages : drawMomentPages;
    for (const std::string& name : draw(prefix, title, moments, stills, options.rate)) {
        std::cout << name << '\n';
    }
}

// A show that ends later would be recorded for nothing.
void printEnd(const Options& options)
{
    const Show show(options);
    const FrameRange frames = framesOf(show.script, show.part, options.rate);
    if (frames.end == frames.begin) {
        throw std::runtime_error("this part of the show is not played");
    }
    std::cout << stillTime(frames.end, options.rate) << '\n';
}

void measure(const Options& options)
{
    const Show show(options);
    constexpr std::size_t kFrameBytes = std::size_t{kViewWidth} * kViewHeight * 3;
    const std::vector<FrameValues> film = readFrames(std::cin, kFrameBytes);
    if (film.empty()) {
        throw std::runtime_error("there are no frames to measure");
    }
    writeReport(std::cout, show.script, show.part, options.rate, film);
}

void run(const Options& options)
{
    const std::vector<std::string>& words = options.words;
    if (words.size() == 2 && words[0] == "times") {
        printTimes(words[1], options);
    } else if (words.size() == 4 && words[0] == "sheet") {
        drawSheet(words[1], words[2], words[3], options);
    } else if (words.size() == 1 && words[0] == "end") {
        printEnd(options);
    } else if (words.size() == 1 && words[0] == "measure") {
        measure(options);
    } else {
        throw UsageError("usage: cutting times KIND | sheet KIND STILLS PREFIX | end | measure");
    }
}

} // namespace

int main(int argc, char** argv)
{
    try {
        run(readOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1)));
    } catch (const UsageError& error) {
        std::cerr << "kso: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "kso: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
