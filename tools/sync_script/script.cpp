#include "tools/sync_script/script.h"

#include "cues/scenes_and_events.h"
#include "sound/mixer.h"
#include "sound/module.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <fstream>
#include <libopenmpt/libopenmpt.hpp>
#include <memory>
#include <ostream>
#include <span>
#include <utility>

namespace {

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

// What the notes of a row do, on all channels together.
struct RowNotes {
    bool begin = false;
    bool end = false;
};

// A note that another one slides to does not begin anew, and one without volume is not heard.
RowNotes notesOf(const openmpt::module& player, const RowStart& row)
{
    using openmpt::module;
    constexpr int kFirstSpecialNote = 128; // key off and the like
    const int pattern = player.get_order_pattern(row.order);
    RowNotes notes;
    for (int channel = 0; channel < player.get_num_channels(); ++channel) {
        const auto asText = [&](int command) {
            return player.format_pattern_row_channel_command(pattern, row.row, channel, command);
        };
        const int note =
            player.get_pattern_row_channel_command(pattern, row.row, channel, module::command_note);
        const std::string effect = asText(module::command_effect);
        const bool isSilenced = asText(module::command_volumeffect) == "v" &&
                                player.get_pattern_row_channel_command(pattern, row.row, channel,
                                                                       module::command_volume) == 0;
        const bool slides = effect == "3" || effect == "5";
        const bool isNote = note > 0 && note < kFirstSpecialNote;
        notes.begin = notes.begin || (isNote && !isSilenced && !slides);
        notes.end = notes.end || isSilenced || note >= kFirstSpecialNote;
    }
    return notes;
}

// Takes the row's effects. Returns the scene that is chosen by the row's end.
int takeRow(const RowWalk& walk, const openmpt::module& player, int scene, Script& script)
{
    const RowStart& row = walk.row();
    script.rows.push_back(row);
    const std::vector<RowEffect> effects = walk.effects();
    for (const RowEffect& effect : effects) {
        scene = cues::isEvent(effect.value) ? scene : effect.value;
    }
    const RowNotes notes = effects.empty() ? RowNotes{} : notesOf(player, row);
    for (const auto& [channel, value] : effects) {
        script.cues.push_back(
            {row.sample, row.order, row.row, channel, value, scene, notes.begin, notes.end});
    }
    return scene;
}

void takeRows(RowWalk& walk, const openmpt::module& player, Script& script)
{
    int scene = 0;
    while (walk.next()) {
        scene = takeRow(walk, player, scene, script);
        if (scene == cues::kEndOfShow) {
            script.end = ScriptEnd::kValue;
            script.samples = walk.row().sample;
            return;
        }
    }
    script.samples = walk.samples();
    script.end = walk.samples() < RowWalk::kLongest ? ScriptEnd::kPlayed : ScriptEnd::kTooLong;
}

// `samples` are left and right in turn.
Level levelOf(std::span<const float> samples)
{
    float peak = 0.0F;
    double energy = 0.0;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
        energy += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return {peak, static_cast<float>(std::sqrt(energy / static_cast<double>(samples.size())))};
}

// Plays the module on for as many samples as `stretch` has, in pieces as small as the show's
// mixer's, since the player rounds a little differently with the lengths that it is asked for.
void play(openmpt::module& player, std::span<float> stretch)
{
    constexpr std::size_t kPieceSamples = std::size_t{32} * kMixChannels;
    while (!stretch.empty()) {
        const std::span<float> piece = stretch.first(std::min(kPieceSamples, stretch.size()));
        player.read_interleaved_stereo(kMixRateHz, piece.size() / kMixChannels, piece.data());
        stretch = stretch.subspan(piece.size());
    }
}

// Plays the module from its beginning for so many samples.
std::vector<Level> levelsOf(openmpt::module& player, std::int64_t samples)
{
    std::vector<Level> levels;
    std::vector<float> stretch(kLevelSamples * kMixChannels);
    for (std::int64_t at = 0; at < samples; at += kLevelSamples) {
        stretch.resize(static_cast<std::size_t>(std::min(kLevelSamples, samples - at)) *
                       kMixChannels);
        play(player, stretch);
        levels.push_back(levelOf(stretch));
    }
    return levels;
}

} // namespace

Script readScript(const std::string& path)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    if (const SoundError error = loadModule(path.c_str(), module); error != SoundError::none) {
        throw ScriptError(path + ": " + inWords(error));
    }
    try {
        std::ifstream file(path, std::ios::binary);
        RowWalk walk(file);
        Script script;
        script.title = module->player.get_metadata("title");
        takeRows(walk, module->player, script);
        script.levels = levelsOf(module->player, script.samples);
        return script;
    } catch (const std::exception& fault) {
        throw ScriptError(path + ": " + fault.what());
    }
}

std::vector<SceneVisit> sceneVisits(const Script& script)
{
    std::vector<SceneVisit> visits = {
        {0, 0, script.samples}
    };
    for (const PlayedCue& cue : script.cues) {
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
