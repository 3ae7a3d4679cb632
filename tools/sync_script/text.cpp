#include "tools/sync_script/text.h"

#include "sound/mixer.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/sections.h"
#include "tools/sync_script/shots.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <ostream>
#include <vector>

namespace {

constexpr std::size_t kMaxLine = 160;

template <typename... Values>
std::string line(const char* format, Values... values)
{
    std::array<char, kMaxLine> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

const char* asText(Mark mark)
{
    switch (mark) {
    case Mark::kStop:
        return "stop";
    case Mark::kUnstruck:
        return "!";
    case Mark::kNone:
        break;
    }
    return "";
}

void writeCue(std::ostream& stream, const PlayedCue& cue, Mark mark)
{
    stream << line("%4s %9s %6d %4d  %-5s %4d  %-16s %s\n", asText(mark),
                   clockTime(cue.sample).c_str(), cue.order, cue.row, asEffect(cue.value).c_str(),
                   cue.value, sceneName(cue.scene), inWords(cue).c_str());
}

void writeCues(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections)
{
    stream << line("%4s %9s %6s %4s  %-5s %4s  %-16s %s\n", "", "time", "order", "row", "value", "",
                   "scene", "meaning");
    const std::vector<Mark> marks = marksOf(script);
    std::string section;
    for (std::size_t i = 0; i < script.cues.size(); ++i) {
        const std::string here = sectionAt(sections, script.cues[i].order);
        if (here != section) {
            stream << '\n' << here << '\n';
            section = here;
        }
        writeCue(stream, script.cues[i], marks[i]);
    }
}

// "1 cut", "2 cuts"
std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

// "7 shots, mean 3.29 s, longest 9.60 s"
std::string inWords(std::span<const Shot> shots)
{
    const ShotLengths lengths = lengthsOf(shots);
    return counted(lengths.count, "shot") +
           line(", mean %.2f s, longest %.2f s", lengths.mean, secondsOf(lengths.longest));
}

void writeShotsOfOneSection(std::ostream& stream, const std::string& section,
                            std::span<const Shot> shots)
{
    stream << '\n' << section << (section.empty() ? "" : ": ") << inWords(shots) << '\n';
    for (const Shot& shot : shots) {
        stream << line("%4s %9s %6d %4d  %-16s %7.2f s %5d %s\n", asText(shot.mark),
                       clockTime(shot.begin).c_str(), shot.order, shot.row, sceneName(shot.scene),
                       secondsOf(shot), shot.rows, shot.rows == 1 ? "row" : "rows");
    }
}

void writeSummary(std::ostream& stream, const Script& script, std::span<const Shot> shots)
{
    const Shot longest = lengthsOf(shots).longest;
    const auto black =
        std::ranges::count_if(shots, [](const Shot& shot) { return shot.scene == cues::kEmpty; });
    const auto frozen =
        std::ranges::count_if(shots, [](const Shot& shot) { return isFreeze(shot.scene); });
    stream << "\nthe whole: " << inWords(shots) << " (" << sceneName(longest.scene) << " at "
           << clockTime(longest.begin) << "); " << black << " black, " << frozen << " frozen\n";

    const std::vector<Mark> marks = marksOf(script);
    std::size_t cuts = 0;
    std::size_t events = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i] == Mark::kUnstruck) {
            ++(cues::isEvent(script.cues[i].value) ? events : cuts);
        }
    }
    const auto stops = static_cast<std::size_t>(std::ranges::count(marks, Mark::kStop));
    stream << line("%4s  ", asText(Mark::kUnstruck)) << counted(cuts, "cut") << " and "
           << counted(events, "event") << " where no note begins\n"
           << line("%4s  ", asText(Mark::kStop)) << counted(stops, "cut")
           << " to black where no note begins or ends\n";
}

const char* endInWords(ScriptEnd end)
{
    switch (end) {
    case ScriptEnd::kValue:
        return "the show ends";
    case ScriptEnd::kTooLong:
        return "stopped here, after an hour without an end";
    case ScriptEnd::kPlayed:
        break;
    }
    return "the module has ended or repeats itself, and nothing has ended the show";
}

} // namespace

void writeText(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections)
{
    stream << (script.title.empty() ? "a module without a name" : script.title) << ": "
           << script.rows.size() << " rows, " << script.cues.size() << " effects\n\n";
    writeCues(stream, script, sections);
    stream << line("\n%4s %9s  %s\n\n\n", "", clockTime(script.samples).c_str(),
                   endInWords(script.end));
    writeShots(stream, script, sections);
}

void writeShots(std::ostream& stream, const Script& script, std::span<const ScoreSection> sections)
{
    stream << line("%4s %9s %6s %4s  %-16s %9s\n", "", "time", "order", "row", "shot", "length");
    const std::vector<Shot> shots = shotsOf(script);
    for (std::size_t i = 0, next = 0; i < shots.size(); i = next) {
        const std::string section = sectionAt(sections, shots[i].order);
        while (next < shots.size() && sectionAt(sections, shots[next].order) == section) {
            ++next;
        }
        writeShotsOfOneSection(stream, section, std::span(shots).subspan(i, next - i));
    }
    writeSummary(stream, script, shots);
}

std::string clockTime(std::int64_t sample)
{
    const std::int64_t milliseconds = (sample * 1000 + kMixRateHz / 2) / kMixRateHz;
    return line("%d:%02d.%03d", static_cast<int>(milliseconds / 60000),
                static_cast<int>(milliseconds / 1000 % 60), static_cast<int>(milliseconds % 1000));
}
