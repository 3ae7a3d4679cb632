// What the cues of a script mean, in words.
#pragma once

#include "cues/scenes_and_events.h"
#include "tools/sync_script/script.h"

#include <string>

// The event that a cue is; null if its scene does not react to it or if it is not an event.
const cues::Event* meaningOf(const PlayedCue& cue);

// "opening"; "freeze" if no scene has this number, since the last picture stays; "-" for the
// number that ends the show.
const char* sceneName(int scene);

// Whether there is a picture to be seen: false for the empty scene and if no scene has this number.
bool isPictured(int scene);

// The cue in words, as the show understands it.
std::string inWords(const PlayedCue& cue);

// As trackers show it: "Z80".
std::string asEffect(int value);
