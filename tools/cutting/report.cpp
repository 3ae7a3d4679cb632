#include "tools/cutting/report.h"

#include "cues/scenes_and_events.h"
#include "tools/cutting/measures.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/shots.h"
#include "tools/sync_script/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <set>
#include <string>

namespace {

// What is wanted.
constexpr double kLongestShot = 20.0; // seconds
constexpr std::size_t kShots = 60;
constexpr double kCutRatio = 3.0;
constexpr double kCutShare = 0.95;
constexpr double kEventRatio = 2.0;
constexpr double kStillSeconds = 2.0;
constexpr double kStillChange = 0.3; // of 255
constexpr double kBlownOutShare = 0.12;
constexpr double kDarkSeconds = 0.5; // no measure is taken of these: black may be meant
constexpr double kDarkMean = 2.0;    // of 255

constexpr std::size_t kWeakest = 5; // listed in any case

template <typename... Values>
std::string line(const char* format, Values... values)
{
    std::array<char, 240> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

const char* asVerdict(bool isGood)
{
    return isGood ? "good" : "short of it";
}

class Report {
public:
    Report(std::ostream& stream, const Script& script, const Part& part, FrameRate rate,
           std::span<const FrameValues> film)
        : stream_(stream), script_(script), part_(part), rate_(rate), film_(film),
          shots_(shotsOf(script)), range_(framesOf(script, part, rate))
    {
        range_.end = std::min<std::uint64_t>(range_.end, film.size());
        range_.begin = std::min(range_.begin, range_.end);
    }

    void write()
    {
        stream_ << script_.title << ": "
                << line("%llu frames, %.6g a second",
                        static_cast<unsigned long long>(range_.end - range_.begin),
                        static_cast<double>(rate_.frames) / static_cast<double>(rate_.seconds))
                << "\n";
        takeCuts();
        takeEvents();
        takeStills();
        takeDark();
        takeBlownOut();
        takeShots();
        stream_ << '\n' << summary_;
    }

private:
    [[nodiscard]] std::span<const FrameValues> inside() const
    {
        return film_.subspan(range_.begin, range_.end - range_.begin);
    }
    [[nodiscard]] std::int64_t sampleOf(std::uint64_t frame) const
    {
        return static_cast<std::int64_t>(rate_.samplesBefore(frame));
    }
    [[nodiscard]] std::size_t framesIn(double seconds) const
    {
        return rate_.firstFrameFrom(
            static_cast<std::uint64_t>(seconds * double{kMicrosecondsPerSecond}));
    }
    // The shot that a frame shows.
    [[nodiscard]] const Shot& shotOf(std::uint64_t frame) const
    {
        const auto next = std::ranges::upper_bound(shots_, sampleOf(frame), {}, &Shot::begin);
        return *(next - 1);
    }
    [[nodiscard]] std::string placeOf(std::uint64_t frame) const
    {
        return std::string(sceneName(shotOf(frame).scene)) + " at " + clockTime(sampleOf(frame));
    }

    void summarise(const std::string& found, const std::string& wanted, bool isGood)
    {
        summary_ +=
            line("%-74s wanted: %-10s %s\n", found.c_str(), wanted.c_str(), asVerdict(isGood));
    }

    // Those that fall short, and a few more if there are only few; the weakest first.
    void writeImpacts(const std::string& heading, std::vector<Impact> impacts, double wanted)
    {
        std::ranges::stable_sort(impacts, {}, &Impact::ratio);
        stream_ << '\n'
                << line("%-28s %9s %10s %8s %8s  %s\n", heading.c_str(), "time", "order:row",
                        "change", "before", "times");
        for (std::size_t i = 0; i < impacts.size(); ++i) {
            const Impact& impact = impacts[i];
            if (i >= kWeakest && impact.ratio >= wanted) {
                break;
            }
            stream_ << line("%-28s %9s %7d:%02d %8.2f %8.2f %6.1f  ",
                            impact.ratio < wanted ? "  too weak" : "",
                            clockTime(impact.moment.sample).c_str(), impact.moment.order,
                            impact.moment.row, impact.change, impact.usual, impact.ratio)
                    << impact.moment.words << '\n';
        }
    }

    static std::size_t countStrong(std::span<const Impact> impacts, double wanted)
    {
        return static_cast<std::size_t>(std::ranges::count_if(
            impacts, [&](const Impact& impact) { return impact.ratio >= wanted; }));
    }

    // A cut to a freeze is none for the eye.
    void takeCuts()
    {
        std::vector<Moment> cuts = cutsOf(script_);
        keepPart(cuts, part_);
        std::erase_if(cuts, [](const Moment& cut) { return isFreeze(cut.scene); });
        const std::vector<Impact> impacts = impactsOf(film_, cuts, rate_);
        writeImpacts("cuts", impacts, kCutRatio);
        const std::size_t strong = countStrong(impacts, kCutRatio);
        const double share =
            impacts.empty() ? 1.0
                            : static_cast<double>(strong) / static_cast<double>(impacts.size());
        summarise(line("cuts that change at least %g times: %zu of %zu (%.0f %%)", kCutRatio,
                       strong, impacts.size(), 100.0 * share),
                  line("%g %%", 100.0 * kCutShare), share >= kCutShare);
    }

    // An event that comes with a cut is seen as the cut.
    void takeEvents()
    {
        std::set<std::uint64_t> framesOfCuts;
        for (const Moment& cut : cutsOf(script_)) {
            framesOfCuts.insert(frameOf(cut, rate_));
        }
        std::vector<Moment> events = eventsOf(script_);
        keepPart(events, part_);
        std::erase_if(events, [&](const Moment& event) {
            return (event.scene != cues::kOpening && event.scene != cues::kTwister) ||
                   framesOfCuts.contains(frameOf(event, rate_));
        });
        const std::vector<Impact> impacts = impactsOf(film_, events, rate_);
        writeImpacts("events of opening, twister", impacts, kEventRatio);
        const std::size_t strong = countStrong(impacts, kEventRatio);
        summarise(line("events of opening and twister that change at least %g times: %zu of %zu",
                       kEventRatio, strong, impacts.size()),
                  "all", strong == impacts.size());
    }

    void writeRun(const Run& run, const std::string& remark)
    {
        stream_ << line("  %9s to %9s  %8.2f  %s%s\n",
                        clockTime(sampleOf(run.frames.begin)).c_str(),
                        clockTime(sampleOf(run.frames.end)).c_str(), run.level,
                        sceneName(shotOf(run.frames.begin).scene), remark.c_str());
    }

    // Runs are found in the part, and counted from the film's beginning.
    [[nodiscard]] std::vector<Run> placed(std::vector<Run> runs) const
    {
        for (Run& run : runs) {
            run.frames.begin += range_.begin;
            run.frames.end += range_.begin;
        }
        return runs;
    }

    // Whether a picture is meant to stand still here.
    [[nodiscard]] bool isFrozen(const FrameRange& frames) const
    {
        std::uint64_t frozen = 0;
        for (std::uint64_t frame = frames.begin; frame < frames.end; ++frame) {
            frozen += isFreeze(shotOf(frame).scene) ? 1 : 0;
        }
        return 2 * frozen > frames.end - frames.begin;
    }

    void takeStills()
    {
        stream_ << line("\nstill: %g s or more that change by less than %g of 255\n", kStillSeconds,
                        kStillChange);
        std::size_t unmeant = 0;
        for (const Run& run : placed(stillRuns(inside(), framesIn(kStillSeconds), kStillChange))) {
            const bool isEnd = sampleOf(run.frames.end) >= script_.samples - kLastFrames;
            const bool isMeant = isEnd || isFrozen(run.frames);
            writeRun(run, isEnd ? ": the end" : isMeant ? ": a freeze" : "");
            unmeant += isMeant ? 0 : 1;
        }
        summarise(line("stretches of %g s that stand still, but freezes and the end: %zu",
                       kStillSeconds, unmeant),
                  "0", unmeant == 0);
    }

    void takeDark()
    {
        stream_ << line("\ndark: more than %g s with a mean below %g of 255\n", kDarkSeconds,
                        kDarkMean);
        for (const Run& run : placed(darkRuns(inside(), framesIn(kDarkSeconds), kDarkMean))) {
            writeRun(run, "");
        }
    }

    void takeBlownOut()
    {
        if (inside().empty()) {
            return;
        }
        const std::uint64_t frame = range_.begin + mostBlownOut(inside());
        summarise(line("pixels blown out at most: %.1f %%, in %s", 100.0 * film_[frame].blownOut,
                       placeOf(frame).c_str()),
                  line("%g %%", 100.0 * kBlownOutShare), film_[frame].blownOut <= kBlownOutShare);
    }

    void takeShots()
    {
        std::vector<Shot> shots = shots_;
        std::erase_if(shots, [&](const Shot& shot) { return !part_.has(shot.order); });
        const ShotLengths lengths = lengthsOf(shots);
        const double longest = secondsOf(lengths.longest);
        const std::string found = line("shots: %zu, mean %.2f s", lengths.count, lengths.mean);
        if (shots.size() == shots_.size()) {
            summarise(found, std::to_string(kShots), lengths.count >= kShots);
        } else {
            summary_ += found + '\n';
        }
        summarise(line("longest shot: %.2f s, %s at %s", longest, sceneName(lengths.longest.scene),
                       clockTime(lengths.longest.begin).c_str()),
                  line("%g s", kLongestShot), longest <= kLongestShot);
    }

    static constexpr std::int64_t kLastFrames = kSamplesPerSecond / 5; // in samples

    std::ostream& stream_;
    const Script& script_;
    const Part part_;
    const FrameRate rate_;
    const std::span<const FrameValues> film_;
    const std::vector<Shot> shots_;
    FrameRange range_;
    std::string summary_;
};

} // namespace

void writeReport(std::ostream& stream, const Script& script, const Part& part, FrameRate rate,
                 std::span<const FrameValues> film)
{
    Report(stream, script, part, rate, film).write();
}
