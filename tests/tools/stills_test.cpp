#include "tests/tools/text_script.h"
#include "tools/sync_script/stills.h"

#include <gtest/gtest.h>

TEST(Stills, AreTakenWhereTheySayMost)
{
    // Titles come last, so the still is taken where two of them are on.
    const Script script = scriptOf("Z01 / Z80 / Z82 / Z81 / Z83 / F1F Z3F / ZFF / Z07 / Z85 / Z08");
    EXPECT_EQ(stillTimes(chooseStills(script)), "0.30");
    // One scene, cut away from for a moment, and nothing to be seen of its events.
    const Script cut = scriptOf("Z06 / Z80 / Z02 / Z83 / Z07 / Z06 / Z3F / ... / ... / ... / ... / "
                                "... / ... / ... / ... / ... / ... / ... / ... / ... / Z08");
    EXPECT_EQ(stillTimes(chooseStills(cut)), "0.21,0.66");
}
