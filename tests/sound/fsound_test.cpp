#include "sound/fsound.h"
#include "sound/module.h"
#include "tests/support/test_module.h"

#include <SDL.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

const std::string kPath = testing::TempDir() + "kso_sound_" + std::to_string(::getpid());

// A Zxx in each row, and a row every 20 ms.
const Bytes kSteadyFile = writeXm(makeModule(1, "Z40 / Z40 / Z40 / Z40"));

std::atomic<int> zxxCount;

bool open()
{
    return FSOUND_Init(44100, 64, 1) != 0;
}

bool openSilently()
{
    return FSOUND_SetOutput(0) != 0 && open();
}

int errorOf(bool succeeded)
{
    return succeeded ? 0 : FSOUND_GetError();
}

FMUSIC_MODULE* load(const Bytes& bytes)
{
    std::ofstream file(kPath, std::ios::binary);
    std::ranges::copy(bytes, std::ostreambuf_iterator<char>(file));
    file.close();
    FMUSIC_MODULE* const module = FMUSIC_LoadSong(kPath.c_str());
    std::filesystem::remove(kPath);
    return module;
}

FMUSIC_MODULE* playSteadyFile()
{
    FMUSIC_MODULE* const module = load(kSteadyFile);
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

// Other faults than a file that ends too early. Those behind the patterns are none to the player.
TEST(Fsound, NamesWhatIsWrongWithAFile)
{
    ASSERT_TRUE(openSilently());
    const int sampleAt = static_cast<int>(kSteadyFile.size()) - kSampleBytes - kSampleHeaderBytes;
    const int instrumentAt = sampleAt - kInstrumentBytes;
    // By hand, since the formatter stumbles over lists in tables.
    // clang-format off
    const std::vector<std::tuple<const char*, int, Bytes, int>> patches = {
        {"Good",                  0,                 {},                   0},
        {"NotAModule",            0,                 {'I', 'M', 'P', 'M'}, 10},
        {"OlderVersion",          58,                {0x01, 0x01},         13},
        {"NewerVersion",          58,                {0x05, 0x01},         13},
        {"HeaderTooShort",        60,                {19, 0},              11},
        {"HeaderPastTheEnd",      60,                {255, 255, 255, 255}, 11},
        {"NoChannels",            68,                {0},                  11},
        {"PatternHeaderTooShort", kPatternsAt,       {8},                  11},
        {"DefaultRows",           kPatternsAt + 5,   {0},                  0},
        {"InstrumentTooLong",     instrumentAt,      {255, 255, 255, 255}, 0},
        {"InstrumentFullSize",    instrumentAt,      {0, 0},               0},
        {"SecondSampleMissing",   instrumentAt + 27, {2},                  0},
        {"SampleCutShort",        sampleAt,          {255, 255, 255, 255}, 0},
    };
    // clang-format on
    for (const auto& [name, at, patch, error] : patches) {
        Bytes bytes = kSteadyFile;
        std::ranges::copy(patch, bytes.begin() + at);
        EXPECT_EQ(errorOf(load(bytes) != nullptr), error) << name;
    }
    Bytes huge = kSteadyFile;
    huge.resize((std::size_t{64} << 20U) + 1);
    EXPECT_EQ(errorOf(load(huge) != nullptr), 11);
    EXPECT_EQ(errorOf(FMUSIC_LoadSong("no/such.xm") != nullptr), 9);
    EXPECT_EQ(errorOf(FMUSIC_LoadSong("/dev/zero") != nullptr), 11);
    FSOUND_Close();
}

// Songs that lack bytes of an instrument play all the same.
TEST(Fsound, LoadsWhatEndsBehindItsPatterns)
{
    ASSERT_TRUE(openSilently());
    XmModule song = makeModule(6, "Z40 / Z41");
    song.instruments.resize(4, song.instruments[0]);
    const Bytes whole = writeXm(song);
    const std::size_t patternsEnd =
        whole.size() - std::size_t{4} * (kInstrumentBytes + kSampleHeaderBytes + kSampleBytes);
    for (std::size_t size = patternsEnd; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        FMUSIC_MODULE* const module = load(cut);
        ASSERT_NE(module, nullptr) << size << " of " << whole.size() << " bytes";
        EXPECT_EQ(module->zxxCells.size(), 2U);
        FMUSIC_FreeSong(module);
    }
    FSOUND_Close();
}

TEST(Fsound, SurvivesFlippedBytes)
{
    ASSERT_TRUE(openSilently());
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        Bytes bytes = kSteadyFile;
        for (int flips = 1 + i % 4; flips > 0; --flips) {
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        }
        FMUSIC_MODULE* const module = load(bytes);
        EXPECT_EQ(FMUSIC_PlaySong(module) != 0, module != nullptr);
        FMUSIC_FreeSong(module);
    }
    FSOUND_Close();
}

