#include "sound/mixer.h"
#include "tests/support/test_module.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr std::size_t kTick = 882; // frames at tempo 125
constexpr std::size_t kPiece = 32;

using Samples = std::vector<std::int16_t>;
using Event = std::pair<std::size_t, int>; // the piece where the row begins, and the parameter

std::size_t framesMixed = 0;
std::vector<Event> events;

Event at(double tick, int parameter)
{
    return {static_cast<std::size_t>(tick * kTick) / kPiece, parameter};
}

std::unique_ptr<FMUSIC_MODULE> load(Bytes file)
{
    std::vector<ZxxCell> cells;
    EXPECT_EQ(takeZxxCells(file, cells), SoundError::none);
    auto module = std::make_unique<FMUSIC_MODULE>(file, cells);
    module->callback = [](FMUSIC_MODULE*, unsigned char parameter) {
        events.emplace_back(framesMixed / kPiece, parameter);
    };
    return module;
}

Samples mix(Mixer& mixer, std::size_t frames, std::size_t blockFrames = kPiece)
{
    Samples samples(frames * kMixChannels);
    events.clear();
    for (framesMixed = 0; framesMixed < frames; framesMixed += blockFrames) {
        const std::size_t block = std::min(blockFrames, frames - framesMixed);
        mixer.mix(std::span(samples).subspan(framesMixed * kMixChannels, block * kMixChannels));
    }
    return samples;
}

Samples playFromStart(const Bytes& file, std::size_t frames, std::size_t blockFrames = kPiece)
{
    const auto module = load(file);
    Mixer mixer;
    mixer.play(*module);
    return mix(mixer, frames, blockFrames);
}

bool isSilent(std::span<const std::int16_t> samples)
{
    return std::ranges::all_of(samples, [](std::int16_t sample) { return sample == 0; });
}

// Parameters that would set filters and choose their kinds. The second pattern is twice as fast.
const std::string kBusyPatterns =
    "Z10 Z80 / ... ... ... Z7F / ZF0 Z05 / / Z00 / ... ... ... FFA | Z90 / / Z20 / ";

} // namespace

// Nor do the blocks matter.
TEST(Zxx, NeverChangesTheSound)
{
    XmModule module = makeModule(6, kBusyPatterns);
    XmModule plain = makeModule(6, withoutZxx(kBusyPatterns));
    for (const char* tracker : {"FastTracker v2.00", "MadTracker 2.0", "OpenMPT 1.30.01.00",
                                "MilkyTracker 1.02", "Skale Tracker", "ModPlug Tracker"}) {
        for (const bool packed : {false, true}) {
            module.tracker = plain.tracker = tracker;
            const auto heard = playFromStart(writeAs(module, 0x0104, packed), 40 * kTick, 512);
            EXPECT_FALSE(isSilent(heard));
            EXPECT_TRUE(heard == playFromStart(writeAs(plain, 0x0104, packed), 40 * kTick, 735))
                << tracker << (packed ? ", packed" : ", unpacked");
        }
    }
}

// Rows begin where speed and tempo put them, and each one's effects come in channel order. Every
// course ends by starting anew.
TEST(Zxx, ComesWithItsRow)
{
    // By hand, since the formatter stumbles over lists in tables.
    // clang-format off
    const std::vector<std::tuple<int, const char*, std::vector<Event>>> courses = {
        {6, "Z01 Z02 ... Z03 / ... ... ZFF", // several on a row
         {at(0, 1), at(0, 2), at(0, 3), at(6, 255), at(12, 1), at(12, 2), at(12, 3)}},
        {4, "Z01 F03 / Z02 FFA / Z03 F7D F04", // speed and tempo
         {at(0, 1), at(3, 2), at(4.5, 3), at(8.5, 1)}},
        {2, "Z01 / D02 / Z63 | Z62 / / Z02", // a break to a row
         {at(0, 1), at(4, 2), at(6, 1)}},
        {2, "Z01 / Z02 B00 / Z63", // a jump back
         {at(0, 1), at(2, 2), at(4, 1)}},
        {2, "Z01 EE3 / Z02", // a delayed row comes once
         {at(0, 1), at(8, 2), at(10, 1)}},
        {2, "Z01 E60 / ... E62 / Z02", // looped rows come again
         {at(0, 1), at(4, 1), at(8, 1), at(12, 2), at(14, 1)}},
    };
    // clang-format on
    for (const auto& [speed, patterns, expected] : courses) {
        const std::size_t frames = expected.back().first * kPiece + kTick;
        playFromStart(writeXm(makeModule(speed, patterns)), frames);
        EXPECT_EQ(events, expected) << patterns;
    }
}

TEST(Mixer, JumpsToOrders)
{
    const auto module = load(writeXm(makeModule(6, kBusyPatterns)));
    Mixer mixer;
    mixer.play(*module);
    EXPECT_FALSE(isSilent(mix(mixer, kTick)));
    ASSERT_TRUE(mixer.jump(*module, 1));
    EXPECT_TRUE(isSilent(mix(mixer, kTick))) << "it sounds on, with no note there";
    ASSERT_TRUE(mixer.jump(*module, 1)); // to the very row where it stands
    mix(mixer, 11 * kTick);
    // In the tempo that was set before the second order.
    EXPECT_EQ(events, (std::vector{at(0, 0x90), at(6, 0x20)}));

    for (const int order : {-1, 2, 255, 1 << 30}) {
        EXPECT_FALSE(mixer.jump(*module, order)) << order;
    }
    EXPECT_FALSE(isSilent(mix(mixer, 2 * kTick)));
    EXPECT_EQ(events, (std::vector{at(1, 0x10), at(1, 0x80)})) << "the refused jumps did something";
    mixer.setGain(*module, 0.0F);
    EXPECT_TRUE(isSilent(mix(mixer, kTick)));
}

// Blocks of ten seconds, one right after the other, and a callback that asks for the lock itself.
TEST(Mixer, LetsTheMainThreadInWhateverItDoes)
{
    using Clock = std::chrono::steady_clock;
    static Mixer mixer;
    const auto module = load(writeXm(makeModule(6, kBusyPatterns)));
    module->callback = [](FMUSIC_MODULE* caller, unsigned char) { mixer.setGain(*caller, 1.0F); };
    Samples block(std::size_t{10} * kMixRateHz * kMixChannels);
    std::atomic<bool> quit = false;
    std::atomic<int> blocks = 0;
    std::thread flatOut([&] {
        for (; !quit; ++blocks) {
            mixer.mix(block);
        }
    });
    std::vector<Clock::duration> waits;
    for (int i = 0; i < 20; ++i) {
        mixer.play(*module);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const Clock::time_point start = Clock::now();
        mixer.jump(*module, 0);
        mixer.setCallback(*module, module->callback);
        mixer.stop(*module);
        waits.push_back(Clock::now() - start);
    }
    // The block that was stopped, and a whole one after it.
    for (const int stopped = blocks; blocks < stopped + 2;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    quit = true;
    flatOut.join();
    EXPECT_TRUE(isSilent(std::span(block).last(kMixRateHz)));
    std::ranges::sort(waits);
    // The longest one may be the machine's doing.
    EXPECT_LT(waits[waits.size() / 2], std::chrono::milliseconds(100));
}
