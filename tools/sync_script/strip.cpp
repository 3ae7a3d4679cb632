#include "tools/sync_script/strip.h"

#include "base/window_and_view.h"
#include "sound/mixer.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/sections.h"
#include "tools/sync_script/shots.h"
#include "tools/sync_script/stills.h"
#include "tools/sync_script/strip_bands.h"
#include "tools/sync_script/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace {

// Bands from top to bottom, all of one width.
constexpr int kWidth = 3200;
constexpr int kHeight = 1260;
constexpr double kLeft = 84.0;
constexpr double kRight = kWidth - 84.0;
constexpr double kHeadline = 104.0; // baseline
constexpr Box kStills = {kLeft, 76.0, kRight - kLeft, 240.0};
constexpr Box kScenes = {kLeft, 320.0, kRight - kLeft, 48.0};
constexpr Box kSections = {kLeft, 372.0, kRight - kLeft, 34.0};
constexpr Box kOrders = {kLeft, 408.0, kRight - kLeft, 26.0};
constexpr Box kEvents = {kLeft, 436.0, kRight - kLeft, 420.0};
constexpr Box kLevels = {kLeft, 868.0, kRight - kLeft, 252.0};
constexpr Box kRuler = {kLeft, 1130.0, kRight - kLeft, 36.0};
constexpr double kLegend = 1222.0; // baseline
constexpr double kGap = 4.0;       // between neighbours

constexpr double kStillShape = static_cast<double>(kViewHeight) / kViewWidth;

// The part of a band between two moments, less a gap at its right end.
Box cutOut(const Chart& chart, const Box& band, std::int64_t begin, std::int64_t end)
{
    Box box = chart.cut(band, begin, end);
    box.width = std::max(box.width - kGap, 1.0);
    return box;
}

std::string wholeSeconds(std::int64_t sample)
{
    const std::string time = clockTime(sample);
    return time.substr(0, time.find('.'));
}

void drawHeadline(const Chart& chart, std::span<const SceneVisit> visits)
{
    std::set<int> scenes;
    for (const SceneVisit& visit : visits) {
        if (isPictured(visit.scene)) {
            scenes.insert(visit.scene);
        }
    }
    const Script& script = chart.script;
    const std::string title = script.title.empty() ? "script" : script.title;
    chart.pen.type(title, kLeft, kHeadline, {60.0, {kTypeColour}, Align::kLeft, true});
    chart.pen.type(wholeSeconds(script.samples) + " minutes    " + std::to_string(scenes.size()) +
                       " scenes    " + std::to_string(shotsOf(script).size()) + " shots    " +
                       std::to_string(script.cues.size()) + " effects",
                   kRight, kHeadline,
                   {
                       26.0, {kTypeColour, 0.7},
                        Align::kRight
    });
}

// Each above its scene, and uncropped.
void drawStills(const Chart& chart, const std::string& folder)
{
    for (const Still& still : chooseStills(chart.script)) {
        Box box = cutOut(chart, kStills, still.begin, still.end);
        box.height = std::min(box.width * kStillShape, kStills.height);
        box.y = kStills.bottom() - box.height;
        if (folder.empty() || !chart.pen.screenshot(folder + "/" + still.seconds + ".png", box)) {
            chart.pen.fill(box, {kTypeColour, 0.05});
        }
    }
}

void drawScene(const Chart& chart, const SceneVisit& visit)
{
    const Box box = cutOut(chart, kScenes, visit.begin, visit.end);
    const Type name{22.0, {kGroundColour}, Align::kLeft, true};
    const Type value{
        15.0, {kGroundColour, 0.8},
         Align::kRight
    };
    const std::string effect = asEffect(visit.scene);
    const double baseline = box.bottom() - 13.0;
    chart.pen.fill(box, {sceneColour(visit.scene)});
    chart.typeWithin(box, sceneName(visit.scene), baseline, name);
    if (chart.pen.widthOf(sceneName(visit.scene) + effect, name) + 30.0 < box.width) {
        chart.pen.type(effect, box.right() - 10.0, baseline, value);
    }
}

// The rows where the order position changes, and last the end of the script.
std::vector<RowStart> orderStarts(const Script& script)
{
    std::vector<RowStart> starts;
    for (const RowStart& row : script.rows) {
        if (row.sample < script.samples && (starts.empty() || row.order != starts.back().order)) {
            starts.push_back(row);
        }
    }
    starts.push_back({script.samples, -1, 0});
    return starts;
}

void drawSections(const Chart& chart, std::span<const ScoreSection> sections,
                  std::span<const RowStart> orders)
{
    std::size_t next = 1;
    for (std::size_t i = 0; i + 1 < orders.size(); i = next) {
        const std::string name = sectionAt(sections, orders[i].order);
        next = i + 1;
        while (next + 1 < orders.size() && sectionAt(sections, orders[next].order) == name) {
            ++next;
        }
        const Box box = cutOut(chart, kSections, orders[i].sample, orders[next].sample);
        chart.pen.fill(box, {kTypeColour, name.empty() ? 0.03 : 0.09});
        chart.typeWithin(box, name, box.bottom() - 10.0,
                         {
                             15.0, {kTypeColour, 0.95}
        });
    }
}

