#include "tools/sync_script/text.h"

#include "sound/mixer.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/sections.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <ostream>

namespace {

constexpr std::size_t kMaxLine = 160;

template <typename... Values>
std::string line(const char* format, Values... values)
{
    std::array<char, kMaxLine> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

void writeCue(std::ostream& stream, const PlayedCue& cue)
{
    stream << line("%9s %6d %4d  %-5s %4d  %-16s %s\n", clockTime(cue.sample).c_str(), cue.order,
                   cue.row, asEffect(cue.value).c_str(), cue.value, sceneName(cue.scene),
                   inWords(cue).c_str());
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
           << script.rows.size() << " rows, " << script.cues.size() << " effects\n\n"
           << line("%9s %6s %4s  %-5s %4s  %-16s %s\n", "time", "order", "row", "value", "",
                   "scene", "meaning");
    std::string section;
    for (const PlayedCue& cue : script.cues) {
        const std::string here = sectionAt(sections, cue.order);
        if (here != section) {
            stream << '\n' << here << '\n';
            section = here;
        }
        writeCue(stream, cue);
    }
    stream << line("\n%9s  %s\n", clockTime(script.samples).c_str(), endInWords(script.end));
}

std::string clockTime(std::int64_t sample)
{
    const std::int64_t milliseconds = (sample * 1000 + kMixRateHz / 2) / kMixRateHz;
    return line("%d:%02d.%03d", static_cast<int>(milliseconds / 60000),
                static_cast<int>(milliseconds / 1000 % 60), static_cast<int>(milliseconds % 1000));
}
