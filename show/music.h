// The music on the stage: it plays the module and passes the module's Zxx effects on to the show.
#pragma once

struct FMUSIC_MODULE;

// Opens the sound library and loads "data/olvu.xm" without playing it. Ends the process with a
// message on standard output when either fails.
void initMusic();

// Starts the module at the place of the start scene (see Options); from here on onZxx may arrive.
void startMusic(int startScene);

// Stops and releases the module and closes the sound library.
void stopMusic();

// Hears every Zxx effect that the module performs: 0-63 set the current scene, 64-255 are sync
// events for it. Runs on the mixer thread; does nothing else.
void onZxx(FMUSIC_MODULE* module, unsigned char value);

// The text of one of the sound library's error codes.
const char* fmodErrorText(int code);
