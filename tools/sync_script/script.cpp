#include "tools/sync_script/script.h"

#include "cues/catalogue.h"
#include "sound/mixer.h"
#include "sound/module.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <libopenmpt/libopenmpt.hpp>
#include <memory>
#include <ostream>
#include <span>
#include <utility>

namespace {

// As in the mixer: the player tells its position as of the end of what it rendered last. No row is
// as short as this.
constexpr std::size_t kPieceSamples = 32;
constexpr std::int64_t kLongest = std::int64_t{3600} * kMixRateHz;

const char* inWords(SoundError error)
{
    switch (error) {
    case SoundError::fileNotFound:
        return "there is no such file";
    case SoundError::unknownFormat:
        return "this is not an XM module";
    case SoundError::unknownVersion:
        return "this version of the XM format is unknown";
    case SoundError::outOfMemory:
        return "there is not enough memory";
    default:
        return "the file is damaged or cannot be read";
    }
}

bool isAt(const openmpt::module& player, const RowStart& row)
{
    return player.get_current_order() == row.order && player.get_current_row() == row.row;
}

// Plays the file as it stands, behind the player that is listened to, to find where rows begin and
// in which channels their effects are.
class Follower {
public:
    explicit Follower(std::ifstream&& file) : player_(file, noLog_)
    {
        player_.set_repeat_count(-1);
        // Nobody hears it.
        player_.set_render_param(openmpt::module::RENDER_INTERPOLATIONFILTER_LENGTH, 1);
    }

    // The sample at which `row` begins, which is known to lie in the piece that ends at `end`. The
    // first row is there before anything is played.
    std::int64_t findStart(const RowStart& row, std::int64_t end)
    {
        while (at_ < end - static_cast<std::int64_t>(kPieceSamples)) {
            advance(end - static_cast<std::int64_t>(kPieceSamples) - at_);
        }
        while (at_ < end && !isAt(player_, row)) {
            advance(1);
        }
        return std::max<std::int64_t>(at_ - 1, 0);
    }

    // The channels of the current row's Zxx effects.
    [[nodiscard]] std::vector<int> effectChannels() const
    {
        std::vector<int> channels;
        const int pattern = player_.get_current_pattern();
        const int row = player_.get_current_row();
        for (int channel = 0; channel < player_.get_num_channels(); ++channel) {
            if (player_.format_pattern_row_channel_command(
                    pattern, row, channel, openmpt::module::command_effect) == "Z") {
                channels.push_back(channel);
            }
        }
        return channels;
    }

private:
    void advance(std::int64_t samples)
    {
        const auto count = std::min(static_cast<std::size_t>(samples), unheard_.size());
        player_.read(kMixRateHz, count, unheard_.data());
        at_ += static_cast<std::int64_t>(count);
    }

    std::ostream noLog_{nullptr};
    openmpt::module player_;
    std::array<float, 4096> unheard_{};
    std::int64_t at_ = 0;
};

// Collects the levels of a sound that comes piece by piece.
class LevelMeter {
public:
    // `samples` are left and right in turn.
    void listen(std::span<const float> samples, std::vector<Level>& levels)
    {
        for (const float sample : samples) {
            peak_ = std::max(peak_, std::abs(sample));
            energy_ += static_cast<double>(sample) * static_cast<double>(sample);
            if (++heard_ == kLevelSamples * kMixChannels) {
                finish(levels);
            }
        }
    }

    void finish(std::vector<Level>& levels)
    {
        if (heard_ > 0) {
            const double meanSquare = energy_ / static_cast<double>(heard_);
            levels.push_back({peak_, static_cast<float>(std::sqrt(meanSquare))});
        }
        *this = {};
    }

private:
    float peak_ = 0.0F;
    double energy_ = 0.0;
    std::int64_t heard_ = 0;
};

class ScriptReader {
public:
    ScriptReader(FMUSIC_MODULE& module, Follower& follower) : module_(module), follower_(follower)
    {
        // The player knows when it is about to repeat itself.
        module_.player.set_repeat_count(0);
        module_.player.ctl_set_text("play.at_end", "stop");
    }

