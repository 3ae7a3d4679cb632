#include "sound/mixer.h"
#include "tests/sound/test_module.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr std::size_t kTick = 882; // frames at tempo 125
constexpr std::size_t kPiece = 32;

using Samples = std::vector<std::int16_t>;

struct Event {
    std::size_t frame; // of the beginning of the block in which it came
    int parameter;
};
std::size_t framesMixed = 0;
std::vector<Event> events;

std::unique_ptr<FMUSIC_MODULE> load(const TestModule& source)
{
    std::vector<std::uint8_t> file = source.build();
    std::vector<ZxxCell> cells;
    EXPECT_EQ(takeZxxCells(file, cells), SoundError::none);
    auto module = std::make_unique<FMUSIC_MODULE>(file, cells);
    module->callback = [](FMUSIC_MODULE*, unsigned char parameter) {
        events.push_back({framesMixed, parameter});
    };
    return module;
}

Samples mix(Mixer& mixer, std::size_t frames, std::size_t blockFrames = kPiece)
{
    Samples samples(frames * kMixChannels);
    framesMixed = 0;
    events.clear();
    while (framesMixed < frames) {
        const std::size_t block = std::min(blockFrames, frames - framesMixed);
        mixer.mix(std::span(samples).subspan(framesMixed * kMixChannels, block * kMixChannels));
        framesMixed += block;
    }
    return samples;
}

Samples playFromStart(const TestModule& source, std::size_t frames, std::size_t blockFrames = 512)
{
    const auto module = load(source);
    Mixer mixer;
    mixer.play(*module);
    return mix(mixer, frames, blockFrames);
}

std::vector<int> parameters()
{
    std::vector<int> result;
    std::ranges::transform(events, std::back_inserter(result), &Event::parameter);
    return result;
}

// Notes in two channels, and parameters that would set filters and choose their kinds.
TestModule busyModule()
{
    TestModule module;
    module.orders = {0, 1};
    // clang-format off
    module.patterns = {
        {6, {{0, 0, 49, kZxx, 0x10}, {0, 1, 0, kZxx, 0x80}, {1, 3, 0, kZxx, 0x7F},
             {2, 1, 56, kZxx, 0x05}, {2, 0, 0, kZxx, 0xF0}, {3, 2, 40, 0, 0},
             {4, 2, 0, kZxx, 0x00}}},
        {4, {{0, 0, 37, kZxx, 0x90}, {2, 0, 44, kZxx, 0x20}}},
    };
    // clang-format on
    return module;
}

bool isSilent(std::span<const std::int16_t> samples)
{
    return std::ranges::all_of(samples, [](std::int16_t sample) { return sample == 0; });
}

} // namespace

TEST(Zxx, NeverChangesTheSound)
{
    constexpr std::size_t kFrames = 30 * kTick;
    for (const char* tracker : {"FastTracker v2.00", "MadTracker 2.0", "OpenMPT 1.30.01.00",
                                "MilkyTracker 1.02", "Skale Tracker", "ModPlug Tracker"}) {
        for (const unsigned version : {0x0102U, 0x0103U, 0x0104U}) {
            for (const bool packed : {false, true}) {
                TestModule module = busyModule();
                module.tracker = tracker;
                module.version = version;
                module.packed = packed;
                const Samples heard = playFromStart(module, kFrames);
                EXPECT_FALSE(isSilent(heard));
                EXPECT_EQ(heard, playFromStart(module.withoutZxx(), kFrames))
                    << tracker << ' ' << version << ' ' << packed;
            }
        }
    }
}

struct Course {
    const char* name;
    int speed;
    std::vector<TestPattern> patterns;
    std::vector<Event> expected; // with the very frame where the row begins
};

