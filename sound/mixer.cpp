#include "sound/mixer.h"

#include <algorithm>
#include <cmath>

namespace {

// Audio frames that are mixed at a time. The player only tells which row it is in at the end of
// what it has rendered, so a new row is noticed up to one piece late.
constexpr std::size_t kPieceFrames = 32;
constexpr std::size_t kPieceSamples = kPieceFrames * kMixChannels;

constexpr float kFullScale = 32768.0F;

std::int16_t toSample(float value)
{
    const float clamped = std::clamp(value * kFullScale, -kFullScale, kFullScale - 1.0F);
    return static_cast<std::int16_t>(std::lrint(clamped));
}

bool seek(FMUSIC_MODULE& module, int order)
{
    if (order < 0 || order >= module.player.get_num_orders()) {
        return false;
    }
    module.player.set_position_order_row(order, 0);
    module.order = -1;
    return true;
}

// The cells of the module's current row.
std::span<const ZxxCell> currentCells(const FMUSIC_MODULE& module)
{
    const int pattern = module.player.get_current_pattern();
    const auto isBefore = [&](const ZxxCell& cell) {
        return cell.pattern != pattern ? cell.pattern < pattern : cell.row < module.row;
    };
    const auto isHere = [&](const ZxxCell& cell) {
        return cell.pattern == pattern && cell.row == module.row;
    };
    const std::span<const ZxxCell> cells = module.zxxCells;
    const auto first = std::ranges::partition_point(cells, isBefore);
    const auto end = std::find_if_not(first, cells.end(), isHere);
    return cells.subspan(static_cast<std::size_t>(first - cells.begin()),
                         static_cast<std::size_t>(end - first));
}

} // namespace

void Mixer::play(FMUSIC_MODULE& module)
{
    const std::scoped_lock held(lock_);
    seek(module, 0);
    playing_ = &module;
}

bool Mixer::jump(FMUSIC_MODULE& module, int order)
{
    const std::scoped_lock held(lock_);
    return seek(module, order);
}

void Mixer::stop(const FMUSIC_MODULE& module)
{
    const std::scoped_lock held(lock_);
    if (playing_ == &module) {
        playing_ = nullptr;
    }
}

void Mixer::stopAll()
{
    const std::scoped_lock held(lock_);
    playing_ = nullptr;
}

void Mixer::setGain(FMUSIC_MODULE& module, float gain)
{
    const std::scoped_lock held(lock_);
    module.gain = gain;
}

void Mixer::setCallback(FMUSIC_MODULE& module, FMUSIC_CALLBACK callback)
{
    const std::scoped_lock held(lock_);
    module.callback = callback;
}

void RowEffects::perform() const
{
    for (std::size_t i = 0; i < count; ++i) {
        callback(module, parameters[i]);
    }
}

void Mixer::mix(std::span<std::int16_t> samples)
{
    while (!samples.empty()) {
        RowEffects effects;
        samples = samples.subspan(mixPiece(samples, effects).size());
        effects.perform();
    }
}

std::span<std::int16_t> Mixer::mixPiece(std::span<std::int16_t> samples, RowEffects& effects)
{
    const std::scoped_lock held(lock_);
    const std::span<std::int16_t> piece = samples.first(std::min(samples.size(), kPieceSamples));
    effects.count = 0;
    if (playing_ == nullptr) {
        std::ranges::fill(piece, std::int16_t{0});
        return piece;
    }
    FMUSIC_MODULE& module = *playing_;

    // Rendered as floats and rounded here, since the player's own 16-bit output adds random noise.
    std::array<float, kPieceSamples> mixed{};
    module.player.read_interleaved_stereo(kMixRateHz, piece.size() / kMixChannels, mixed.data());
    std::transform(piece.begin(), piece.end(), mixed.begin(), piece.begin(),
                   [&](std::int16_t, float value) { return toSample(value * module.gain); });

    const int order = module.player.get_current_order();
    const int row = module.player.get_current_row();
    if (order == module.order && row == module.row) {
        return piece;
    }
    module.order = order;
    module.row = row;
    if (module.callback != nullptr) {
        effects.module = &module;
        effects.callback = module.callback;
        for (const ZxxCell& cell : currentCells(module)) {
            if (effects.count < effects.parameters.size()) {
                effects.parameters[effects.count] = cell.parameter;
                ++effects.count;
            }
        }
    }
    return piece;
}
