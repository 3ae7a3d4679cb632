// The show's script, as it stands in the module that is played.
#include "cues/scenes_and_events.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <libopenmpt/libopenmpt.hpp>
#include <string>
#include <vector>

namespace {

using openmpt::module;

constexpr int kEndOrder = 30; // of the last section, which nothing starts with
constexpr double kRowSeconds = 0.12;

// A row as the player shows it: "C-5 02v40 F06" for a cell, "... .. .. ..." for an empty one.
struct Row {
    int order;
    int row;
    bool heard;          // a note begins
    std::string effects; // of all channels but the last: "F06 F7D G40 "
    std::string sync;    // the last channel's cell
    int event;           // the value of its Zxx, or -1
};

module loadShow()
{
    std::ifstream stream(cues::kModulePath, std::ios::binary);
    return {
        std::vector<char>{std::istreambuf_iterator<char>(stream), {}}
    };
}

std::vector<Row> readScript(const module& song)
{
    constexpr std::size_t kEffect = 10; // column
    const int last = song.get_num_channels() - 1;
    std::vector<Row> script;
    for (int order = 0; order < song.get_num_orders(); ++order) {
        const int pattern = song.get_order_pattern(order);
        for (int r = 0; r < song.get_pattern_num_rows(pattern); ++r) {
            Row row{order, r, false, "", song.format_pattern_row_channel(pattern, r, last), -1};
            for (int channel = 0; channel < last; ++channel) {
                const std::string cell = song.format_pattern_row_channel(pattern, r, channel);
                row.heard = row.heard || (cell[0] >= 'A' && cell[0] <= 'G');
                row.effects += cell.substr(kEffect) + " ";
            }
            if (row.sync[kEffect] == 'Z') {
                row.event = std::stoi(row.sync.substr(kEffect + 1), nullptr, 16);
            }
            script.push_back(row);
        }
    }
    return script;
}

// A stretch of the order list, from its first order to before the next one's.
struct Section {
    int firstOrder;
    int scene;
};

Section sectionOf(const Row& row)
{
    Section section = {0, cues::kOpening};
    for (const cues::Scene& scene : cues::kScenes) {
        if (scene.startOrder && *scene.startOrder <= row.order) {
            section = {*scene.startOrder, scene.number};
        }
    }
    return row.order < kEndOrder ? section : Section{kEndOrder, cues::kEmpty};
}

bool choosesScene(const Row& row)
{
    return cues::sceneOf(row.event) != nullptr;
}

// The loudest sample of `seconds` from here on.
float loudest(module& song, double seconds)
{
    constexpr int kRateHz = 44100;
    std::vector<float> sound(static_cast<std::size_t>(seconds * kRateHz));
    song.read(kRateHz, sound.size(), sound.data());
    const auto [low, high] = std::minmax_element(sound.begin(), sound.end());
    return std::max(-*low, *high);
}

} // namespace

TEST(Script, HasItsOrders)
{
    EXPECT_EQ(loadShow().get_num_orders(), kEndOrder + 1);
}

// Playback may begin at any section's first row, which chooses its scene. A section may cut away
// from it for a moment, but comes back by itself.
TEST(Script, SelectsEachSceneWhereItsSectionBegins)
{
    constexpr int kLongestCut = 96; // rows, six bars
    int cutRows = 0;
    int scene = 0;
    for (const Row& row : readScript(loadShow())) {
        SCOPED_TRACE(std::to_string(row.order) + ":" + std::to_string(row.row));
        const Section section = sectionOf(row);
        scene = choosesScene(row) ? row.event : scene;
        cutRows = scene == section.scene ? 0 : cutRows + 1;
        EXPECT_TRUE(cutRows <= kLongestCut || row.order == kEndOrder);
        if (row.row != 0 || row.order != section.firstOrder) {
            continue;
        }
        EXPECT_EQ(row.event, section.scene);
        if (row.order != kEndOrder) {
            const std::string& effects = row.effects;
            const bool hasSpeed = effects.find("F06 ") != std::string::npos ||
                                  effects.find("F07 ") != std::string::npos; // it swings
            EXPECT_TRUE(hasSpeed);
            EXPECT_NE(effects.find("F7D "), std::string::npos);
            EXPECT_NE(effects.find("G40 "), std::string::npos);
        }
    }
}

// A shot lasts from one change of the scene to the next; a number without a scene freezes it.
TEST(Script, IsCutIntoManyShotsAndNoneIsLong)
{
    constexpr int kFewestShots = 60;
    constexpr double kLongestShot = 20.0; // seconds
    int shots = 0;
    int shown = -1;
    double seconds = 0.0;
    for (const Row& row : readScript(loadShow())) {
        if (row.event >= 0 && row.event < cues::kFirstEvent && row.event != shown) {
            shown = row.event;
            seconds = 0.0;
            ++shots;
        }
        seconds += kRowSeconds;
        EXPECT_LE(seconds, kLongestShot) << row.order << ":" << row.row;
    }
    EXPECT_GE(shots, kFewestShots);
}

TEST(Script, MovesThePictureOnlyWithAHitAndOnlyFromItsLastChannel)
{
    for (const Row& row : readScript(loadShow())) {
        SCOPED_TRACE(std::to_string(row.order) + ":" + std::to_string(row.row));
        EXPECT_EQ(row.effects.find('Z'), std::string::npos);
        EXPECT_TRUE(row.sync == "... .. .. ..." || row.event >= 0) << row.sync;
        EXPECT_EQ(row.sync.substr(0, 10), "... .. .. ");
        EXPECT_TRUE(row.heard || row.event == -1 || row.event == cues::kEmpty ||
                    row.order == kEndOrder);
    }
}

// The last section is quiet: bells for the picture and its two words, black, and the end before the
// module begins again.
TEST(Script, EndsInQuiet)
{
    constexpr double kLongestQuiet = 2.0; // seconds
    const std::vector<Row> script = readScript(loadShow());
    const auto end = std::find_if(script.begin(), script.end(),
                                  [](const Row& row) { return row.event == cues::kEndOfShow; });
    ASSERT_NE(end, script.end());
    ASSERT_EQ(end->order, kEndOrder);

    const auto begin = end - end->row;
    EXPECT_EQ(begin->event, cues::kEmpty);
    double quiet = 0.0;
    for (auto row = begin; row != end; ++row) {
        SCOPED_TRACE(row->row);
        quiet = row->heard ? 0.0 : quiet + kRowSeconds;
        EXPECT_LE(quiet, kLongestQuiet);
        EXPECT_TRUE(row->heard || row->event == -1 || row == begin);
    }

    module song = loadShow();
    const int rows = song.get_pattern_num_rows(song.get_order_pattern(kEndOrder - 1));
    song.set_position_order_row(kEndOrder - 1, 0);
    EXPECT_GT(loudest(song, rows * kRowSeconds), 0.05F);
    loudest(song, 3 * kRowSeconds); // the last chord goes out under black,
    EXPECT_LT(loudest(song, 2 * kRowSeconds), 0.1F);
    EXPECT_GT(loudest(song, (end->row - 6) * kRowSeconds), 0.12F); // and the bells stand above it
}
