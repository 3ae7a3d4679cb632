#include "tools/sync_script/shots.h"

#include "cues/scenes_and_events.h"
#include "tools/sync_script/meanings.h"

#include <algorithm>

namespace {

// Freezes with different numbers look the same.
bool looksTheSame(int scene, int other)
{
    return scene == other || (isFreeze(scene) && isFreeze(other));
}

Mark markOfCut(const PlayedCue& cue)
{
    if (cue.isStruck || cue.value == cues::kEndOfShow) {
        return Mark::kNone;
    }
    if (cue.value == cues::kEmpty) {
        return cue.isLetGo ? Mark::kNone : Mark::kStop;
    }
    return Mark::kUnstruck;
}

// The shot that begins with the script, for the cuts to end.
Shot firstShot(const Script& script)
{
    Shot shot;
    shot.end = script.samples;
    if (!script.rows.empty()) {
        shot.order = script.rows.front().order;
        shot.row = script.rows.front().row;
    }
    return shot;
}

int rowsBetween(const Script& script, std::int64_t begin, std::int64_t end)
{
    const auto isInside = [&](const RowStart& row) {
        return row.sample >= begin && row.sample < end;
    };
    return static_cast<int>(std::ranges::count_if(script.rows, isInside));
}

} // namespace

bool isFreeze(int scene)
{
    return cues::sceneOf(scene) == nullptr && scene != cues::kEndOfShow;
}

std::vector<Shot> shotsOf(const Script& script)
{
    std::vector<Shot> shots = {firstShot(script)};
    for (const PlayedCue& cue : script.cues) {
        Shot& last = shots.back();
        if (cue.value != cue.scene || looksTheSame(cue.scene, last.scene) ||
            cue.value == cues::kEndOfShow) {
            continue;
        }
        if (cue.sample == last.begin) { // the first scene may be chosen by the first row
            last.scene = cue.scene;
            continue;
        }
        last.end = cue.sample;
        shots.push_back(
            {cue.scene, cue.sample, script.samples, cue.order, cue.row, 0, markOfCut(cue)});
    }
    for (Shot& shot : shots) {
        shot.rows = rowsBetween(script, shot.begin, shot.end);
    }
    return shots;
}

std::vector<Mark> marksOf(const Script& script)
{
    const std::vector<Shot> shots = shotsOf(script);
    std::vector<Mark> marks;
    for (const PlayedCue& cue : script.cues) {
        if (cues::isEvent(cue.value)) {
            const bool isSeen = meaningOf(cue) != nullptr;
            marks.push_back(isSeen && !cue.isStruck ? Mark::kUnstruck : Mark::kNone);
            continue;
        }
        const auto cut = std::ranges::find(shots, cue.sample, &Shot::begin);
        const bool isCut = cut != shots.end() && cut->scene == cue.value;
        marks.push_back(isCut ? cut->mark : Mark::kNone);
    }
    return marks;
}

ShotLengths lengthsOf(std::span<const Shot> shots)
{
    ShotLengths lengths{shots.size(), 0.0, {}};
    for (const Shot& shot : shots) {
        lengths.mean += secondsOf(shot) / static_cast<double>(shots.size());
        if (secondsOf(shot) > secondsOf(lengths.longest)) {
            lengths.longest = shot;
        }
    }
    return lengths;
}

double secondsOf(const Shot& shot)
{
    return secondsAt(shot.end - shot.begin);
}
