#include "tools/music_report/performance.h"

#include "art/music/score/score_reader.h"
#include "cues/scenes_and_events.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <libopenmpt/libopenmpt_ext.hpp>
#include <map>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace {

constexpr const char* kScore = "art/music/olvu.trk";

// libopenmpt counts notes from an octave further down, and has numbers of its own above them.
constexpr int kNotesBelow = 12;
constexpr int kLastNote = 120;

const std::map<std::string, std::string> kPlayerSettings = {
    {"load.skip_plugins", "1"},
};

// A player that owns nothing but itself.
struct Player {
    explicit Player(const std::vector<std::uint8_t>& file) : module(file, log, kPlayerSettings) {}

    std::ostream log{nullptr};
    openmpt::module_ext module;
};

} // namespace

Performance::Performance(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    file_.assign(std::istreambuf_iterator<char>(stream), {});
    if (file_.empty()) {
        throw std::runtime_error(path + ": there is no such file, or it is empty");
    }
    try {
        readRows();
        if (rows_.empty()) {
            throw std::runtime_error("it ends as it begins");
        }
        readNotes();
    } catch (const std::exception& fault) {
        throw std::runtime_error(path + ": " + fault.what());
    }
    readNames();
}

const std::string& Performance::instrument(int number) const
{
    static const std::string kNone;
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < instruments_.size() ? instruments_[index] : kNone;
}

std::int64_t Performance::startOf(int order) const
{
    const auto found = std::ranges::find(rows_, order, &RowStart::order);
    return found == rows_.end() ? samples_ : found->sample;
}

Sound Performance::playAll() const
{
    return play(kAll);
}

Sound Performance::playChannel(int channel) const
{
    return play(channel);
}

void Performance::readRows()
{
    std::istringstream stream(std::string(file_.begin(), file_.end()));
    RowWalk walk(stream);
    while (walk.next()) {
        const std::vector<RowEffect> effects = walk.effects();
        if (std::ranges::find(effects, cues::kEndOfShow, &RowEffect::value) != effects.end()) {
            samples_ = walk.row().sample;
            return;
        }
        rows_.push_back(walk.row());
    }
    samples_ = walk.samples();
}

void Performance::readNotes()
{
    using openmpt::module;
    const Player player(file_);
    const module& song = player.module;
    title_ = song.get_metadata("title");
    instruments_ = song.get_instrument_names();
    for (int channel = 0; channel < song.get_num_channels(); ++channel) {
        channels_.push_back(std::to_string(channel + 1));
        int instrument = 0;
        std::size_t last = notes_.size();
        for (const RowStart& row : rows_) {
            const auto cell = [&, pattern = song.get_order_pattern(row.order)](int column) {
                return int{song.get_pattern_row_channel_command(pattern, row.row, channel, column)};
            };
            if (const int named = cell(module::command_instrument); named != 0) {
                instrument = named;
            }
            const int note = cell(module::command_note);
            if (note == 0 || note > kLastNote) {
                continue;
            }
            if (last < notes_.size()) {
                notes_[last].end = row.sample;
            }
            last = notes_.size();
            notes_.push_back({channel, instrument, note - kNotesBelow, row.order, row.row,
                              row.sample, samples_});
        }
    }
    std::ranges::stable_sort(notes_, {}, &PlayedNote::begin);
}

void Performance::readNames()
{
    const Score score = readScore(kScore);
    if (score.title == title_ && score.channels.size() == channels_.size()) {
        std::ranges::transform(score.channels, channels_.begin(), &ScoreChannel::name);
        for (const ScoreSection& section : score.sections) {
            const auto first = static_cast<int>(section.firstOrder);
            if (first >= endOrder()) {
                break; // an older module than the score, or a part of it
            }
            if (!sections_.empty()) {
                sections_.back().endOrder = first;
            }
            sections_.push_back({section.name, first, endOrder()});
        }
    }
}

Sound Performance::play(int channel) const
{
    Player player(file_);
    if (channel != kAll) {
        auto* const controls = static_cast<openmpt::ext::interactive*>(
            player.module.get_interface(openmpt::ext::interactive_id));
        for (int i = 0; i < player.module.get_num_channels(); ++i) {
            controls->set_channel_mute_status(i, i != channel);
        }
    }
    // In pieces as small as the show's, since the player rounds a little differently with the
    // lengths that it is asked for.
    constexpr std::size_t kPiece = 32;
    const auto frames = static_cast<std::size_t>(samples_);
    Sound sound(frames * kSoundChannels);
    for (std::size_t at = 0; at < frames; at += kPiece) {
        player.module.read_interleaved_stereo(kSamplesPerSecond, std::min(kPiece, frames - at),
                                              &sound[at * kSoundChannels]);
    }
    return sound;
}

std::string noteName(int note)
{
    constexpr std::array kNames = {"C-", "C#", "D-", "Eb", "E-", "F-",
                                   "F#", "G-", "Ab", "A-", "Bb", "B-"};
    const int index = note - 1;
    return kNames.at(static_cast<std::size_t>(index % 12)) + std::to_string(index / 12);
}

std::string clock(std::int64_t sample)
{
    const auto tenths = static_cast<int>((sample * 10 + 22050) / 44100);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d.%d", tenths / 600, tenths / 10 % 60,
                  tenths % 10);
    return text.data();
}
