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
   !  0:00.120      0    1  Z85    133  twister          titles: KSO goes; the column jolts
   !  0:00.240      0    2  Z09      9  freeze           no scene: the picture freezes

second
      0:00.360      1    0  Z80    128  freeze           nothing here
stop  0:00.480      1    1  Z07      7  black            selects scene 7, black
      0:01.080      1    2  Z08      8  -                the show ends

      0:01.080  the show ends


          time  order  row  shot                length

first: 2 shots, mean 0.24 s, longest 0.24 s
      0:00.000      0    0  twister             0.24 s     2 rows
   !  0:00.240      0    2  freeze              0.24 s     2 rows

second: 1 shot, mean 0.60 s, longest 0.60 s
stop  0:00.480      1    1  black               0.60 s     1 row

the whole: 3 shots, mean 0.36 s, longest 0.60 s (black at 0:00.480); 1 black, 1 frozen
   !  1 cut and 1 event where no note begins
stop  1 cut to black where no note begins or ends
)";

} // namespace

TEST(SyncScriptText, IsATableInWords)
{
    const Script script = scriptOf("Z01 Z89 / Z85 / Z09 | Z80 / F1E Z07 / Z08");
    std::ostringstream text;
    writeText(text, script,
              std::vector<ScoreSection>{
                  {"first",  0},
                  {"second", 1}
    });
    EXPECT_EQ(text.str(), kTable);
}
