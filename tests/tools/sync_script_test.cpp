#include "tests/sound/test_module.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/script.h"
#include "tools/sync_script/sections.h"
#include "tools/sync_script/stills.h"
#include "tools/sync_script/strip.h"
#include "tools/sync_script/text.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace {

// A file of its own for the test at hand.
std::string pathFor(const std::string& ending)
{
    const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string name = "kso-" + std::to_string(::getpid()) + "-" + test + ending;
    return (std::filesystem::temp_directory_path() / name).string();
}

Script scriptOf(const std::string& patterns)
{
    const std::string path = pathFor(".xm");
    const Bytes bytes = writeXm(makeModule(6, patterns));
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    Script script = readScript(path);
    std::filesystem::remove(path);
    return script;
}

// "5292 0:1.2 Z81>0": sample, order, row, channel, value and the scene that it reaches.
std::string textOf(const Script& script)
{
    std::ostringstream text;
    for (const Cue& cue : script.cues) {
        text << cue.sample << ' ' << cue.order << ':' << cue.row << '.' << cue.channel << ' '
             << asEffect(cue.value) << '>' << cue.scene << ", ";
    }
    text << script.samples;
    return text.str();
}

struct Course {
    ScriptEnd end;
    const char* patterns;
    const char* text;
};

// A row has 6 ticks of 882 samples, unless it says otherwise. Speed and tempo change, rows are
// skipped, repeated and delayed; a row's choice of a scene holds for all of it; what has no end
// is left when it comes round.
// clang-format off
constexpr Course kCourses[] = {
    {ScriptEnd::kValue, "Z80 / ... F03 Z81 / F96 ... ... Z82 / Z83 / Z08",
     "0 0:0.0 Z80>0, 5292 0:1.2 Z81>0, 7938 0:2.3 Z82>0, 10143 0:3.0 Z83>0, 12348 0:4.0 Z08>8, "
     "12348"},
    {ScriptEnd::kValue, "E60 Z80 / E61 Z81 / EE1 Z82 / Z08",
     "0 0:0.1 Z80>0, 5292 0:1.1 Z81>0, 10584 0:0.1 Z80>0, 15876 0:1.1 Z81>0, 21168 0:2.1 Z82>0, "
     "31752 0:3.0 Z08>8, 31752"},
    {ScriptEnd::kPlayed, "Z80 Z05 Z81 / Z3F Z40 / Z41",
     "0 0:0.0 Z80>5, 0 0:0.1 Z05>5, 0 0:0.2 Z81>5, 5292 0:1.0 Z3F>63, 5292 0:1.1 Z40>63, "
     "10584 0:2.0 Z41>63, 15876"},
    {ScriptEnd::kPlayed, "Z80 / B02 | Z81 | Z82 / B00 Z83",
     "0 0:0.0 Z80>0, 10584 2:0.0 Z82>0, 15876 2:1.1 Z83>0, 21168"},
    {ScriptEnd::kPlayed, "B00 Z80",
     "0 0:0.1 Z80>0, 5292"},
};
// clang-format on

constexpr const char* kTable = R"(a module without a name: 6 rows, 7 effects

     time  order  row  value       scene            meaning

first
 0:00.000      0    0  Z01      1  twister          selects scene 1, twister
 0:00.000      0    0  Z89    137  twister          titles: VELMORANT goes; the column jolts
 0:00.120      0    1  Z8A    138  twister          nothing here
 0:00.240      0    2  Z09      9  -                no scene: nothing is drawn

second
 0:00.360      1    0  Z80    128  -                nothing here
 0:00.480      1    1  Z07      7  black            selects scene 7, black
 0:01.080      1    2  Z08      8  -                the show ends

 0:01.080  the show ends
)";

} // namespace

TEST(SyncScript, FindsTheSampleWhereARowBegins)
{
    for (const Course& course : kCourses) {
        const Script script = scriptOf(course.patterns);
        EXPECT_EQ(textOf(script), course.text) << course.patterns;
        EXPECT_EQ(script.end, course.end) << course.patterns;
    }
}

TEST(SyncScript, SaysWhatIsWrongWithAFile)
{
    for (const char* path : {"/nonexistent.xm", "README.md", "data"}) {
        EXPECT_THROW(readScript(path), ScriptError) << path;
    }
}

TEST(SyncScript, IsATableInWords)
{
    const Script script = scriptOf("Z01 Z89 / Z8A / Z09 | Z80 / F1E Z07 / Z08");
    std::ostringstream text;
    writeText(text, script,
              std::vector<ScoreSection>{
                  {"first",  0},
                  {"second", 1}
    });
    EXPECT_EQ(text.str(), kTable);
}

TEST(SyncScript, NamesTheSectionsOfTheShow)
{
    const std::vector<ScoreSection> sections = sectionsOf(cues::kModulePath);
    EXPECT_EQ(sectionAt(sections, 2), "void");
    EXPECT_EQ(sectionAt(sections, 3), "column");
    EXPECT_EQ(sectionAt(sections, 30), "end");
    EXPECT_TRUE(sectionsOf("README.md").empty());
}

// Titles last, so the still is taken where two of them are on.
TEST(SyncScript, DrawsWhatItHasAndChoosesTellingMoments)
{
    const Script script = scriptOf("Z01 / Z80 / Z82 / Z81 / Z83 / F1F Z3F / ZFF / Z07 / Z85 / Z08");
    EXPECT_EQ(stillTimes(chooseStills(script)), "0.30");
    // One scene, cut away from for a moment, and nothing to be seen of its events.
    const Script cut = scriptOf("Z06 / Z80 / Z02 / Z83 / Z07 / Z06 / Z3F / ... / ... / ... / ... / "
                                "... / ... / ... / ... / ... / ... / ... / ... / ... / Z08");
    EXPECT_EQ(stillTimes(chooseStills(cut)), "0.21,0.66");
    const std::string file = pathFor(".png");
    drawStrip(file, script, {}, "");
    EXPECT_GT(std::filesystem::file_size(file), 10000U);
    std::filesystem::remove(file);
    EXPECT_THROW(drawStrip(pathFor(".jpg"), script, {}, ""), std::runtime_error);
}
