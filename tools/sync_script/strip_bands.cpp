#include "tools/sync_script/strip_bands.h"

#include "sound/mixer.h"
#include "tools/sync_script/meanings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr double kLaneType = 12.0; // height of capitals
constexpr double kLaneMargin = 10.0;
constexpr double kTickWidth = 2.0;
constexpr unsigned kNoSceneColour = 0x55555C;
constexpr double kHoldAlpha = 0.40;
constexpr std::int64_t kFadeSamples = std::int64_t{4} * kMixRateHz; // on the screen

bool isCalled(const cues::Event& event, std::string_view name)
{
    return event.name == name;
}

// A scene's events, one for each name.
std::vector<cues::Event> lanesOf(int number)
{
    std::vector<cues::Event> lanes;
    const cues::Scene* const scene = cues::sceneOf(number);
    for (const cues::Event& event :
         scene != nullptr ? scene->events : std::span<const cues::Event>()) {
        const auto same = [&](const cues::Event& lane) { return isCalled(lane, event.name); };
        if (std::ranges::none_of(lanes, same)) {
            lanes.push_back(event);
        }
    }
    return lanes;
}

void drawLane(const Chart& chart, const SceneVisit& visit, const cues::Event& lane, const Box& box,
              unsigned colour)
{
    const double top = box.y + kLaneType + 12.0;
    const double height = box.bottom() - 5.0 - top;
    chart.pen.fill({box.x, box.bottom() - 1.0, box.width, 1.0}, {colour, 0.22});
    chart.typeWithin(box, asEffect(lane.value) + "  " + lane.name, box.y + 7.0 + kLaneType,
                     {kLaneType, {mixed(colour, kTypeColour, 0.45)}});

    const PlayedCue* begun = nullptr;
    const auto hold = [&](double end) {
        const double x = chart.xOf(begun->sample);
        chart.pen.fill({x, top, end - x, height}, {colour, kHoldAlpha});
        begun = nullptr;
    };
    for (const PlayedCue& cue : chart.script.cues) {
        const cues::Event* meaning = meaningOf(cue);
        if (cue.sample < visit.begin || cue.sample >= visit.end || meaning == nullptr ||
            !isCalled(*meaning, lane.name)) {
            continue;
        }
        const double x = chart.xOf(cue.sample);
        if (meaning->lasting == cues::Lasting::kBegins && begun == nullptr) {
            begun = &cue;
        } else if (meaning->lasting == cues::Lasting::kEnds && begun != nullptr) {
            hold(x);
        } else if (meaning->lasting == cues::Lasting::kFades) {
            const double end = std::min(chart.xOf(cue.sample + kFadeSamples), box.right());
            chart.pen.fillRightward({x, top, end - x, height}, {colour, 0.7}, {colour, 0.0});
        }
        chart.pen.fill({x, top, kTickWidth, height}, {colour});
    }
    if (begun != nullptr) {
        hold(box.right());
    }
}

// The events that their scene does not react to.
void drawLostEvents(const Chart& chart, const SceneVisit& visit, const Box& box)
{
    for (const PlayedCue& cue : chart.script.cues) {
        const bool isHere = cue.sample >= visit.begin && cue.sample < visit.end;
        if (isHere && cues::isEvent(cue.value) && meaningOf(cue) == nullptr) {
            chart.pen.fill({chart.xOf(cue.sample), box.y, 1.0, box.height}, {kTypeColour, 0.25});
        }
    }
}

// The levels that are drawn in one column of the band.
struct Column {
    double peak = 0.0;
    double energy = 0.0;
    int levels = 0;

    void add(const Level& level)
    {
        peak = std::max(peak, static_cast<double>(level.peak));
        energy += static_cast<double>(level.rms) * static_cast<double>(level.rms);
        ++levels;
    }
    [[nodiscard]] double rms() const { return std::sqrt(energy / std::max(levels, 1)); }
};

