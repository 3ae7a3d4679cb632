#include "virtual/row_walk.h"

#include "sound/mixer.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

static_assert(kSamplesPerSecond == kMixRateHz && kSoundChannels == kMixChannels);

constexpr std::int64_t kPieceSamples = 32; // no row is as short as this
constexpr int kForEver = -1;

// Without its samples a module keeps its time, and is silent.
const std::map<std::string, std::string> kPlayerSettings = {
    {"load.skip_samples", "1"   },
    {"load.skip_plugins", "1"   },
    {"play.at_end",       "stop"},
};

} // namespace

RowWalk::RowWalk(std::istream& file) : RowWalk(Bytes(std::istreambuf_iterator<char>(file), {}))
{
}

RowWalk::RowWalk(Bytes file) : ahead_(file), behind_(file)
{
    behind_.module.set_repeat_count(kForEver);
    if (takeZxxCells(file, cells_) != SoundError::none) {
        throw std::runtime_error("the XM file is damaged");
    }
}

bool RowWalk::next()
{
    do {
        // Behind its last row the player stands on the next one already.
        if (samples() >= kLongest || ahead_.play(kPieceSamples) < kPieceSamples) {
            return false;
        }
    } while (ahead_.isAt(row_));
    row_ = {0, ahead_.module.get_current_order(), ahead_.module.get_current_row()};
    row_.sample = findStart();
    return true;
}

// The row begins in the piece that was played last. The first row is there before anything is
// played.
std::int64_t RowWalk::findStart()
{
    while (behind_.samples < samples() - kPieceSamples) {
        behind_.play(samples() - kPieceSamples - behind_.samples);
    }
    while (behind_.samples < samples() && !behind_.isAt(row_)) {
        behind_.play(1);
    }
    return std::max<std::int64_t>(behind_.samples - 1, 0);
}

std::vector<RowEffect> RowWalk::effects() const
{
    const openmpt::module& module = behind_.module;
    const int pattern = module.get_current_pattern();
    std::vector<RowEffect> effects;
    for (const ZxxCell& cell : cells_) {
        if (cell.pattern == pattern && cell.row == row_.row) {
            effects.push_back({0, cell.parameter});
        }
    }
    auto next = effects.begin();
    for (int channel = 0; channel < module.get_num_channels() && next != effects.end(); ++channel) {
        if (module.format_pattern_row_channel_command(pattern, row_.row, channel,
                                                      openmpt::module::command_effect) == "Z") {
            next++->channel = channel;
        }
    }
    return effects;
}

RowWalk::Player::Player(const Bytes& file) : module(file, noLog, kPlayerSettings)
{
}

std::int64_t RowWalk::Player::play(std::int64_t count)
{
    const auto wanted = std::min(static_cast<std::size_t>(count), unheard.size());
    const auto played = static_cast<std::int64_t>(module.read(kMixRateHz, wanted, unheard.data()));
    samples += played;
    return played;
}

bool RowWalk::Player::isAt(const RowStart& row) const
{
    return module.get_current_order() == row.order && module.get_current_row() == row.row;
}
