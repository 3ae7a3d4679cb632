// What the script's values mean, in words.
#pragma once

#include "tools/sync_script/script.h"

#include <span>
#include <string>

// What becomes of an event after the moment when it comes.
enum class Lasting {
    kHit,    // dies away in no time
    kFades,  // within seconds
    kBegins, // until an event of the same name ends it
    kEnds,
};

// What an event does in a scene. Events of one name belong together.
struct Meaning {
    int scene;
    int value;
    const char* name;
    Lasting lasting;
    const char* words;
};

// The events that a scene listens to, by value; none for what is no scene.
std::span<const Meaning> meaningsIn(int scene);

// Null for what does nothing in its scene, and for values that are no events.
const Meaning* meaningOf(const Cue& cue);

// "opening"; "-" for what is no scene.
const char* sceneName(int scene);

// The cue in words, as the show understands it.
std::string inWords(const Cue& cue);

// As trackers show it: "Z80".
std::string asEffect(int value);