void drawLevelGrid(const Chart& chart, const Box& band)
{
    struct Line {
        int decibels;
        double level;
    };
    constexpr auto kLines = std::to_array<Line>({
        {0,   1.0  },
        {-6,  0.501},
        {-12, 0.251},
    });
    const double middle = band.y + band.height / 2;
    for (const Line& line : kLines) {
        const double reach = line.level * band.height / 2;
        for (const double y : {middle - reach, middle + reach}) {
            chart.pen.fill({band.x, std::round(y), band.width, 1.0}, {kTypeColour, 0.09});
        }
        chart.pen.type(std::to_string(line.decibels) + " dB", band.x - 10.0, middle - reach + 5.0,
                       {
                           11.0, {kTypeColour, 0.5},
                            Align::kRight
        });
    }
}

} // namespace

unsigned sceneColour(int scene)
{
    const cues::Scene* const found = cues::sceneOf(scene);
    return found != nullptr ? found->colour : kNoSceneColour;
}

double Chart::xOf(std::int64_t sample) const
{
    const auto length = static_cast<double>(std::max<std::int64_t>(script.samples, 1));
    return left + (right - left) * static_cast<double>(sample) / length;
}

Box Chart::cut(const Box& band, std::int64_t begin, std::int64_t end) const
{
    return {xOf(begin), band.y, xOf(end) - xOf(begin), band.height};
}

void Chart::typeWithin(const Box& box, const std::string& text, double baseline,
                       const Type& style) const
{
    if (pen.widthOf(text, style) + 2 * kLaneMargin <= box.width) {
        pen.type(text, box.x + kLaneMargin, baseline, style);
    }
}

void drawEvents(const Chart& chart, const SceneVisit& visit, const Box& band)
{
    const unsigned colour = sceneColour(visit.scene);
    const Box whole = chart.cut(band, visit.begin, visit.end);
    chart.pen.fillDownward(whole, {colour, 0.18}, {colour, 0.06});

    drawLostEvents(chart, visit, whole);

    const std::vector<cues::Event> lanes = lanesOf(visit.scene);
    if (lanes.empty()) {
        chart.typeWithin(whole, "no events", whole.y + 7.0 + kLaneType,
                         {
                             kLaneType, {mixed(colour, kTypeColour, 0.45), 0.6}
        });
    }
    const auto count = static_cast<double>(lanes.size());
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        const auto place = static_cast<double>(i);
        const Box lane{whole.x, whole.y + whole.height * place / count, whole.width,
                       whole.height / count};
        drawLane(chart, visit, lanes[i], lane, mixed(colour, kTypeColour, 0.6 * place / count));
    }
}

void drawLevels(const Chart& chart, const Box& band)
{
    constexpr double kColumnWidth = 2.0;
    drawLevelGrid(chart, band);
    const std::vector<SceneVisit> visits = sceneVisits(chart.script);
    const double middle = band.y + band.height / 2;
    std::size_t next = 0;
    std::size_t visit = 0;
    const int columns = static_cast<int>(band.width / kColumnWidth);
    for (int i = 0; i < columns; ++i) {
        const double x = band.x + i * kColumnWidth;
        Column column;
        for (; next < chart.script.levels.size() &&
               chart.xOf(static_cast<std::int64_t>(next) * kLevelSamples) < x + kColumnWidth;
             ++next) {
            column.add(chart.script.levels[next]);
        }
        while (visit + 1 < visits.size() && chart.xOf(visits[visit].end) <= x) {
            ++visit;
        }
        const unsigned colour = sceneColour(visits[visit].scene);
        const auto bar = [&](double level, Ink ink) {
            const double height = std::max(std::min(level, 1.0) * band.height, 1.0);
            chart.pen.fill({x, middle - height / 2, kColumnWidth, height}, ink);
        };
        bar(column.peak, {colour, 0.40});
        bar(column.rms(), {mixed(colour, kTypeColour, 0.15)});
    }
}
