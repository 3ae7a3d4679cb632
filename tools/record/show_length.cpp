#include "tools/record/show_length.h"

#include "cues/scenes_and_events.h"
#include "show/options.h"
#include "tools/record/process.h"
#include "virtual/row_walk.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

namespace {

// Where the music starts, in the module's order list.
int startOrderOf(const RecordOptions& recordOptions)
{
    std::vector<std::string> words = recordOptions.programArguments;
    words.insert(words.begin(), "kso");
    readOptions(static_cast<int>(words.size()), pointersTo(words).data());
    return cues::startOrderOf(options.startScene).value_or(0);
}

bool endsShow(const RowWalk& walk)
{
    return std::ranges::any_of(
        walk.effects(), [](const RowEffect& effect) { return effect.value == cues::kEndOfShow; });
}

// From the first time that this order is played.
std::optional<std::uint64_t> samplesFrom(int order, RowWalk& walk)
{
    std::optional<std::int64_t> begin;
    while (walk.next()) {
        if (!begin && walk.row().order == order) {
            begin = walk.row().sample;
        }
        if (begin && endsShow(walk)) {
            return static_cast<std::uint64_t>(walk.row().sample - *begin);
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::uint64_t> expectedSamples(const RecordOptions& recordOptions)
{
    try {
        std::ifstream file(recordOptions.show / cues::kModulePath, std::ios::binary);
        RowWalk walk(file);
        return samplesFrom(startOrderOf(recordOptions), walk);
    } catch (const std::exception&) {
        return std::nullopt; // the show itself says what is wrong with its module
    }
}

std::optional<std::uint64_t> expectedEnd(const RecordOptions& recordOptions)
{
    if (recordOptions.endFrame()) {
        return recordOptions.endFrame();
    }
    const std::optional<std::uint64_t> samples = expectedSamples(recordOptions);
    return samples ? std::optional(recordOptions.rate.firstFrameHearing(*samples)) : std::nullopt;
}