TEST(Fsound, BearsCallsOutOfOrder)
{
    EXPECT_EQ(errorOf(FMUSIC_LoadSong("x.xm") != nullptr), 2);
    EXPECT_EQ(errorOf(FSOUND_Init(1, 64, 1) != 0), 14);
    ASSERT_TRUE(openSilently());
    EXPECT_EQ(errorOf(open()), 1);
    EXPECT_EQ(errorOf(FMUSIC_LoadSong(nullptr) != nullptr), 14);

    FMUSIC_MODULE* const freed = playSteadyFile();
    EXPECT_FALSE(FMUSIC_SetOrder(freed, 1)); // there is one order only
    EXPECT_FALSE(FMUSIC_SetMasterVolume(freed, 257));
    EXPECT_TRUE(FMUSIC_FreeSong(freed)); // while it plays
    for (FMUSIC_MODULE* const module : {freed, static_cast<FMUSIC_MODULE*>(nullptr)}) {
        EXPECT_FALSE(FMUSIC_SetMasterVolume(module, 255) || FMUSIC_SetOrder(module, 0));
        EXPECT_FALSE(FMUSIC_SetZxxCallback(module, nullptr) || FMUSIC_PlaySong(module));
        EXPECT_FALSE(FMUSIC_StopSong(module) || FMUSIC_FreeSong(module));
    }
    playSteadyFile();
    FSOUND_Close(); // while it plays
    FSOUND_Close();
}

// A busy machine delays the thread, and then it catches up; a wrong pace only gets worse.
TEST(Fsound, SilentOutputKeepsTime)
{
    ASSERT_TRUE(openSilently());
    const Clock::time_point start = Clock::now();
    FMUSIC_MODULE* const module = playSteadyFile();
    std::this_thread::sleep_for(milliseconds(550));
    double rowsLate = 100.0;
    for (int i = 0; std::abs(rowsLate) >= 4.0 && i < 20; ++i) {
        std::this_thread::sleep_for(milliseconds(50));
        rowsLate =
            std::chrono::duration<double>(Clock::now() - start) / milliseconds(20) - zxxCount;
    }
    EXPECT_NEAR(rowsLate, 0.0, 4.0);
    closeQuickly(module);
}

// SDL's video is up and its audio is not when the show asks for sound.
TEST(Fsound, PlaysThroughSdl)
{
    ::setenv("SDL_VIDEODRIVER", "dummy", 1);
    ::setenv("SDL_DISKAUDIOFILE", (kPath + ".raw").c_str(), 1);
    ::setenv("SDL_DISKAUDIODELAY", "0", 1); // the disk takes blocks as fast as they come
    for (const char* driver : {"dummy", "disk"}) {
        ::setenv("SDL_AUDIODRIVER", driver, 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0);
        ASSERT_TRUE(open()) << driver;
        FMUSIC_MODULE* const module = playSteadyFile();
        for (int waits = 0; zxxCount < 10 && waits < 500; ++waits) {
            std::this_thread::sleep_for(milliseconds(10));
        }
        EXPECT_GE(zxxCount, 10) << driver;
        closeQuickly(module);
        SDL_Quit();
    }
    ::setenv("SDL_AUDIODRIVER", "missing", 1);
    EXPECT_EQ(errorOf(open()), 3);
    SDL_Quit();
    std::ifstream file(kPath + ".raw", std::ios::binary);
    const std::string samples(std::istreambuf_iterator<char>(file), {});
    EXPECT_NE(samples.find_first_not_of('\0'), std::string::npos);
    std::filesystem::remove(kPath + ".raw");
}
