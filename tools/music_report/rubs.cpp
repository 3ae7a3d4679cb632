#include "tools/music_report/rubs.h"

#include "tools/music_report/loudness.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>

namespace {

constexpr double kLeastLoudness = -50.0; // LUFS
constexpr std::size_t kWindow = 40;      // steps: what is shorter is less loud
constexpr double kHeard = 12.0;          // LU under its loudest that a rub goes on

// Instruments that have no pitch, whatever note they play.
constexpr std::array<std::string_view, 23> kUnpitched = {
    "heart", "kick",    "hard-kick", "snare",   "hard-snare", "ghost",  "clap", "rim",
    "hat",   "hat-tip", "open-hat",  "ride",    "shaker",     "tick",   "tom",  "metal",
    "wind",  "crash",   "riser",     "reverse", "boom",       "sparks", "bark",
};

// A note of these is a chord: semitones over the note.
struct Chord {
    std::string_view instrument;
    std::vector<int> intervals;
};

// What an instrument is apart from where it stands: "hat" of "second-hat".
std::string_view kindOfInstrument(std::string_view name)
{
    constexpr std::string_view kPrefix = "second-";
    if (name.starts_with(kPrefix)) {
        name.remove_prefix(kPrefix.size());
    }
    for (const std::string_view suffix : {"-far", "-left"}) {
        if (name.ends_with(suffix)) {
            name.remove_suffix(suffix.size());
        }
    }
    return name;
}

std::vector<int> intervalsOf(const std::string& instrument)
{
    static const std::array kChords = {
        Chord{"skank", {0, 3, 7, 10}},
        Chord{"brass", {0, 3, 7}    },
    };
    if (!hasPitch(instrument)) {
        return {};
    }
    const auto* const chord =
        std::ranges::find(kChords, kindOfInstrument(instrument), &Chord::instrument);
    return chord != kChords.end() ? chord->intervals : std::vector{0};
}

std::optional<RubKind> kindOf(int low, int high)
{
    switch ((high - low) % 12) {
    case 1:
        return high - low == 1 ? RubKind::kSecond : RubKind::kNinth;
    case 6:
        return RubKind::kTritone;
    case 11:
        return RubKind::kSeventh;
    default:
        return std::nullopt;
    }
}

// Two notes that sound together, and how loud the softer one is meanwhile.
struct Meeting {
    double seconds = 0.0;
    double loudness = kSilence;
    double underAll = 0.0;
};

Meeting meetingOf(const PlayedNote& first, const PlayedNote& second, const Stems& stems,
                  const std::vector<float>& all)
{
    const auto& one = stems.powers[static_cast<std::size_t>(first.channel)];
    const auto& other = stems.powers[static_cast<std::size_t>(second.channel)];
    const Steps steps =
        stepsOf(std::max(first.begin, second.begin), std::min(first.end, second.end));
    std::vector<double> softer;
    for (std::size_t i = steps.begin; i < std::min(steps.end, one.size()); ++i) {
        softer.push_back(static_cast<double>(std::min(one[i], other[i])));
    }
    Meeting meeting;
    double sum = 0.0;
    double sumOfAll = 0.0;
    for (std::size_t i = 0; i < softer.size(); ++i) {
        sum += softer[i];
        sumOfAll += static_cast<double>(all[steps.begin + i]);
        if (i >= kWindow) {
            sum -= softer[i - kWindow];
            sumOfAll -= static_cast<double>(all[steps.begin + i - kWindow]);
        }
        const double loudness = loudnessOf(sum / kWindow);
        if (loudness > meeting.loudness) {
            meeting.loudness = loudness;
            meeting.underAll = decibels(sumOfAll) - decibels(sum);
        }
    }
    const double least = std::max(meeting.loudness - kHeard, kLeastLoudness);
    const auto heard =
        std::ranges::count_if(softer, [least](double power) { return loudnessOf(power) >= least; });
    meeting.seconds = static_cast<double>(heard * kStepSamples) / kSamplesPerSecond;
    return meeting;
}

// A chord's nearest rub counts; seconds before ninths before sevenths before tritones.
std::optional<Rub> rubOf(const PlayedNote& first, const std::vector<int>& intervals,
                         const PlayedNote& second, const std::vector<int>& others)
{
    std::optional<Rub> worst;
    for (const int interval : intervals) {
        for (const int other : others) {
            const auto [low, high] = std::minmax({first.note + interval, second.note + other});
            const std::optional<RubKind> kind = kindOf(low, high);
            if (kind && (!worst || *kind < worst->kind)) {
                worst =
                    Rub{.kind = *kind, .first = first, .second = second, .low = low, .high = high};
            }
        }
    }
    return worst;
}

// What several channels double, and what comes back in an order, is told once, where it is loudest.
std::vector<Rub> merged(const std::vector<Rub>& rubs)
{
    using Key = std::tuple<int, int, int, int, int>;
    std::map<Key, std::size_t> moments;
    std::map<Key, std::size_t> pairs;
    std::vector<Rub> kept;
    for (const Rub& rub : rubs) {
        const bool isTritone = rub.kind == RubKind::kTritone;
        const Key moment = {rub.second.order, rub.second.row, std::min(rub.low % 12, rub.high % 12),
                            std::max(rub.low % 12, rub.high % 12), isTritone};
        const Key pair = {rub.second.order, rub.first.channel, rub.second.channel, rub.low,
                          rub.high};
        if (const auto found = moments.find(moment); found != moments.end()) {
            ++kept[found->second].voices;
        } else if (const auto place = pairs.find(pair); place != pairs.end()) {
            ++kept[place->second].times;
            moments[moment] = place->second;
        } else {
            moments[moment] = kept.size();
            pairs[pair] = kept.size();
            kept.push_back(rub);
        }
    }
    return kept;
}

} // namespace

bool hasPitch(const std::string& instrument)
{
    return std::ranges::find(kUnpitched, kindOfInstrument(instrument)) == kUnpitched.end();
}

std::vector<Rub> findRubs(const Performance& performance, const Stems& stems,
                          const std::vector<float>& all)
{
    const std::vector<PlayedNote>& notes = performance.notes();
    std::vector<std::vector<int>> intervals;
    std::ranges::transform(notes, std::back_inserter(intervals), [&](const PlayedNote& note) {
        return intervalsOf(performance.instrument(note.instrument));
    });
    std::vector<Rub> rubs;
    std::vector<std::size_t> sounding; // indices of notes, one for each channel
    for (std::size_t i = 0; i < notes.size(); ++i) {
        std::erase_if(sounding, [&](std::size_t at) { return notes[at].end <= notes[i].begin; });
        for (const std::size_t at : sounding) {
            std::optional<Rub> rub = rubOf(notes[at], intervals[at], notes[i], intervals[i]);
            if (!rub) {
                continue;
            }
            const Meeting meeting = meetingOf(notes[at], notes[i], stems, all);
            if (meeting.loudness >= kLeastLoudness) {
                rub->seconds = meeting.seconds;
                rub->loudness = meeting.loudness;
                rub->underAll = meeting.underAll;
                rubs.push_back(*rub);
            }
        }
        sounding.push_back(i);
    }
    std::ranges::stable_sort(rubs, std::ranges::greater(), &Rub::loudness);
    return merged(rubs);
}

const char* inWords(RubKind kind)
{
    constexpr std::array kWords = {"second", "ninth", "seventh", "tritone"};
    return kWords.at(static_cast<std::size_t>(kind));
}
