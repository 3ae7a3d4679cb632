// The show's script, as it stands in the module that is played.
#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <libopenmpt/libopenmpt.hpp>
#include <string>
#include <vector>

namespace {

using openmpt::module;

constexpr const char* kFile = "data/olvu.xm";
constexpr int kOrders = 31;
constexpr int kEndOrder = 30;
constexpr double kRowSeconds = 0.12;
constexpr int kFirstEvent = 64;

struct Section {
    int firstOrder;
    int scene;
    int firstEvent; // what the scene listens to
    int lastEvent;
};

constexpr std::array kSections = {
    Section{0,  0, 128, 132},
    Section{3,  1, 128, 137},
    Section{6,  2, 128, 131},
    Section{10, 3, 131, 131},
    Section{13, 4, 128, 131},
    Section{18, 5, 128, 137},
    Section{26, 6, 256, 255},
    Section{30, 7, 256, 255},
};

module loadShow()
{
    std::ifstream stream(kFile, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    return {bytes};
}

struct Place {
    int order;
    int row;
};

class Show : public testing::Test {
protected:
    [[nodiscard]] std::string effect(Place place, int channel) const
    {
        return song.format_pattern_row_channel_command(song.get_order_pattern(place.order),
                                                       place.row, channel, module::command_effect);
    }

    [[nodiscard]] int command(Place place, int channel, module::command_index index) const
    {
        return song.get_pattern_row_channel_command(song.get_order_pattern(place.order), place.row,
                                                    channel, index);
    }

    [[nodiscard]] bool hasNote(Place place, int channel) const
    {
        const int note = command(place, channel, module::command_note);
        return note >= 1 && note <= 120;
    }

    // The value of the row's Zxx, or -1.
    [[nodiscard]] int event(Place place) const
    {
        return effect(place, sync) == "Z" ? command(place, sync, module::command_parameter) : -1;
    }

    [[nodiscard]] bool setsOnRow(Place place, const std::string& letter, int parameter) const
    {
        for (int channel = 0; channel < sync; ++channel) {
            if (effect(place, channel) == letter &&
                command(place, channel, module::command_parameter) == parameter) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool isHeard(Place place) const
    {
        for (int channel = 0; channel < sync; ++channel) {
            if (hasNote(place, channel)) {
                return true;
            }
        }
        return false;
    }

    template <class Visit>
    void forEachRow(Visit visit) const
    {
        for (int order = 0; order < song.get_num_orders(); ++order) {
            const int rows = song.get_pattern_num_rows(song.get_order_pattern(order));
            for (int row = 0; row < rows; ++row) {
                visit(Place{order, row});
            }
        }
    }

    // The loudest sample of `seconds` from here on.
    double loudest(double seconds)
    {
        constexpr int kRateHz = 44100;
        std::vector<float> left(static_cast<std::size_t>(seconds * kRateHz));
        std::vector<float> right(left.size());
        song.read(kRateHz, left.size(), left.data(), right.data());
        float highest = 0.0F;
        for (std::size_t i = 0; i < left.size(); ++i) {
            highest = std::max({highest, std::abs(left[i]), std::abs(right[i])});
        }
        return double(highest);
    }

    module song = loadShow();
    int sync = song.get_num_channels() - 1;
};

const Section& sectionOf(int order)
{
    const auto later = [order](const Section& section) { return section.firstOrder <= order; };
    return *std::find_if(kSections.rbegin(), kSections.rend(), later);
}

} // namespace

TEST_F(Show, IsSmallAndHasItsOrders)
{
    EXPECT_EQ(song.get_num_orders(), kOrders);
    EXPECT_GE(song.get_num_channels(), 12);
    EXPECT_LE(song.get_num_channels(), 16);
    EXPECT_LT(std::filesystem::file_size(kFile), 2U * 1024 * 1024);
    forEachRow([&](Place place) { EXPECT_LT(place.row, 64); });
}

TEST_F(Show, KeepsZxxToItsLastChannel)
{
    forEachRow([&](Place place) {
        for (int channel = 0; channel < sync; ++channel) {
            EXPECT_NE(effect(place, channel), "Z") << place.order << ":" << place.row;
        }
        EXPECT_EQ(command(place, sync, module::command_note), 0);
        EXPECT_EQ(command(place, sync, module::command_volumeffect), 0);
        EXPECT_TRUE(effect(place, sync) == "Z" || effect(place, sync) == ".")
            << effect(place, sync);
    });
}

// Playback may begin at any section's first row.
TEST_F(Show, SelectsEachSceneWhereItsSectionBegins)
{
    for (const Section& section : kSections) {
        const Place first{section.firstOrder, 0};
        EXPECT_EQ(event(first), section.scene);
        if (section.firstOrder != kEndOrder) {
            EXPECT_TRUE(setsOnRow(first, "F", 6)) << "speed, order " << first.order;
            EXPECT_TRUE(setsOnRow(first, "F", 125)) << "tempo, order " << first.order;
            EXPECT_TRUE(setsOnRow(first, "G", 64)) << "volume, order " << first.order;
        }
    }
}

TEST_F(Show, MovesThePictureOnlyWithAHit)
{
    forEachRow([&](Place place) {
        const int value = event(place);
        const Section& section = sectionOf(place.order);
        if (value >= kFirstEvent) {
            EXPECT_TRUE(isHeard(place)) << place.order << ":" << place.row;
            EXPECT_GE(value, section.firstEvent) << place.order << ":" << place.row;
            EXPECT_LE(value, section.lastEvent) << place.order << ":" << place.row;
        } else if (value >= 0 && value != 8) {
            EXPECT_EQ(place.row, 0);
            EXPECT_EQ(place.order, section.firstOrder);
            EXPECT_EQ(isHeard(place), section.scene != 7);
        }
    });
}

TEST_F(Show, PullsTheCubesBackWithEveryHardKick)
{
    constexpr int kHardKick = 3;
    forEachRow([&](Place place) {
        if (sectionOf(place.order).scene == 4 && hasNote(place, 0) &&
            command(place, 0, module::command_instrument) == kHardKick) {
            const int value = event(place);
            EXPECT_TRUE(value == 128 || value == 4) << place.order << ":" << place.row;
        }
    });
}

TEST_F(Show, UsesEveryTitleAndGreeting)
{
    for (const int scene : {1, 5}) {
        std::array<int, 10> uses{};
        forEachRow([&](Place place) {
            if (sectionOf(place.order).scene == scene && event(place) >= kFirstEvent) {
                ++uses.at(std::size_t(event(place) - 128));
            }
        });
        EXPECT_EQ(std::count(uses.begin(), uses.end(), 0), 0) << "scene " << scene;
    }
}

TEST_F(Show, EndsAfterTwoOrThreeSecondsOfSilence)
{
    int endRow = -1;
    forEachRow([&](Place place) {
        if (event(place) == 8) {
            EXPECT_EQ(place.order, kEndOrder);
            endRow = place.row;
        }
        EXPECT_FALSE(place.order == kEndOrder && isHeard(place));
    });
    EXPECT_GE(endRow * kRowSeconds, 2.0);
    EXPECT_LE(endRow * kRowSeconds, 3.0);

    song.set_position_order_row(kEndOrder - 1, 0);
    EXPECT_GT(loudest(64 * kRowSeconds), 0.05);
    loudest(0.05); // the player's own ramps
    EXPECT_LT(loudest(endRow * kRowSeconds), 0.0005);
}

TEST_F(Show, IsHeardWithinItsFirstSecond)
{
    EXPECT_GT(loudest(1.0), 0.02);
}
