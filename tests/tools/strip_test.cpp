#include "tests/tools/text_script.h"
#include "tools/sync_script/strip.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(Strip, IsDrawnWithWhatThereIs)
{
    const Script script = scriptOf("Z01 / Z80 / Z82 / Z81 / Z83 / F1F Z3F / ZFF / Z07 / Z85 / Z08");
    const std::string file = pathFor(".png");
    drawStrip(file, script, {}, "");
    EXPECT_GT(std::filesystem::file_size(file), 10000U);
    std::filesystem::remove(file);
    EXPECT_THROW(drawStrip(pathFor(".jpg"), script, {}, ""), std::runtime_error);
}
