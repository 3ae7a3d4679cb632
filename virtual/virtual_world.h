// The virtual world of one process: a clock, sound and events for a program that is not changed and
// takes them for SDL's.
//
// There is one counter, of passes of the program's main loop; a pass is a frame and ends when no
// event is left. Whenever the program looks at the clock it reads the moment of the current frame
// and has heard the sound up to and including that moment. So what the music does at a moment
// reaches the first frame at or after it. Real time has no part in this.
#pragma once

#include "virtual/sink.h"
#include "virtual/timing.h"

#include <SDL.h>
#include <cstdint>
#include <ctime>
#include <map>
#include <optional>
#include <span>
#include <vector>

struct WorldSettings {
    FrameRate rate;
    std::uint32_t firstTicks = 0; // milliseconds on the clock when the program starts; may wrap
    std::multimap<std::uint64_t, Uint8> events; // SDL's types, by the frame whose pass has them
    std::optional<std::uint64_t> end;           // the window is closed before this frame
    Uint8 closingEvent = SDL_QUIT;              // or this happens instead
    std::uint64_t exactSoundFrom = 0;           // samples before this one may be rounded otherwise
};

class VirtualWorld {
public:
    VirtualWorld(WorldSettings settings, Sink& sink); // borrowed

    [[nodiscard]] Sink& sink() { return sink_; }

    // A look at the clock, with which a frame begins: hears the sound that is due and gives the
    // moment of the frame in milliseconds.
    std::uint32_t look();
    [[nodiscard]] std::time_t timeOfDay() const;
    // A frame lasts as long as it lasts; before the first one, the clock is set on by as much.
    void sleep(std::uint32_t milliseconds);

    // Sound is asked for one sample at a time: a player may round a little differently with the
    // lengths that it is asked for, and so it is the same at every frame rate. That is slow, so
    // before `exactSoundFrom` it is asked for up to a frame's moment at once. False, after a
    // message, for formats other than 44100 Hz, 16 bits and stereo. The callback is kept.
    bool openAudio(const SDL_AudioSpec& wanted);
    void pauseAudio(bool isPaused) { audioPlays_ = !isPaused; }
    void closeAudio() { audio_.reset(); }

    // What OpenGL has drawn is shown; only a pass's first swap counts.
    void swap();

    // The type of the next event of this pass. None ends the pass. The closing event comes in the
    // pass of the last frame before `end`, once it was shown. If that pass shows nothing, it may be
    // the show's own end and no frame; then the event comes a pass later.
    std::optional<Uint8> nextEvent();

private:
    void hearUntil(std::uint64_t sample);
    void ask(std::span<std::int16_t> samples);
    [[nodiscard]] bool closesNow() const;
    void endPass();

    WorldSettings settings_;
    Sink& sink_;
    std::uint64_t frame_ = 0;   // of the pass at hand
    bool isShown_ = false;      // it has swapped
    bool lastWasShown_ = true;  // the same of the pass before
    bool isClosed_ = false;     // the closing event was taken
    std::uint32_t delayed_ = 0; // milliseconds that the program slept before the first frame
    std::uint64_t heard_ = 0;   // samples since the first frame's moment
    std::optional<SDL_AudioSpec> audio_;
    bool audioPlays_ = false;
    std::vector<std::int16_t> samples_; // the latest that were heard
};

// The world of this process, in which SDL's calls end (virtual/calls.cpp). The library that links
// them defines it. It has to be there from the first call to the program's very end, since globals
// of the program still close the sound when those of libraries are gone.
VirtualWorld& world();
