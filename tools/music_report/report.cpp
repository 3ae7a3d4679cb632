#include "tools/music_report/report.h"

#include "tools/music_report/parts.h"
#include "tools/music_report/rubs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <span>

namespace {

const std::map<std::string, Part> kParts = {
    {"loudness", Part::kLoudness},
    {"width",    Part::kWidth   },
    {"octaves",  Part::kOctaves },
    {"arrivals", Part::kArrivals},
    {"orders",   Part::kOrders  },
    {"kick",     Part::kKick    },
    {"chord",    Part::kChord   },
    {"rubs",     Part::kRubs    },
    {"sevenths", Part::kSevenths},
    {"tritones", Part::kTritones},
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// What a figure is meant to be; figures outside are marked.
struct Target {
    double least = -kInfinity;
    double most = kInfinity;

    [[nodiscard]] bool holds(double value) const
    {
        // As they are printed.
        const double shown = std::round(value * 10.0) / 10.0;
        return shown >= least && shown <= most;
    }
};

struct SectionTarget {
    const char* section;
    Target target;
};

// The levels that art/README.md gives, with a LU to both sides where they are one figure.
constexpr std::array kLoudnessTargets = {
    SectionTarget{"whole",  {-16.0, -12.0}},
    SectionTarget{"void",   {-24.0, -18.0}},
    SectionTarget{"column", {-18.0, -16.0}},
    SectionTarget{"trail",  {-17.5, -15.5}},
    SectionTarget{"dub",    {-19.0, -17.0}},
    SectionTarget{"cubes",  {-15.0, -13.0}},
    SectionTarget{"tube",   {-14.5, -12.5}},
    SectionTarget{"ember",  {-20.0, -18.0}},
};
constexpr std::array kWidthTargets = {
    SectionTarget{"tube", {-8.0, kInfinity}},
};
constexpr std::array kKickTargets = {
    SectionTarget{"column", {-6.0, kInfinity}},
    SectionTarget{"tube",   {-6.0, kInfinity}},
};
constexpr Target kTruePeakTarget = {-kInfinity, -1.0};
constexpr Target kLowWidthTarget = {-kInfinity, -20.0};

struct ArrivalTarget {
    int order;
    Target target;
};
constexpr std::array kArrivalTargets = {
    ArrivalTarget{3,  {1.5, kInfinity}},
    ArrivalTarget{18, {1.5, kInfinity}},
    ArrivalTarget{22, {1.5, kInfinity}},
    ArrivalTarget{25, {1.5, kInfinity}},
};

struct NamedBand {
    const char* name;
    Band band;
};
constexpr std::array kWidthBands = {
    NamedBand{"  120 Hz and below", {0.0, 120.0}     },
    NamedBand{"  120 to 250 Hz",    {120.0, 250.0}   },
    NamedBand{"  250 to 500 Hz",    {250.0, 500.0}   },
    NamedBand{"  500 Hz to 1 kHz",  {500.0, 1000.0}  },
    NamedBand{"  1 to 2 kHz",       {1000.0, 2000.0} },
    NamedBand{"  2 to 4 kHz",       {2000.0, 4000.0} },
    NamedBand{"  4 to 8 kHz",       {4000.0, 8000.0} },
    NamedBand{"  8 to 16 kHz",      {8000.0, 16000.0}},
};

constexpr std::array kOctaveNames = {"  31.5 Hz", "  63 Hz", "  125 Hz", "  250 Hz", "  500 Hz",
                                     "  1 kHz",   "  2 kHz", "  4 kHz",  "  8 kHz",  "  16 kHz"};
static_assert(kOctaveNames.size() == kOctavesHz.size());

template <typename... Values>
std::string line(const char* format, Values... values)
{
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

Target targetOf(std::span<const SectionTarget> targets, const std::string& section)
{
    for (const SectionTarget& each : targets) {
        if (section == each.section) {
            return each.target;
        }
    }
    return {};
}

// What is measured once and read by several parts.
class Report {
public:
    Report(std::ostream& stream, const Performance& performance, const ReportWishes& wishes)
        : stream_(stream), performance_(performance), wishes_(wishes), all_(performance.playAll()),
          powers_(weightedPowers(all_)), stretches_(wishes.stretches)
    {
        if (stretches_.empty()) {
            stretches_ = {
                {"whole", 0, performance.endOrder()}
            };
            stretches_.insert(stretches_.end(), performance.sections().begin(),
                              performance.sections().end());
        }
        if (asks(Part::kLoudness) || asks(Part::kWidth) || asks(Part::kOctaves) ||
            asks(Part::kOrders)) {
            orders_ = measureOrders(performance, all_);
        }
        if (asks(Part::kKick) || asks(Part::kChord) || asks(Part::kRubs) || asks(Part::kSevenths) ||
            asks(Part::kTritones)) {
            stems_ = playStems(performance, all_);
        }
    }

    void write()
    {
        stream_ << (performance_.title().empty() ? "a module without a name" : performance_.title())
                << ", " << clock(performance_.samples()) << "; ! marks what misses its target\n";
        writeTable();
        const auto writeAsked = [this](Part part, auto member) {
            if (asks(part)) {
                stream_ << '\n';
                (this->*member)();
            }
        };
        writeAsked(Part::kArrivals, &Report::writeArrivals);
        writeAsked(Part::kOrders, &Report::writeOrders);
        writeAsked(Part::kKick, &Report::writeKicks);
        writeAsked(Part::kChord, &Report::writeChord);
        writeAsked(Part::kRubs, &Report::writeRubs);
        writeAsked(Part::kSevenths, &Report::writeSevenths);
        writeAsked(Part::kTritones, &Report::writeTritones);
    }

private:
    [[nodiscard]] bool asks(Part part) const { return wishes_.parts.contains(part); }

    // Whether an order is in one of the stretches.
    [[nodiscard]] bool isAsked(int order) const
    {
        return std::ranges::any_of(stretches_, [order](const Section& stretch) {
            return order >= stretch.firstOrder && order < stretch.endOrder;
        });
    }

    [[nodiscard]] std::span<const float> powersOf(const Section& stretch) const
    {
        const Steps steps = stepsOf(performance_.startOf(stretch.firstOrder),
                                    performance_.startOf(stretch.endOrder));
        const std::size_t end = std::min(steps.end, powers_.size());
        const std::size_t begin = std::min(steps.begin, end);
        return std::span(powers_).subspan(begin, end - begin);
    }

    [[nodiscard]] std::span<const OrderFigures> ordersOf(const Section& stretch) const
    {
        return std::span(orders_).subspan(
            static_cast<std::size_t>(stretch.firstOrder),
            static_cast<std::size_t>(stretch.endOrder - stretch.firstOrder));
    }

    [[nodiscard]] PowerSpectrum spectrumOf(const Section& stretch) const
    {
        PowerSpectrum sum;
        for (const OrderFigures& order : ordersOf(stretch)) {
            sum.add(order.spectrum);
        }
        return sum;
    }

    // A line of the table.
    using Measure = std::function<double(std::size_t stretch)>;
    using Aim = std::function<Target(const std::string& section)>;
    void writeLine(const char* name, const Measure& measure, const Aim& aim = nullptr)
    {
        stream_ << line("%-20s", name);
        for (std::size_t i = 0; i < stretches_.size(); ++i) {
            const double value = measure(i);
            const bool misses = aim && !aim(stretches_[i].name).holds(value);
            stream_ << line("%7.1f%s", value, misses ? "!" : " ");
        }
        stream_ << '\n';
    }

    void writeTable()
    {
        if (!asks(Part::kLoudness) && !asks(Part::kWidth) && !asks(Part::kOctaves)) {
            return;
        }
        stream_ << line("\n%-20s", "");
        for (const Section& stretch : stretches_) {
            stream_ << line("%7s ", stretch.name.c_str());
        }
        stream_ << '\n';
        if (asks(Part::kLoudness)) {
            writeLoudness();
        }
        std::vector<PowerSpectrum> spectra;
        if (asks(Part::kWidth) || asks(Part::kOctaves)) {
            std::ranges::transform(stretches_, std::back_inserter(spectra),
                                   [this](const Section& each) { return spectrumOf(each); });
        }
        if (asks(Part::kWidth)) {
            writeWidth(spectra);
        }
        if (asks(Part::kOctaves)) {
            writeOctaves(spectra);
        }
    }

    void writeLoudness()
    {
        writeLine(
            "LUFS", [&](std::size_t i) { return gatedLoudness(powersOf(stretches_[i])); },
            [](const std::string& name) { return targetOf(kLoudnessTargets, name); });
        writeLine("loudness range, LU",
                  [&](std::size_t i) { return loudnessRange(powersOf(stretches_[i])); });
        writeLine(
            "true peak, dBTP",
            [&](std::size_t i) {
                const auto orders = ordersOf(stretches_[i]);
                return std::ranges::max(orders, {}, &OrderFigures::truePeak).truePeak;
            },
            [](const std::string&) { return kTruePeakTarget; });
    }

    void writeWidth(const std::vector<PowerSpectrum>& spectra)
    {
        writeLine(
            "side to mid, dB", [&](std::size_t i) { return sideToMid(spectra[i], kWholeBand); },
            [](const std::string& name) { return targetOf(kWidthTargets, name); });
        for (const NamedBand& each : kWidthBands) {
            const bool isLow = each.band.lowHz == 0.0;
            writeLine(
                each.name, [&](std::size_t i) { return sideToMid(spectra[i], each.band); },
                [isLow](const std::string&) { return isLow ? kLowWidthTarget : Target{}; });
        }
    }

    void writeOctaves(const std::vector<PowerSpectrum>& spectra)
    {
        std::vector<std::array<double, kOctavesHz.size()>> over;
        std::ranges::transform(spectra, std::back_inserter(over), overSlope);
        stream_ << "octaves over a slope of -1.5 dB an octave\n";
        for (std::size_t octave = 0; octave < kOctavesHz.size(); ++octave) {
            writeLine(kOctaveNames.at(octave), [&](std::size_t i) { return over[i].at(octave); });
        }
    }

    void writeArrivals()
    {
        stream_ << "arrivals: the last bar before an order and its first bar, LUFS\n"
                << line("%5s %8s %8s %8s %8s\n", "order", "time", "before", "first", "step");
        for (const Arrival& arrival : findArrivals(performance_, powers_)) {
            if (!isAsked(arrival.order)) {
                continue;
            }
            const auto* const target =
                std::ranges::find(kArrivalTargets, arrival.order, &ArrivalTarget::order);
            const double step = arrival.after - arrival.before;
            const bool misses = target != kArrivalTargets.end() &&
                                !performance_.sections().empty() && !target->target.holds(step);
            stream_ << line("%5d %8s %8.1f %8.1f %+8.1f%s\n", arrival.order,
                            clock(performance_.startOf(arrival.order)).c_str(), arrival.before,
                            arrival.after, step, misses ? "!" : "");
        }
    }

    void writeOrders()
    {
        stream_ << "orders\n"
                << line("%5s %8s %8s %8s %8s\n", "order", "time", "LUFS", "dBTP", "side/mid");
        for (int order = 0; order < performance_.endOrder(); ++order) {
            const OrderFigures& figures = orders_[static_cast<std::size_t>(order)];
            if (isAsked(order)) {
                stream_ << line("%5d %8s %8.1f %8.1f %8.1f\n", order,
                                clock(performance_.startOf(order)).c_str(),
                                plainLoudness(powersOf({"", order, order + 1})), figures.truePeak,
                                sideToMid(figures.spectrum, kWholeBand));
            }
        }
    }

    void writeKicks()
    {
        stream_
            << "kicks: their first 5 ms against all that sounds meanwhile, medians in dB; click: "
               "over 2 kHz\n"
            << line("%-8s %6s %8s %8s  %s\n", "", "kicks", "all", "click", "clicks under -6 dB");
        for (const Section& stretch : stretches_) {
            const KickAttack kick = measureKicks(performance_, stems_, stretch);
            if (kick.kicks > 0) {
                const bool misses = !targetOf(kKickTargets, stretch.name).holds(kick.clickOverRest);
                stream_ << line("%-8s %6d %+8.1f %+8.1f%s %9.0f %%\n", stretch.name.c_str(),
                                kick.kicks, kick.overRest, kick.clickOverRest, misses ? "!" : " ",
                                100.0 * kick.buried);
            }
        }
    }

    // Of the last stretch that has one.
    void writeChord()
    {
        std::optional<LastChord> last;
        for (const Section& stretch : stretches_) {
            if (const auto chord = findLastChord(performance_, stems_, stretch)) {
                last = chord;
            }
        }
        if (!last) {
            stream_ << "last chord: there is none\n";
            return;
        }
        const PlayedNote& first = last->notes.front();
        const std::int64_t orderEnd = performance_.startOf(first.order + 1);
        const auto ringsFor = [&](std::int64_t end) {
            return line("%.1f s", static_cast<double>(end - first.begin) / kSamplesPerSecond);
        };
        constexpr std::int64_t kNearly = kSamplesPerSecond / 10;
        const bool misses = last->end < orderEnd - kNearly;
        stream_ << line("last chord: %02d:%02d (%s), under %.0f LUFS after ", first.order,
                        first.row, clock(first.begin).c_str(), kChordEnd)
                << ringsFor(last->end) << (misses ? "!" : "") << "; its order ends after "
                << ringsFor(orderEnd) << '\n';
        for (std::size_t i = 0; i < last->notes.size(); ++i) {
            stream_ << "  " << inWords(last->notes[i]) << ": " << ringsFor(last->ends[i]) << '\n';
        }
    }

    void writeRubs()
    {
        stream_ << "rubs: notes that sound a semitone apart, or that and octaves\n";
        listRubs([](RubKind kind) { return kind == RubKind::kSecond || kind == RubKind::kNinth; });
    }

    void writeSevenths()
    {
        stream_ << "major sevenths, or these and octaves\n";
        listRubs([](RubKind kind) { return kind == RubKind::kSeventh; });
    }

    void writeTritones()
    {
        stream_ << "tritones\n";
        listRubs([](RubKind kind) { return kind == RubKind::kTritone; });
    }

    void listRubs(const std::function<bool(RubKind)>& isListed)
    {
        if (rubs_.empty()) {
            rubs_ = findRubs(performance_, stems_, powers_);
        }
        stream_ << line("%-6s %8s %-8s %6s %7s %6s  %s\n", "place", "time", "kind", "LUFS",
                        "to all", "s", "notes, the later one last");
        std::size_t listed = 0;
        std::size_t more = 0;
        for (const Rub& rub : rubs_) {
            if (!isListed(rub.kind) || !isAsked(rub.second.order)) {
                continue;
            }
            if (++listed > wishes_.rubs) {
                ++more;
                continue;
            }
            stream_ << line("%02d:%02d  %8s %-8s %6.1f %7.1f %6.2f  ", rub.second.order,
                            rub.second.row, clock(rub.second.begin).c_str(), inWords(rub.kind),
                            rub.loudness, -rub.underAll, rub.seconds)
                    << inWords(rub.first) << ", " << inWords(rub.second);
            if (rub.voices > 1) {
                stream_ << line(" (and %d more)", rub.voices - 1);
            }
            if (rub.times > 1) {
                stream_ << line(" (%d times)", rub.times);
            }
            stream_ << '\n';
        }
        if (more > 0) {
            stream_ << more << " softer ones\n";
        }
    }

    [[nodiscard]] static const char* inWords(RubKind kind) { return ::inWords(kind); }
    [[nodiscard]] std::string inWords(const PlayedNote& note) const
    {
        const std::string& channel =
            performance_.channels()[static_cast<std::size_t>(note.channel)];
        return channel + " " + noteName(note.note) + " " +
               performance_.instrument(note.instrument) + line(" %02d:%02d", note.order, note.row);
    }

    std::ostream& stream_;
    const Performance& performance_;
    const ReportWishes& wishes_;
    Sound all_;
    std::vector<float> powers_;
    std::vector<Section> stretches_;
    std::vector<OrderFigures> orders_;
    Stems stems_;
    std::vector<Rub> rubs_;
};

} // namespace

Part partNamed(const std::string& name)
{
    return kParts.at(name);
}

bool isPart(const std::string& name)
{
    return kParts.contains(name);
}

void writeReport(std::ostream& stream, const Performance& performance, const ReportWishes& wishes)
{
    Report(stream, performance, wishes).write();
}
