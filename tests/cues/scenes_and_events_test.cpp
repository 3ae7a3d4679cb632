// The catalogue, and the module that speaks in its words.
#include "cues/scenes_and_events.h"
#include "sound/module.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace {

constexpr int kLargestCue = 255;

// Calls `hear` with the order, the row and the value of each of a module's cues, in the order in
// which the order list plays them.
template <class Hear>
void playThrough(const FMUSIC_MODULE& module, Hear hear)
{
    for (int order = 0; order < module.player.get_num_orders(); ++order) {
        const int pattern = module.player.get_order_pattern(order);
        for (const ZxxCell& cell : module.zxxCells) {
            if (cell.pattern == pattern) {
                hear(order, cell.row, int{cell.parameter});
            }
        }
    }
}

} // namespace

TEST(Catalogue, NamesEachSceneAndEventOnce)
{
    std::set<int> numbers = {cues::kEndOfShow};
    std::set<std::string> names;
    for (const cues::Scene& scene : cues::kScenes) {
        EXPECT_TRUE(numbers.insert(scene.number).second) << scene.name;
        EXPECT_TRUE(names.insert(scene.name).second) << scene.name;
        EXPECT_GE(scene.number, 0);
        EXPECT_LT(scene.number, cues::kFirstEvent);
        int before = cues::kFirstEvent - 1;
        for (const cues::Event& event : scene.events) {
            EXPECT_GT(event.value, before) << scene.name << ", " << event.name;
            EXPECT_LE(event.value, kLargestCue);
            before = event.value;
        }
    }
}

// What lasts ends, by an event of its own.
TEST(Catalogue, PairsWhatBeginsWithWhatEndsIt)
{
    for (const cues::Scene& scene : cues::kScenes) {
        std::multiset<std::string> begun;
        std::multiset<std::string> ended;
        for (const cues::Event& event : scene.events) {
            if (event.lasting == cues::kBegins) {
                begun.insert(event.name);
            } else if (event.lasting == cues::kEnds) {
                ended.insert(event.name);
            }
        }
        EXPECT_EQ(begun, ended) << scene.name;
    }
}

// The show's module chooses scenes that there are, moves each only as it can be moved, begins each
// start scene on the first row of its order, and ends.
TEST(Catalogue, SaysWhatTheModuleSays)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    ASSERT_EQ(loadModule(cues::kModulePath, module), SoundError::none);

    int scene = cues::kOpening;
    std::set<std::pair<int, int>> chosenOnFirstRow; // order, scene
    std::set<int> chosen;
    playThrough(*module, [&](int order, int row, int value) {
        SCOPED_TRACE(std::to_string(order) + ':' + std::to_string(row));
        if (cues::isEvent(value)) {
            EXPECT_NE(cues::eventOf(scene, value), nullptr) << value << " in scene " << scene;
            return;
        }
        scene = value;
        chosen.insert(value);
        if (row == 0) {
            chosenOnFirstRow.emplace(order, value);
        }
    });
    EXPECT_TRUE(chosen.contains(cues::kEndOfShow));
    for (const cues::Scene& each : cues::kScenes) {
        EXPECT_TRUE(chosen.contains(each.number)) << each.name;
        const std::optional<int> order = cues::startOrderOf(each.number + 1);
        EXPECT_EQ(order, each.startOrder);
        EXPECT_TRUE(!order || chosenOnFirstRow.contains({*order, each.number})) << each.name;
    }
}
