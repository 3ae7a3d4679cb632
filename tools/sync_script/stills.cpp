#include "tools/sync_script/stills.h"

#include "tools/sync_script/meanings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <set>
#include <string_view>

namespace {

constexpr double kMaxCutSeconds = 2.0; // a visit goes on across a shorter cut to another scene
constexpr double kStillsAcross = 7.0;  // as many as fit side by side

// Where in its stretch a still may be taken, and where without events, from 0 to 1.
constexpr double kFirstPart = 0.25; // before this, most scenes are still beginning
constexpr double kLastPart = 0.97;
constexpr double kWithoutEvents = 0.43;

constexpr double kBeforeTheEnd = 0.02; // seconds, about one frame
constexpr double kAfterwards = 0.06;   // seconds from an event until it can be seen
constexpr double kHitSeconds = 0.5;
constexpr double kFadeSeconds = 2.0;

// How much can be seen at `moment` of the events before it: lasting ones count 1, others less and
// less.
double eventfulness(const Script& script, const Still& stretch, std::int64_t moment)
{
    double sum = 0.0;
    std::set<std::string_view> lasting;
    for (const PlayedCue& cue : script.cues) {
        const cues::Event* meaning = meaningOf(cue);
        if (cue.sample < stretch.begin || cue.sample > moment || meaning == nullptr) {
            continue;
        }
        const double age = secondsAt(moment - cue.sample);
        if (meaning->lasting == cues::Lasting::kBegins) {
            lasting.insert(meaning->name);
        } else if (meaning->lasting == cues::Lasting::kEnds) {
            lasting.erase(meaning->name);
        } else {
            const bool fades = meaning->lasting == cues::Lasting::kFades;
            sum += std::exp(-age / (fades ? kFadeSeconds : kHitSeconds));
        }
    }
    return sum + static_cast<double>(lasting.size());
}

// The first time from `moment` on at which a scene is on; at `moment`, another one may be cut in.
std::int64_t whenShown(const Script& script, int scene, std::int64_t moment)
{
    bool shown = true;
    for (const PlayedCue& cue : script.cues) {
        if (cue.sample > moment && (shown || cue.scene == scene)) {
            return shown ? moment : cue.sample;
        }
        shown = cue.scene == scene;
    }
    return moment;
}

double bestSeconds(const Script& script, int scene, const Still& stretch)
{
    const auto length = static_cast<double>(stretch.end - stretch.begin);
    const auto part = [&](double ratio) {
        return stretch.begin + static_cast<std::int64_t>(ratio * length);
    };
    double best = 0.0;
    std::int64_t moment = whenShown(script, scene, part(kWithoutEvents));
    for (const PlayedCue& cue : script.cues) {
        if (cue.scene != scene || cue.sample < part(kFirstPart) || cue.sample > part(kLastPart)) {
            continue;
        }
        if (const double seen = eventfulness(script, stretch, cue.sample); seen > best) {
            best = seen;
            moment = cue.sample;
        }
    }
    // Never after the stretch, when the next scene is on.
    return std::min(secondsAt(moment) + kAfterwards, secondsAt(stretch.end) - kBeforeTheEnd);
}

std::string decimal(double seconds)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", seconds);
    return text.data();
}

// The visits of all scenes; a visit goes on across short cuts to other scenes.
std::vector<SceneVisit> visitsOverCuts(const Script& script)
{
    std::vector<SceneVisit> visits;
    for (const SceneVisit& visit : sceneVisits(script)) {
        const auto before = std::ranges::find_if(visits, [&](const SceneVisit& earlier) {
            return earlier.scene == visit.scene &&
                   secondsAt(visit.begin - earlier.end) <= kMaxCutSeconds;
        });
        if (before == visits.end()) {
            visits.push_back(visit);
        } else {
            before->end = visit.end;
            visits.erase(before + 1, visits.end());
        }
    }
    return visits;
}

} // namespace

std::vector<Still> chooseStills(const Script& script)
{
    std::vector<Still> stills;
    for (const SceneVisit& visit : visitsOverCuts(script)) {
        if (!isPictured(visit.scene)) {
            continue;
        }
        const std::int64_t length = visit.end - visit.begin;
        const double share = static_cast<double>(length) / static_cast<double>(script.samples);
        const auto count = std::max<std::int64_t>(std::llround(share * kStillsAcross), 1);
        for (std::int64_t i = 0; i < count; ++i) {
            Still still{visit.begin + length * i / count, visit.begin + length * (i + 1) / count,
                        ""};
            still.seconds = decimal(bestSeconds(script, visit.scene, still));
            stills.push_back(still);
        }
    }
    return stills;
}

std::string stillTimes(std::span<const Still> stills)
{
    std::string times;
    for (const Still& still : stills) {
        times += (times.empty() ? "" : ",") + still.seconds;
    }
    return times;
}