    Script read()
    {
        script_.title = module_.player.get_metadata("title");
        while (readPiece()) {
        }
        meter_.finish(script_.levels);
        return std::move(script_);
    }

private:
    // False at the end.
    bool readPiece()
    {
        std::array<float, kPieceSamples * kMixChannels> piece{};
        std::size_t count =
            module_.player.read_interleaved_stereo(kMixRateHz, kPieceSamples, piece.data());
        const std::int64_t begin = script_.samples;
        script_.samples += static_cast<std::int64_t>(count);

        // Behind its last row the player stands on the next one already.
        bool goesOn = count == kPieceSamples;
        if (goesOn && rowIsNew() && !readRow()) {
            script_.end = ScriptEnd::kValue;
            script_.samples = script_.rows.back().sample;
            count = static_cast<std::size_t>(script_.samples - begin);
            goesOn = false;
        } else if (script_.samples >= kLongest) {
            script_.end = ScriptEnd::kTooLong;
            goesOn = false;
        }
        meter_.listen(std::span(piece).first(count * kMixChannels), script_.levels);
        return goesOn;
    }

    [[nodiscard]] bool rowIsNew() const
    {
        return script_.rows.empty() || !isAt(module_.player, script_.rows.back());
    }

    // Takes the row where the player is now. False if it ends the show.
    bool readRow()
    {
        RowStart row{0, module_.player.get_current_order(), module_.player.get_current_row()};
        row.sample = follower_.findStart(row, script_.samples);
        script_.rows.push_back(row);

        const std::size_t first = script_.cues.size();
        addCues(row);
        const std::span<Cue> cues = std::span(script_.cues).subspan(first);
        for (const Cue& cue : cues) {
            if (!cues::isEvent(cue.value)) {
                scene_ = cue.value;
            }
        }
        for (Cue& cue : cues) {
            cue.scene = scene_;
        }
        return scene_ != cues::kEndOfShow;
    }

    void addCues(const RowStart& row)
    {
        const std::pair here(module_.player.get_current_pattern(), row.row);
        const auto place = [](const ZxxCell& cell) {
            return std::pair<int, int>(cell.pattern, cell.row);
        };
        const auto first = std::ranges::lower_bound(module_.zxxCells, here, {}, place);
        const auto last = std::ranges::upper_bound(module_.zxxCells, here, {}, place);
        const std::span<const ZxxCell> cells(first, last);
        if (cells.empty()) {
            return;
        }
        const std::vector<int> channels = follower_.effectChannels(); // in the cells' order
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const int channel = i < channels.size() ? channels[i] : 0;
            script_.cues.push_back({row.sample, row.order, row.row, channel, cells[i].parameter});
        }
    }

    FMUSIC_MODULE& module_;
    Follower& follower_;
    LevelMeter meter_;
    Script script_;
    int scene_ = 0;
};

} // namespace

Script readScript(const std::string& path)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    if (const SoundError error = loadModule(path.c_str(), module); error != SoundError::none) {
        throw ScriptError(path + ": " + inWords(error));
    }
    try {
        const auto follower = std::make_unique<Follower>(std::ifstream(path, std::ios::binary));
        return ScriptReader(*module, *follower).read();
    } catch (const openmpt::exception& fault) {
        throw ScriptError(path + ": " + fault.what());
    }
}

std::vector<SceneVisit> sceneVisits(const Script& script)
{
    std::vector<SceneVisit> visits = {
        {0, 0, script.samples}
    };
    for (const Cue& cue : script.cues) {
        if (!cues::isEvent(cue.value) && cue.scene != visits.back().scene) {
            visits.back().end = cue.sample;
            visits.push_back({cue.scene, cue.sample, script.samples});
        }
    }
    // The last one stays in any case: a show may end before its first sample.
    visits.erase(std::remove_if(visits.begin(), visits.end() - 1,
                                [](const SceneVisit& visit) { return visit.begin == visit.end; }),
                 visits.end() - 1);
    return visits;
}

double secondsAt(std::int64_t sample)
{
    return static_cast<double>(sample) / kMixRateHz;
}
