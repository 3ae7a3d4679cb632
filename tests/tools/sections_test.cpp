#include "cues/scenes_and_events.h"
#include "tools/sync_script/sections.h"

#include <gtest/gtest.h>

TEST(Sections, AreNamedByTheScore)
{
    const std::vector<ScoreSection> sections = sectionsOf(cues::kModulePath);
    EXPECT_EQ(sectionAt(sections, 2), "void");
    EXPECT_EQ(sectionAt(sections, 3), "column");
    EXPECT_EQ(sectionAt(sections, 30), "end");
    EXPECT_TRUE(sectionsOf("README.md").empty());
}
