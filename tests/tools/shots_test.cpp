#include "tests/support/test_module.h"
#include "tests/tools/text_script.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/shots.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

// "black 1:0 +2 stop": what is shown, where it begins, how many rows it lasts, and its mark.
std::string textOf(const std::vector<Shot>& shots)
{
    std::ostringstream text;
    for (const Shot& shot : shots) {
        text << (shot.begin == 0 ? "" : ", ") << sceneName(shot.scene) << ' ' << shot.order << ':'
             << shot.row << " +" << shot.rows
             << (shot.mark == Mark::kUnstruck ? " !"
                 : shot.mark == Mark::kStop   ? " stop"
                                              : "");
    }
    return text.str();
}

struct Cut {
    const char* patterns;
    const char* shots;
};

// Notes begin in the first row only.
// clang-format off
constexpr Cut kCuts[] = {
    {"Z80 / Z81 / Z08",                   "opening 0:0 +2"},
    {"Z01 / Z01 / Z80 / Z01",             "twister 0:0 +4"},
    {"... / Z05 / Z80 | Z00",             "opening 0:0 +1, tube 0:1 +2 !, opening 1:0 +1 !"},
    {"Z06 / Z3F / Z09 / Z07 / Z06",
     "closing 0:0 +1, freeze 0:1 +2 !, black 0:3 +1 stop, closing 0:4 +1 !"},
    {"Z01 / Z05 Z02 / Z02 / Z03 Z02 Z80", "twister 0:0 +1, image trail 0:1 +3 !"},
    {"... / EE1 Z04 / Z05 / Z08",         "opening 0:0 +1, wire cubes 0:1 +1 !, tube 0:2 +1 !"},
};
// clang-format on

} // namespace

TEST(Shots, LastFromOneChangeOfThePictureToTheNext)
{
    for (const Cut& cut : kCuts) {
        EXPECT_EQ(textOf(shotsOf(scriptOf(cut.patterns))), cut.shots) << cut.patterns;
    }
}

TEST(Shots, AreCountedAndMeasured)
{
    const ShotLengths lengths = lengthsOf(shotsOf(scriptOf("... / ... / Z05 / Z07 / ... / ...")));
    EXPECT_EQ(lengths.count, 3U);
    EXPECT_NEAR(lengths.mean, 0.24, 1e-9);
    EXPECT_EQ(lengths.longest.scene, 7);
    EXPECT_NEAR(secondsOf(lengths.longest), 0.36, 1e-9);
}

// What stands beside a cut to another scene, a cut to black and an event, in the second row.
TEST(Marks, StandWhereNoNoteIsStruck)
{
    constexpr auto kNone = Mark::kNone;
    constexpr auto kStop = Mark::kStop;
    constexpr auto kUnstruck = Mark::kUnstruck;
    struct Beside {
        const char* name;
        XmCell cell;
        Mark cut;
        Mark black;
        Mark event;
    };
    constexpr std::uint8_t kSlide = 3;
    const Beside kCells[] = {
        {"nothing",           {},                             kUnstruck, kStop, kUnstruck},
        {"a note",            {kXmNoteC4, 1, 0, 0, 0},        kNone,     kNone, kNone    },
        {"a loud note",       {kXmNoteC4, 1, 0x50, 0, 0},     kNone,     kNone, kNone    },
        {"a silent note",     {kXmNoteC4, 1, 0x10, 0, 0},     kUnstruck, kNone, kUnstruck},
        {"a slide to a note", {kXmNoteC4, 1, 0, kSlide, 8},   kUnstruck, kStop, kUnstruck},
        {"a key off",         {kXmKeyOff, 0, 0, 0, 0},        kUnstruck, kNone, kUnstruck},
        {"silence",           {0, 0, kXmSetVolume, 0, 0},     kUnstruck, kNone, kUnstruck},
        {"a softer volume",   {0, 0, kXmSetVolume + 9, 0, 0}, kUnstruck, kStop, kUnstruck},
    };
    for (const Beside& beside : kCells) {
        const auto markOf = [&](const char* patterns) {
            XmModule module = makeModule(6, patterns);
            module.patterns[0].at(1, 3) = beside.cell;
            return marksOf(scriptOf(module)).back();
        };
        EXPECT_EQ(markOf("Z00 / Z05"), beside.cut) << beside.name;
        EXPECT_EQ(markOf("Z00 / Z07"), beside.black) << beside.name;
        EXPECT_EQ(markOf("Z00 / Z80"), beside.event) << beside.name;
        EXPECT_EQ(markOf("Z00 / ZFF"), kNone) << "not seen, beside " << beside.name;
        EXPECT_EQ(markOf("Z00 / Z00"), kNone) << "no cut, beside " << beside.name;
        EXPECT_EQ(markOf("Z00 / Z08"), kNone) << "the end, beside " << beside.name;
    }
}
