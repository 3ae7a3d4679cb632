// The sound library's interface as the music code calls it: output, one module, and the callback
// for the module's Zxx effects. The names, argument orders and error codes are the library's own;
// the module is mixed by libopenmpt at 44100 Hz, stereo, 16 bit, and goes out through SDL's audio.
//
// All calls belong to the main thread; the callback runs on the mixer thread. They answer true when
// they did what was asked, and otherwise leave everything as it was and set the error: so too for
// null and freed handles, and for a second or a missing FSOUND_Init.
#pragma once

struct FMUSIC_MODULE;

// Receives the parameter of a Zxx effect that `module` has just performed. A row's effects come in
// channel order, when the block of 512 frames (11.6 ms) in which the row begins is mixed; the
// device plays it a little later. Zxx does nothing to the sound. Mixer thread, with none of the
// sound library's locks held.
using FMUSIC_CALLBACK = void (*)(FMUSIC_MODULE* module, unsigned char parameter);

// The version of the interface.
float FSOUND_GetVersion();

// Chooses the output before FSOUND_Init: 0 is the silent one, which plays against the clock and
// drops the sound, and there is no other number. Without this call the sound goes to SDL's audio
// device. The choice holds until FSOUND_Close.
signed char FSOUND_SetOutput(int output);

// Chooses the output's driver before FSOUND_Init; there is only the first, 0.
signed char FSOUND_SetDriver(int driver);

// Opens the output and starts the mixer, at 44100 Hz only. False when there is no device that it
// can play on. Channels and flags do not matter: every channel of a module is mixed.
signed char FSOUND_Init(int mixRateHz, int maxSoftwareChannels, unsigned int flags);

// The code of the latest error; 0 when there was none.
int FSOUND_GetError();

// Loads an XM module. The handle belongs to the caller until FMUSIC_FreeSong; null on failure:
// error 9 without such a file, 10 when it is no XM file, 13 for a version other than 1.02 to 1.04,
// 11 when it is damaged, over 64 MiB or no plain file.
FMUSIC_MODULE* FMUSIC_LoadSong(const char* path);

// 0 (silent) to 256 (the module's own level).
signed char FMUSIC_SetMasterVolume(FMUSIC_MODULE* module, int volume);

signed char FMUSIC_SetZxxCallback(FMUSIC_MODULE* module, FMUSIC_CALLBACK callback);

// Plays from the first order position on, over and over until it is stopped. A module that plays
// already gives way.
signed char FMUSIC_PlaySong(FMUSIC_MODULE* module);

// Continues at row 0 of an order position, whose effects are performed; what sounds is cut. Tempo,
// speed and volume are those that the module would have there. Past the end nothing happens.
signed char FMUSIC_SetOrder(FMUSIC_MODULE* module, int order);

// Both return at once, with the sound ended; callbacks of the row that the mixer is performing at
// that moment may still come until FSOUND_Close, with a handle that serves as no more than a name.
signed char FMUSIC_StopSong(FMUSIC_MODULE* module);
signed char FMUSIC_FreeSong(FMUSIC_MODULE* module);

// Ends the mixer and closes the output. It waits for a callback that is under way; no callback
// arrives once it has returned.
void FSOUND_Close();
