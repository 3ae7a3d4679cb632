// The show's music: plays the module and passes its cues on to the show.
#pragma once

struct FMUSIC_MODULE;

// Opens the sound library and loads "data/olvu.xm" without playing it. Ends the process with a
// message on standard output when either fails.
void initMusic();

// Starts the module where the start scene begins (see Options); from now on onZxx may be called.
void startMusic(int startScene);

// Stops and releases the module and closes the sound library.
void stopMusic();

// Called for every Zxx effect that the module performs, with its cue: 0-63 become the current
// scene, 64-255 are events, which go into the queue. Runs on the mixer thread.
void onZxx(FMUSIC_MODULE* module, unsigned char value);

// The text of one of the sound library's error codes.
const char* fmodErrorText(int code);
