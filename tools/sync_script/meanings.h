// What the script's values mean, in words: the catalogue's, and more for whoever reads the script.
#pragma once

#include "cues/catalogue.h"
#include "tools/sync_script/script.h"

#include <string>

// Null for what does nothing in its scene, and for values that are no events.
const cues::Event* meaningOf(const Cue& cue);

// "opening"; "-" for what is no scene.
const char* sceneName(int scene);

// Whether something is drawn: not for the empty scene, and not for what is no scene.
bool isPictured(int scene);

// The cue in words, as the show understands it.
std::string inWords(const Cue& cue);

// As trackers show it: "Z80".
std::string asEffect(int value);