void drawOrders(const Chart& chart, std::span<const RowStart> orders)
{
    const Type small{
        12.0, {kTypeColour, 0.6}
    };
    const double baseline = kOrders.bottom() - 7.0;
    for (std::size_t i = 0; i + 1 < orders.size(); ++i) {
        const Box box = chart.cut(kOrders, orders[i].sample, orders[i + 1].sample);
        chart.pen.fill({box.x, box.y, 1.0, kLevels.bottom() - box.y}, {kTypeColour, 0.13});
        chart.typeWithin(box, std::to_string(orders[i].order), baseline, small);
    }
    chart.pen.type("order", kLeft - 10.0, baseline,
                   {
                       11.0, {kTypeColour, 0.5},
                        Align::kRight
    });
}

void drawRuler(const Chart& chart)
{
    constexpr auto kSteps = std::to_array<int>({1, 2, 5, 10, 20, 30, 60, 120, 300, 600});
    constexpr double kNarrowest = 100.0;
    const auto xOf = [&chart](int seconds) {
        return chart.xOf(std::int64_t{seconds} * kMixRateHz);
    };
    const auto isWide = [&](int seconds) { return xOf(seconds) - kLeft >= kNarrowest; };
    const auto* const found = std::ranges::find_if(kSteps, isWide);
    const int step = found == kSteps.end() ? kSteps.back() : *found;
    for (int seconds = 0; xOf(seconds) <= kRight; ++seconds) {
        const bool isLong = seconds % step == 0;
        chart.pen.fill({xOf(seconds), kRuler.y, 1.0, isLong ? 11.0 : 5.0},
                       {kTypeColour, isLong ? 0.8 : 0.3});
        if (isLong) {
            chart.pen.type(wholeSeconds(std::int64_t{
                                            seconds
            } *
                                        kMixRateHz),
                           xOf(seconds), kRuler.bottom(),
                           {15.0, {kTypeColour, 0.8}, Align::kMiddle});
        }
    }
}

// An example of each thing that is drawn, and what it is.
void drawLegend(const Chart& chart)
{
    constexpr double kSample = 44.0;
    constexpr double kTall = 18.0;
    const Type words{
        14.0, {kTypeColour, 0.7}
    };
    const unsigned colour = sceneColour(0);
    const double top = kLegend - 16.0;
    double x = kLeft;
    const auto entry = [&](const char* text, const auto& drawSample) {
        drawSample();
        x += kSample + 12.0;
        chart.pen.type(text, x, kLegend, words);
        x += chart.pen.widthOf(text, words) + 52.0;
    };
    const auto tick = [&] { chart.pen.fill({x, top, 2.0, kTall}, {colour}); };
    entry("an event, at its row", [&] {
        for (const double step : {0.0, 14.0, 28.0, 42.0}) {
            chart.pen.fill({x + step, top, 2.0, kTall}, {colour});
        }
    });
    entry("stays until it is taken away", [&] {
        chart.pen.fill({x, top, kSample, kTall}, {colour, 0.4});
        tick();
    });
    entry("fades on the screen", [&] {
        chart.pen.fillRightward({x, top, kSample, kTall}, {colour, 0.7}, {colour, 0.0});
        tick();
    });
    entry("how loud: peaks, and the mean in front of them", [&] {
        chart.pen.fill({x, top, kSample, kTall}, {colour, 0.4});
        chart.pen.fill({x, top + 5.0, kSample, kTall - 10.0}, {colour});
    });
}

void drawEnd(const Chart& chart)
{
    if (chart.script.end == ScriptEnd::kValue) {
        chart.pen.type(asEffect(cues::kEndOfShow), kRight + 8.0, kScenes.bottom() - 13.0,
                       {
                           15.0, {kTypeColour, 0.7}
        });
        chart.pen.type("the end", kRight + 8.0, kSections.bottom() - 10.0,
                       {
                           15.0, {kTypeColour, 0.7}
        });
    }
}

} // namespace

void drawStrip(const std::string& file, const Script& script,
               std::span<const ScoreSection> sections, const std::string& stillFolder)
{
    Pen pen(file, kWidth, kHeight);
    const Chart chart{pen, script, kLeft, kRight};
    const std::vector<SceneVisit> visits = sceneVisits(script);
    const std::vector<RowStart> orders = orderStarts(script);

    pen.fill({0.0, 0.0, kWidth, kHeight}, {kGroundColour});
    drawHeadline(chart, visits);
    drawStills(chart, stillFolder);
    for (const SceneVisit& visit : visits) {
        drawScene(chart, visit);
        drawEvents(chart, visit, kEvents);
    }
    drawLevels(chart, kLevels);
    drawSections(chart, sections, orders);
    drawOrders(chart, orders);
    drawEnd(chart);
    drawRuler(chart);
    drawLegend(chart);
    pen.finish();
}
