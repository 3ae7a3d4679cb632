#include "tools/cutting/moments.h"

#include "tools/sync_script/meanings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string_view>

namespace {

// The row that is played at a sample.
const RowStart& rowAt(const Script& script, std::int64_t sample)
{
    const auto next = std::ranges::upper_bound(script.rows, sample, {}, &RowStart::sample);
    return next == script.rows.begin() ? *next : *(next - 1);
}

int sceneAt(const std::vector<Shot>& shots, std::int64_t sample)
{
    const auto next = std::ranges::upper_bound(shots, sample, {}, &Shot::begin);
    return next == shots.begin() ? next->scene : (next - 1)->scene;
}

std::optional<int> toNumber(std::string_view text)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number >= 0 ? std::optional(number)
                                                              : std::nullopt;
}

} // namespace

std::vector<Moment> cutsOf(const Script& script)
{
    std::vector<Moment> cuts;
    const std::vector<Shot> shots = shotsOf(script);
    for (std::size_t i = 1; i < shots.size(); ++i) {
        const Shot& shot = shots[i];
        cuts.push_back({shot.begin, shot.order, shot.row, shot.scene,
                        std::string(sceneName(shots[i - 1].scene)) + " to " + sceneName(shot.scene),
                        shot.mark});
    }
    return cuts;
}

std::vector<Moment> eventsOf(const Script& script)
{
    std::vector<Moment> events;
    const std::vector<Mark> marks = marksOf(script);
    for (std::size_t i = 0; i < script.cues.size(); ++i) {
        const PlayedCue& cue = script.cues[i];
        if (meaningOf(cue) == nullptr) {
            continue;
        }
        const std::string words = asEffect(cue.value) + ' ' + inWords(cue);
        if (!events.empty() && events.back().sample == cue.sample) {
            events.back().words += ", " + words;
        } else {
            events.push_back({cue.sample, cue.order, cue.row, cue.scene, words, marks[i]});
        }
    }
    return events;
}

std::vector<Moment> momentsEvery(const Script& script, double seconds)
{
    std::vector<Moment> moments;
    const std::vector<Shot> shots = shotsOf(script);
    for (int i = 0; !script.rows.empty(); ++i) {
        const std::int64_t sample = std::llround(i * seconds * kSamplesPerSecond);
        if (sample >= script.samples) {
            break;
        }
        const RowStart& row = rowAt(script, sample);
        const int scene = sceneAt(shots, sample);
        moments.push_back({sample, row.order, row.row, scene, sceneName(scene), Mark::kNone});
    }
    return moments;
}

Part partOf(std::span<const ScoreSection> sections, const std::string& name)
{
    std::string names;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i].name == name) {
            Part part;
            part.firstOrder = static_cast<int>(sections[i].firstOrder);
            if (i + 1 < sections.size()) {
                part.lastOrder = static_cast<int>(sections[i + 1].firstOrder) - 1;
            }
            return part;
        }
        names += ' ' + sections[i].name;
    }
    throw std::runtime_error("there is no section " + name + "; sections are" + names);
}

std::optional<Part> partOf(const std::string& orders)
{
    const std::size_t dash = std::min(orders.find('-'), orders.size());
    const std::optional<int> first = toNumber(std::string_view(orders).substr(0, dash));
    const std::optional<int> last =
        dash == orders.size() ? first : toNumber(std::string_view(orders).substr(dash + 1));
    return first && last && *first <= *last ? std::optional(Part{*first, *last}) : std::nullopt;
}

void keepPart(std::vector<Moment>& moments, const Part& part)
{
    std::erase_if(moments, [&](const Moment& moment) { return !part.has(moment.order); });
}

FrameRange framesOf(const Script& script, const Part& part, FrameRate rate)
{
    const auto frameHearing = [&](std::int64_t sample) {
        return rate.firstFrameHearing(static_cast<std::uint64_t>(sample));
    };
    const auto isInside = [&](const RowStart& row) {
        return part.has(row.order) && row.sample < script.samples;
    };
    const auto first = std::ranges::find_if(script.rows, isInside);
    if (first == script.rows.end()) {
        return {};
    }
    const auto last = std::find_if(script.rows.rbegin(), script.rows.rend(), isInside);
    const bool isAtEnd = last == script.rows.rbegin();
    const std::int64_t end = isAtEnd ? script.samples : (last - 1)->sample;
    return {frameHearing(first->sample), frameHearing(std::min(end, script.samples))};
}

std::uint64_t frameOf(const Moment& moment, FrameRate rate)
{
    return rate.firstFrameHearing(static_cast<std::uint64_t>(moment.sample));
}

std::string stillTime(std::uint64_t frame, FrameRate rate)
{
    // Rounded up, so that the frame is already on the screen.
    const std::uint64_t microseconds =
        (frame * rate.seconds * kMicrosecondsPerSecond + rate.frames - 1) / rate.frames;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%llu.%06llu",
                  static_cast<unsigned long long>(microseconds / kMicrosecondsPerSecond),
                  static_cast<unsigned long long>(microseconds % kMicrosecondsPerSecond));
    return text.data();
}
