#include "runtime/music.h"
#include "runtime/options.h"
#include "tests/runtime/fakes.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

class Music : public ::testing::Test {
protected:
    void SetUp() override
    {
        fakeSound = {};
        options = {};
    }
};

// Death tests look at standard error; this is where the message must not be.
[[noreturn]] void initMusicWithOutputOnError()
{
    dup2(2, 1);
    initMusic();
    _exit(99);
}

} // namespace

TEST_F(Music, ComesUpSilentOrNotAndGoesDownInOrder)
{
    const Calls kComingUp = {"SetDriver 0", "Init 44100 64 1", "LoadSong data/olvu.xm",
                             "SetMasterVolume song 255", "SetZxxCallback song"};
    initMusic();
    EXPECT_EQ(fakeSound.calls, kComingUp);
    EXPECT_EQ(fakeSound.callback, &onZxx);

    fakeSound.calls.clear();
    options.noSound = 1;
    initMusic();
    Calls silently = kComingUp;
    silently.insert(silently.begin(), "SetOutput 0");
    EXPECT_EQ(fakeSound.calls, silently);

    fakeSound.calls.clear();
    stopMusic();
    EXPECT_EQ(fakeSound.calls, (Calls{"StopSong song", "FreeSong song", "Close"}));
}

TEST_F(Music, StartsWhereTheStartSceneIs)
{
    struct Start {
        int scene;
        int order; // -1: from the beginning
    };
    constexpr Start kStarts[] = {
        {0, -1},
        {2, 3 },
        {3, 6 },
        {4, 10},
        {5, 13},
        {6, 18},
        {7, 26},
        {8, -1},
        {9, -1}
    };
    initMusic();
    for (const Start& start : kStarts) {
        fakeSound.calls.clear();
        startMusic(start.scene);
        Calls expected = {"PlaySong song"};
        if (start.order >= 0) {
            expected.push_back("SetOrder song " + std::to_string(start.order));
        }
        EXPECT_EQ(fakeSound.calls, expected) << start.scene;
    }
}

TEST_F(Music, FailsWithItsMessageAndStatusZero)
{
    const auto exitsCleanly = ::testing::ExitedWithCode(0);
    fakeSound.version = 3.29F;
    EXPECT_EXIT(initMusicWithOutputOnError(), exitsCleanly,
                "^Error : You are using the wrong DLL version!\n$");
    EXPECT_EXIT(initMusic(), exitsCleanly, "^$"); // nothing on standard error

    fakeSound = {};
    fakeSound.initSucceeds = false;
    fakeSound.error = 3;
    EXPECT_EXIT(initMusicWithOutputOnError(), exitsCleanly,
                "^Error!\nError initializing output device.\n$");

    fakeSound = {};
    fakeSound.loadSucceeds = false;
    fakeSound.error = 12;
    EXPECT_EXIT(initMusicWithOutputOnError(), exitsCleanly, "^Error!\nNot enough memory \n$");
}

TEST(FmodErrorText, KnowsItsCodesAndNoOthers)
{
    EXPECT_STREQ(fmodErrorText(0), "No errors");
    EXPECT_STREQ(fmodErrorText(1),
                 "Cannot call this command after FSOUND_Init.  Call FSOUND_Close first.");
    EXPECT_STREQ(fmodErrorText(9), "File not found");
    EXPECT_STREQ(fmodErrorText(12), "Not enough memory ");
    EXPECT_STREQ(fmodErrorText(19), "Required Mediaplayer codec is not installed");
    EXPECT_STREQ(fmodErrorText(20), "Unknown error");
    EXPECT_STREQ(fmodErrorText(-1), "Unknown error");
}
