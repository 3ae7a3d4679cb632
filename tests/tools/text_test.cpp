#include "tests/tools/text_script.h"
#include "tools/sync_script/text.h"

#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace {

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

TEST(SyncScriptText, IsATableInWords)
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
