#include "sound/fsound.h"
#include "tests/sound/test_module.h"

#include <SDL.h>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kRateHz = 44100;

std::atomic<int> zxxCount;

// A Zxx in each row, and a row every 20 ms.
TestModule steadyModule()
{
    TestModule module;
    module.speed = 1;
    module.patterns = {
        {4, {}}
    };
    for (int row = 0; row < 4; ++row) {
        module.patterns[0].cells.push_back({row, 0, 49, kZxx, 64});
    }
    return module;
}

FMUSIC_MODULE* playSteadyModule()
{
    FMUSIC_MODULE* const module =
        FMUSIC_LoadSong(writeTemporary("steady.xm", steadyModule().build()).c_str());
    zxxCount = 0;
    FMUSIC_SetZxxCallback(module, [](FMUSIC_MODULE*, unsigned char) { ++zxxCount; });
    EXPECT_TRUE(FMUSIC_PlaySong(module));
    return module;
}

// The way out that a show takes. SDL alone needs two blocks' time for it, and a busy machine more.
void closeQuickly(FMUSIC_MODULE* module)
{
    const Clock::time_point start = Clock::now();
    EXPECT_TRUE(FMUSIC_SetOrder(module, 0));
    EXPECT_TRUE(FMUSIC_StopSong(module));
    EXPECT_TRUE(FMUSIC_FreeSong(module));
    FSOUND_Close();
    EXPECT_LT(Clock::now() - start, milliseconds(500));
    const int count = zxxCount;
    std::this_thread::sleep_for(milliseconds(30));
    EXPECT_EQ(zxxCount, count) << "a callback came after closing";
}

} // namespace

struct BrokenFile {
    const char* name;
    std::size_t at;
    std::vector<std::uint8_t> bytes;
    int error;
};

TEST(Fsound, NamesWhatIsWrongWithAFile)
{
    ASSERT_TRUE(FSOUND_SetOutput(0));
    ASSERT_TRUE(FSOUND_Init(kRateHz, 64, 1));

    const std::vector<std::uint8_t> good = steadyModule().build();
    const std::size_t instrumentAt =
        good.size() - kSampleBytes - kSampleHeaderBytes - kInstrumentHeaderBytes;
    const std::size_t sampleHeaderAt = instrumentAt + kInstrumentHeaderBytes;
    // By hand, since the formatter stumbles over lists in tables.
    // clang-format off
    const std::vector<BrokenFile> files = {
        {"Good",                  0,                 {},                   0 },
        {"NotAModule",            0,                 {'I', 'M', 'P', 'M'}, 10},
        {"OlderVersion",          58,                {0x01, 0x01},         13},
        {"NewerVersion",          58,                {0x05, 0x01},         13},
        {"HeaderTooShort",        60,                {19},                 11},
        {"HeaderPastTheEnd",      60,                {255, 255, 255, 255}, 11},
        {"NoChannels",            68,                {0},                  11},
        {"TooManyChannels",       68,                {0, 1},               11},
        {"MorePatternsThanThere", 70,                {200},                11},
        {"MoreInstruments",       72,                {2},                  11},
        {"PatternHeaderTooShort", kPatternsAt,       {8},                  11},
        {"PatternHeaderTooLong",  kPatternsAt,       {0, 0, 0, 1},         11},
        {"PatternDataTooLong",    kPatternsAt + 7,   {255, 255},           11},
        {"DefaultRows",           kPatternsAt + 5,   {0},                  0 },
        {"InstrumentTooLong",     instrumentAt,      {255, 255, 255, 255}, 11},
        {"InstrumentFullSize",    instrumentAt,      {0, 0},               0 },
        {"MoreSamples",           instrumentAt + 27, {9},                  11},
        {"SampleCutShort",        sampleHeaderAt,    {255, 255, 255, 255}, 0 },
        {"SecondSampleMissing",   instrumentAt + 27, {2},                  11},
    };
    // clang-format on
    for (const BrokenFile& file : files) {
        std::vector<std::uint8_t> bytes = good;
        std::ranges::copy(file.bytes, bytes.begin() + static_cast<std::ptrdiff_t>(file.at));
        FMUSIC_MODULE* const module = FMUSIC_LoadSong(writeTemporary("broken.xm", bytes).c_str());
        EXPECT_EQ(module != nullptr, file.error == 0) << file.name;
        if (module == nullptr) {
            EXPECT_EQ(FSOUND_GetError(), file.error) << file.name;
        }
        FMUSIC_FreeSong(module);
    }

    const std::string huge = writeTemporary("huge.xm", good);
    std::filesystem::resize_file(huge, std::uintmax_t{1} << 32U);
    const std::string folder = std::filesystem::path(huge).parent_path().string();
    const std::string empty = writeTemporary("empty.xm", {});
    const std::vector<std::pair<std::string, int>> paths = {
        {"no/such.xm",     9 },
        {huge + "/inside", 9 },
        {folder,           11},
        {"/dev/zero",      11},
        {huge,             11},
        {empty,            10},
    };
    for (const auto& [path, error] : paths) {
        EXPECT_EQ(FMUSIC_LoadSong(path.c_str()), nullptr) << path;
        EXPECT_EQ(FSOUND_GetError(), error) << path;
    }
    FSOUND_Close();
}

