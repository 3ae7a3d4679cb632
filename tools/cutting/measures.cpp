#include "tools/cutting/measures.h"

#include <algorithm>

namespace {

// Of an even number of values, the mean of the two in the middle.
double medianOf(std::vector<double> values)
{
    if (values.empty()) {
        return 0.0;
    }
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// Of the ten frames before this one, without the film's first, which has none before it.
double usualChange(std::span<const FrameValues> film, std::size_t frame)
{
    const std::size_t first = frame > kFramesBefore ? frame - kFramesBefore : 1;
    std::vector<double> changes;
    for (std::size_t i = first; i < frame; ++i) {
        changes.push_back(film[i].change);
    }
    return medianOf(std::move(changes));
}

// The mean over a run of frames of what `value` takes from each.
template <typename Value>
double meanOf(std::span<const FrameValues> film, const FrameRange& frames, Value value)
{
    double sum = 0.0;
    for (std::uint64_t i = frames.begin; i < frames.end; ++i) {
        sum += film[i].*value;
    }
    return frames.end > frames.begin ? sum / static_cast<double>(frames.end - frames.begin) : 0.0;
}

} // namespace

std::vector<Impact> impactsOf(std::span<const FrameValues> film, std::span<const Moment> moments,
                              FrameRate rate)
{
    std::vector<Impact> impacts;
    for (const Moment& moment : moments) {
        const std::uint64_t frame = frameOf(moment, rate);
        if (frame == 0 || frame >= film.size()) {
            continue;
        }
        Impact impact{moment, frame, film[frame].change, usualChange(film, frame), 0.0};
        impact.ratio = impact.change / std::max(impact.usual, kLeastUsual);
        impacts.push_back(impact);
    }
    return impacts;
}

std::vector<Run> stillRuns(std::span<const FrameValues> film, std::size_t length, double most)
{
    std::vector<Run> runs;
    for (std::size_t begin = 0; begin + length <= film.size(); ++begin) {
        const FrameRange changes{begin + 1, begin + length};
        if (meanOf(film, changes, &FrameValues::change) >= most) {
            continue;
        }
        if (!runs.empty() && begin <= runs.back().frames.end) {
            runs.back().frames.end = begin + length;
        } else {
            runs.push_back({
                {begin, begin + length},
                0.0
            });
        }
    }
    for (Run& run : runs) {
        run.level = meanOf(film, {run.frames.begin + 1, run.frames.end}, &FrameValues::change);
    }
    return runs;
}

std::vector<Run> darkRuns(std::span<const FrameValues> film, std::size_t length, double most)
{
    std::vector<Run> runs;
    for (std::size_t i = 0; i < film.size(); ++i) {
        if (film[i].mean >= most) {
            continue;
        }
        if (runs.empty() || runs.back().frames.end != i) {
            runs.push_back({
                {i, i},
                0.0
            });
        }
        runs.back().frames.end = i + 1;
    }
    std::erase_if(runs,
                  [&](const Run& run) { return run.frames.end - run.frames.begin <= length; });
    for (Run& run : runs) {
        run.level = meanOf(film, run.frames, &FrameValues::mean);
    }
    return runs;
}

std::uint64_t mostBlownOut(std::span<const FrameValues> film)
{
    const auto most = std::ranges::max_element(film, {}, &FrameValues::blownOut);
    return static_cast<std::uint64_t>(most - film.begin());
}
