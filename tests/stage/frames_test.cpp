// What the stage draws on a display is what the recorder draws into memory.

#include "tests/whole_show/files.h"
#include "tests/whole_show/scripted_module.h"
#include "tests/whole_show/studio.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string_view>

namespace {

// Every scene for a row and a half, one after the other, at 24 frames a second.
constexpr int kScenes = 7;
constexpr int kFrames = 30;

XmModule everyScene()
{
    std::vector<Cue> cues;
    for (int scene = 0; scene < kScenes; ++scene) {
        cues.push_back({0, scene + scene / 2, 0, scene});
    }
    return scriptedModule(1, cues);
}

// OpenGL rounds a little differently in a framebuffer, whose first row is the other end of the
// picture: single steps of single pixels.
constexpr double kRounding = 0.002; // of 255

double meanDifference(std::string_view left, std::string_view right)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        sum += std::abs(static_cast<unsigned char>(left[i]) - static_cast<unsigned char>(right[i]));
    }
    return sum / static_cast<double>(left.size());
}

} // namespace

class StageFrames : public testing::TestWithParam<const char*> {};

TEST_P(StageFrames, AreTheRecordersOfThatSize)
{
    const std::string size = GetParam();
    const Studio studio(everyScene());
    const std::string frames = std::to_string(kFrames);
    const Result recorded =
        studio.run("$RECORD --show . --fps 24 --to " + std::to_string(kFrames / 24.0) + " --size " +
                   (size.empty() ? "640x480" : size) + " --pixels recorded");
    ASSERT_EQ(recorded.status, 0) << recorded.errors;
    const Result staged = studio.run("FILMED_STAGE_FILE=staged FILMED_STAGE_SIZE=" + size +
                                     " FILMED_STAGE_END=" + frames +
                                     " LD_PRELOAD=" KSO_FILMED_STAGE " timeout 120 " KSO_PROGRAM);
    ASSERT_EQ(staged.status, 1) << staged.errors;

    const std::string expected = contents(studio.folder() / "recorded");
    const std::string got = contents(studio.folder() / "staged");
    ASSERT_EQ(got.size(), expected.size());
    const std::size_t frameBytes = expected.size() / kFrames;
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        const std::size_t begin = frame * frameBytes;
        EXPECT_LT(
            meanDifference({got.data() + begin, frameBytes}, {expected.data() + begin, frameBytes}),
            kRounding)
            << frame;
    }
    EXPECT_NE(got.find_first_not_of('\0'), std::string::npos) << "all is black";
}

INSTANTIATE_TEST_SUITE_P(Sizes, StageFrames, testing::Values("", "1280x960", "960x408"),
                         [](const auto& row) {
                             return std::string(*row.param ? row.param : "own");
                         });
