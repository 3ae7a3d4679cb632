#include "tests/tools/text_script.h"
#include "tools/sync_script/meanings.h"
#include "tools/sync_script/script.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

// "5292 0:1.2 Z81>0": sample, order, row, channel, value and the scene that it reaches.
std::string textOf(const Script& script)
{
    std::ostringstream text;
    for (const PlayedCue& cue : script.cues) {
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
