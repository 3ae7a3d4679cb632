#include "tools/music_report/parts.h"

#include "tools/music_report/rubs.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace {

constexpr std::ptrdiff_t kBarRows = 16;

std::span<const float> cut(const std::vector<float>& powers, Steps steps)
{
    const std::size_t end = std::min(steps.end, powers.size());
    const std::size_t begin = std::min(steps.begin, end);
    return std::span(powers).subspan(begin, end - begin);
}

bool isIn(const Section& section, const PlayedNote& note)
{
    return note.order >= section.firstOrder && note.order < section.endOrder;
}

} // namespace

std::vector<OrderFigures> measureOrders(const Performance& performance, const Sound& all)
{
    std::vector<OrderFigures> figures(static_cast<std::size_t>(performance.endOrder()));
    std::size_t row = 0;
    const std::vector<RowStart>& rows = performance.rows();
    while (row < rows.size()) {
        const int order = rows[row].order;
        const std::int64_t begin = rows[row].sample;
        while (row < rows.size() && rows[row].order == order) {
            ++row;
        }
        const std::int64_t end = row < rows.size() ? rows[row].sample : performance.samples();
        OrderFigures& figure = figures[static_cast<std::size_t>(order)];
        figure.steps = stepsOf(begin, end);
        figure.truePeak = truePeak(
            std::span(all).subspan(static_cast<std::size_t>(begin) * kSoundChannels,
                                   static_cast<std::size_t>(end - begin) * kSoundChannels));
        figure.spectrum.add(all, begin, end);
    }
    return figures;
}

std::vector<Arrival> findArrivals(const Performance& performance, const std::vector<float>& powers)
{
    const std::vector<RowStart>& rows = performance.rows();
    const auto bar = [&](std::ptrdiff_t first, std::ptrdiff_t end) {
        const auto count = std::ssize(rows);
        first = std::max<std::ptrdiff_t>(first, 0);
        const std::int64_t last =
            end < count ? rows[static_cast<std::size_t>(end)].sample : performance.samples();
        return plainLoudness(
            cut(powers, stepsOf(rows[static_cast<std::size_t>(first)].sample, last)));
    };
    std::vector<Arrival> arrivals;
    for (std::ptrdiff_t i = 1; i < std::ssize(rows); ++i) {
        const int order = rows[static_cast<std::size_t>(i)].order;
        if (order != rows[static_cast<std::size_t>(i - 1)].order) {
            arrivals.push_back({order, bar(i - kBarRows, i), bar(i, i + kBarRows)});
        }
    }
    return arrivals;
}

KickAttack measureKicks(const Performance& performance, const Stems& stems, const Section& section)
{
    constexpr double kBuried = -6.0; // dB
    std::vector<double> over;
    std::vector<double> clickOver;
    for (std::size_t i = 0; i < performance.notes().size(); ++i) {
        const PlayedNote& note = performance.notes()[i];
        if (isIn(section, note) &&
            performance.instrument(note.instrument).find("kick") != std::string::npos) {
            const Attack& attack = stems.attacks[i];
            over.push_back(decibels(attack.own) - decibels(attack.rest));
            clickOver.push_back(decibels(attack.ownClick) - decibels(attack.restClick));
        }
    }
    if (over.empty()) {
        return {};
    }
    std::ranges::sort(over);
    std::ranges::sort(clickOver);
    const auto buried = std::ranges::lower_bound(clickOver, kBuried) - clickOver.begin();
    return {static_cast<int>(over.size()), over[over.size() / 2], clickOver[clickOver.size() / 2],
            static_cast<double>(buried) / static_cast<double>(over.size())};
}

std::optional<LastChord> findLastChord(const Performance& performance, const Stems& stems,
                                       const Section& section)
{
    constexpr int kLeastNotes = 3;
    constexpr std::int64_t kLasting = kSamplesPerSecond / 2;
    // Notes of the last row that has enough of them.
    std::vector<PlayedNote> chord;
    std::vector<PlayedNote> here;
    for (const PlayedNote& note : performance.notes()) {
        if (!isIn(section, note) || note.end - note.begin < kLasting ||
            !hasPitch(performance.instrument(note.instrument))) {
            continue;
        }
        if (!here.empty() && here.front().begin != note.begin) {
            here.clear();
        }
        here.push_back(note);
        if (std::ssize(here) >= kLeastNotes) {
            chord = here;
        }
    }
    if (chord.empty()) {
        return std::nullopt;
    }
    LastChord last = {chord, {}, chord.front().begin};
    const auto count = static_cast<std::size_t>(performance.samples() / kStepSamples);
    std::vector<double> sum(count);
    const auto lastHeard = [&](const auto& powers, Steps steps) {
        std::size_t end = steps.begin;
        for (std::size_t i = steps.begin; i < std::min(steps.end, count); ++i) {
            end = loudnessOf(static_cast<double>(powers[i])) > kChordEnd ? i + 1 : end;
        }
        return static_cast<std::int64_t>(end) * kStepSamples;
    };
    for (const PlayedNote& note : chord) {
        const auto& powers = stems.powers[static_cast<std::size_t>(note.channel)];
        const Steps steps = stepsOf(note.begin, note.end);
        for (std::size_t i = steps.begin; i < std::min(steps.end, count); ++i) {
            sum[i] += static_cast<double>(powers[i]);
        }
        last.ends.push_back(lastHeard(powers, steps));
    }
    last.end = lastHeard(sum, stepsOf(chord.front().begin, performance.samples()));
    return last;
}