TEST(Fsound, BearsCallsOutOfOrder)
{
    EXPECT_GE(FSOUND_GetVersion(), 3.3F);
    FSOUND_Close();
    EXPECT_EQ(FMUSIC_LoadSong("x.xm"), nullptr);
    EXPECT_EQ(FSOUND_GetError(), 2);
    EXPECT_FALSE(FSOUND_Init(1, 64, 1));
    EXPECT_EQ(FSOUND_GetError(), 14);

    FSOUND_SetOutput(0);
    ASSERT_TRUE(FSOUND_Init(kRateHz, 64, 1));
    EXPECT_FALSE(FSOUND_Init(kRateHz, 64, 1));
    EXPECT_EQ(FSOUND_GetError(), 1);
    EXPECT_FALSE(FSOUND_SetOutput(0));
    EXPECT_EQ(FMUSIC_LoadSong(nullptr), nullptr);
    EXPECT_EQ(FSOUND_GetError(), 14);

    FMUSIC_MODULE* const freed = playSteadyModule();
    EXPECT_FALSE(FMUSIC_SetOrder(freed, 1)); // there is one order only
    EXPECT_FALSE(FMUSIC_SetMasterVolume(freed, 257));
    EXPECT_TRUE(FMUSIC_FreeSong(freed)); // while it plays
    for (FMUSIC_MODULE* const module : {freed, static_cast<FMUSIC_MODULE*>(nullptr)}) {
        EXPECT_FALSE(FMUSIC_SetMasterVolume(module, 255));
        EXPECT_FALSE(FMUSIC_SetZxxCallback(module, nullptr));
        EXPECT_FALSE(FMUSIC_PlaySong(module));
        EXPECT_FALSE(FMUSIC_SetOrder(module, 0));
        EXPECT_FALSE(FMUSIC_StopSong(module));
        EXPECT_FALSE(FMUSIC_FreeSong(module));
    }
    playSteadyModule();
    FSOUND_Close(); // while it plays
    FSOUND_Close();
    FSOUND_SetOutput(0);
    ASSERT_TRUE(FSOUND_Init(kRateHz, 64, 1));
    zxxCount = 0;
    std::this_thread::sleep_for(milliseconds(60));
    EXPECT_EQ(zxxCount, 0) << "it plays on when the output opens again";
    FSOUND_Close();
}

TEST(Fsound, SilentOutputKeepsTime)
{
    FSOUND_SetOutput(0);
    ASSERT_TRUE(FSOUND_Init(kRateHz, 64, 1));
    const Clock::time_point start = Clock::now();
    FMUSIC_MODULE* const module = playSteadyModule();
    std::this_thread::sleep_for(milliseconds(600));
    // A busy machine delays the thread, and then it catches up; a wrong pace only gets worse.
    double rowsLate = 0;
    for (int i = 0; i < 20; ++i) {
        const int count = zxxCount;
        rowsLate = std::chrono::duration<double>(Clock::now() - start).count() / 0.020 - count;
        if (std::abs(rowsLate) < 4.0) {
            break;
        }
        std::this_thread::sleep_for(milliseconds(50));
    }
    EXPECT_NEAR(rowsLate, 0.0, 4.0);
    closeQuickly(module);
}

// SDL's video is up and its audio is not when the show asks for sound.
TEST(Fsound, PlaysThroughSdl)
{
    const std::string recording = writeTemporary("recording.raw", {});
    ::setenv("SDL_VIDEODRIVER", "dummy", 1);
    ::setenv("SDL_DISKAUDIOFILE", recording.c_str(), 1);
    ::setenv("SDL_DISKAUDIODELAY", "0", 1); // the disk takes blocks as fast as they come
    for (const char* driver : {"dummy", "disk"}) {
        SCOPED_TRACE(driver);
        ::setenv("SDL_AUDIODRIVER", driver, 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0);
        ASSERT_TRUE(FSOUND_Init(kRateHz, 64, 1));
        FMUSIC_MODULE* const module = playSteadyModule();
        for (int waits = 0; zxxCount < 10 && waits < 500; ++waits) {
            std::this_thread::sleep_for(milliseconds(10));
        }
        EXPECT_GE(zxxCount, 10);
        closeQuickly(module);
        SDL_Quit();
    }
    std::ifstream file(recording, std::ios::binary);
    const std::string samples(std::istreambuf_iterator<char>(file), {});
    EXPECT_NE(samples.find_first_not_of('\0'), std::string::npos);

    ::setenv("SDL_AUDIODRIVER", "nosuchdriver", 1);
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0);
    EXPECT_FALSE(FSOUND_Init(kRateHz, 64, 1));
    EXPECT_EQ(FSOUND_GetError(), 3);
    SDL_Quit();
}
