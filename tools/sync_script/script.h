// The show's script: what its module tells the picture, and when.
//
// Times are in samples at kMixRateHz from the beginning on, as RowWalk finds them; order -1 is
// none.
#pragma once

#include "virtual/row_walk.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

// One Zxx effect.
struct PlayedCue {
    std::int64_t sample = 0; // where its row begins
    int order = 0;
    int row = 0;
    int channel = 0; // from 0
    int value = 0;
    int scene = 0;         // that is chosen by the end of the row: it draws the next frame
    bool isStruck = false; // whether a note begins in its row, on any channel
    bool isLetGo = false;  // whether one ends there: by a key off or by silence
};

// How loud a stretch of kLevelSamples is, both channels together, 1 at full scale.
struct Level {
    float peak = 0.0F;
    float rms = 0.0F;
};
constexpr std::int64_t kLevelSamples = 1024;

enum class ScriptEnd {
    kValue,   // the module ends the show
    kPlayed,  // it has come to its own end, or back to where it was
    kTooLong, // it was left after an hour
};

struct Script {
    std::string title;
    std::vector<RowStart> rows;  // as they are played
    std::vector<PlayedCue> cues; // in the order of rows, within a row by channel
    std::vector<Level> levels;
    std::int64_t samples = 0; // how long it is
    ScriptEnd end = ScriptEnd::kPlayed;
};

// Says what is wrong with which file.
class ScriptError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Plays the XM file at `path` to its end value, to where it would begin to repeat itself, or for
// an hour, whatever comes first. Throws ScriptError.
Script readScript(const std::string& path);

// A scene from where it is chosen to where another one is.
struct SceneVisit {
    int scene = 0;
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

// One after the other from the beginning to the end; a value that chooses no scene is a visit too.
std::vector<SceneVisit> sceneVisits(const Script& script);

double secondsAt(std::int64_t sample);