// Rows begin where speed and tempo put them, and each one's effects come in channel order within
// the piece where it begins. Every course ends by starting anew.
TEST(Zxx, ComesWithItsRow)
{
    // By hand, since the formatter stumbles over tables in tables.
    // clang-format off
    const std::vector<Course> courses = {
        {"SeveralOnARow", 6,
         {{2, {{0, 3, 0, kZxx, 3}, {0, 0, 49, kZxx, 1}, {0, 1, 0, kZxx, 2}, {1, 2, 0, kZxx, 255}}}},
         {{0, 1}, {0, 2}, {0, 3}, {6 * kTick, 255},
          {12 * kTick, 1}, {12 * kTick, 2}, {12 * kTick, 3}}},
        {"SpeedAndTempo", 4,
         {{3, {{0, 0, 0, kZxx, 1}, {0, 1, 0, 0xF, 3},
               {1, 0, 0, kZxx, 2}, {1, 1, 0, 0xF, 250},
               {2, 0, 0, kZxx, 3}, {2, 1, 0, 0xF, 125}, {2, 2, 0, 0xF, 4}}}},
         {{0, 1}, {3 * kTick, 2}, {9 * kTick / 2, 3}, {17 * kTick / 2, 1}}},
        {"BreakToARow", 2,
         {{8, {{0, 0, 0, kZxx, 1}, {1, 0, 0, 0xD, 2}, {2, 0, 0, kZxx, 99}}},
          {3, {{0, 0, 0, kZxx, 98}, {2, 0, 0, kZxx, 2}}}},
         {{0, 1}, {4 * kTick, 2}, {6 * kTick, 1}}},
        {"JumpBack", 2,
         {{4, {{0, 0, 0, kZxx, 1}, {1, 0, 0, kZxx, 2}, {1, 1, 0, 0xB, 0}, {2, 0, 0, kZxx, 99}}}},
         {{0, 1}, {2 * kTick, 2}, {4 * kTick, 1}}},
        {"DelayedRowComesOnce", 2,
         {{2, {{0, 0, 0, kZxx, 1}, {0, 1, 0, 0xE, 0xE3}, {1, 0, 0, kZxx, 2}}}},
         {{0, 1}, {8 * kTick, 2}, {10 * kTick, 1}}},
        {"LoopedRowsComeAgain", 2,
         {{3, {{0, 0, 0, kZxx, 1}, {0, 1, 0, 0xE, 0x60}, {1, 1, 0, 0xE, 0x62},
               {2, 0, 0, kZxx, 2}}}},
         {{0, 1}, {4 * kTick, 1}, {8 * kTick, 1}, {12 * kTick, 2}, {14 * kTick, 1}}},
    };
    // clang-format on
    for (const Course& course : courses) {
        SCOPED_TRACE(course.name);
        TestModule module;
        module.speed = course.speed;
        module.patterns = course.patterns;
        module.orders.clear();
        for (std::size_t i = 0; i < course.patterns.size(); ++i) {
            module.orders.push_back(static_cast<std::uint8_t>(i));
        }
        playFromStart(module, course.expected.back().frame + kTick, kPiece);

        ASSERT_EQ(events.size(), course.expected.size());
        for (std::size_t i = 0; i < events.size(); ++i) {
            EXPECT_EQ(events[i].parameter, course.expected[i].parameter) << "event " << i;
            EXPECT_LE(events[i].frame, course.expected[i].frame) << "event " << i;
            EXPECT_GT(events[i].frame + kPiece, course.expected[i].frame) << "event " << i;
        }
    }
}

TEST(Mixer, DoesNotDependOnBlocksOrOnWhatWasPlayedBefore)
{
    constexpr std::size_t kFrames = 70 * kTick;
    const Samples samples = playFromStart(busyModule(), kFrames);
    const std::vector<int> performed = parameters();
    EXPECT_EQ(performed.front(), 0x10);
    for (const std::size_t blockFrames : {std::size_t{7}, std::size_t{735}, kFrames}) {
        EXPECT_EQ(playFromStart(busyModule(), kFrames, blockFrames), samples) << blockFrames;
        EXPECT_EQ(parameters(), performed) << blockFrames;
    }

    const auto module = load(busyModule());
    Mixer mixer;
    mixer.play(*module);
    mixer.jump(*module, 1);
    const Samples fromSecond = mix(mixer, kFrames);
    mixer.play(*module);
    EXPECT_EQ(mix(mixer, kFrames), samples);
    EXPECT_TRUE(mixer.jump(*module, 1));
    EXPECT_EQ(mix(mixer, kFrames), fromSecond);
    mixer.setGain(*module, 0.0F);
    EXPECT_TRUE(isSilent(mix(mixer, kFrames)));
}

TEST(Mixer, JumpsToOrders)
{
    TestModule source = busyModule();
    source.patterns[0].cells.push_back({5, 3, 0, 0xF, 250});
    const auto module = load(source);
    Mixer mixer;
    mixer.play(*module);
    mix(mixer, kTick);
    ASSERT_TRUE(mixer.jump(*module, 1));
    mix(mixer, kTick);
    EXPECT_EQ(parameters(), (std::vector{0x90}));
    ASSERT_TRUE(mixer.jump(*module, 1)); // to the very row where it stands
    mix(mixer, 11 * kTick);
    // The tempo of 250 is set before the second order.
    EXPECT_EQ(parameters(), (std::vector{0x90, 0x20}));
    EXPECT_NEAR(static_cast<double>(events[1].frame), 6.0 * kTick, kPiece);

    for (const int order : {-1, 2, 255, 1 << 30}) {
        EXPECT_FALSE(mixer.jump(*module, order)) << order;
    }
    mix(mixer, 2 * kTick);
    EXPECT_EQ(parameters(), (std::vector{0x10, 0x80})) << "it goes on as if nothing was asked";
}

// With a plain mutex the greedy thread is mostly back in before the other one has woken up.
TEST(FairLock, LetsAWaiterInSoon)
{
    FairLock lock;
    std::atomic<int> turns = 0;
    std::atomic<bool> quit = false;
    std::thread greedy([&] {
        while (!quit) {
            const std::scoped_lock held(lock);
            ++turns;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    int waited = 0;
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const int before = turns;
        const std::scoped_lock held(lock);
        waited += turns - before;
    }
    quit = true;
    greedy.join();
    EXPECT_LT(waited, 20);
}

TEST(Mixer, LetsTheMainThreadInWhateverItDoes)
{
    const auto module = load(busyModule());
    module->callback = nullptr;
    Mixer mixer;
    Samples block(std::size_t{10} * kMixRateHz * kMixChannels);
    std::atomic<bool> quit = false;
    std::thread flatOut([&] {
        while (!quit) {
            mixer.mix(block);
        }
    });
    using Clock = std::chrono::steady_clock;
    std::vector<Clock::duration> waits;
    for (int i = 0; i < 20; ++i) {
        mixer.play(*module);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const Clock::time_point start = Clock::now();
        mixer.jump(*module, 0);
        mixer.setGain(*module, 0.5F);
        mixer.stop(*module);
        waits.push_back(Clock::now() - start);
    }
    quit = true;
    flatOut.join();
    std::ranges::sort(waits);
    // The longest one may be the machine's doing.
    EXPECT_LT(waits[waits.size() / 2], std::chrono::milliseconds(100));
}

// The callback waits for a lock that the main thread holds while it stops the music.
TEST(Mixer, StopsWhileACallbackWaits)
{
    static std::atomic<bool> inCallback;
    static std::atomic<bool> release;
    const auto module = load(busyModule());
    module->callback = [](FMUSIC_MODULE*, unsigned char) {
        inCallback = true;
        while (!release) {
            std::this_thread::yield();
        }
    };
    Mixer mixer;
    mixer.play(*module);
    Samples block(kMixRateHz * std::size_t{kMixChannels});
    std::thread mixerThread([&] { mixer.mix(block); });
    while (!inCallback) {
        std::this_thread::yield();
    }
    mixer.stop(*module);
    release = true;
    mixerThread.join();
    EXPECT_TRUE(isSilent(std::span(block).subspan(kPiece * kMixChannels)));
}
