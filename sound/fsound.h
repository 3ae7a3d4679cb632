// The sound library's interface as the music code calls it: output, one module, and the callback
// for the module's Zxx effects. The names, argument orders and error codes are the library's own;
// libopenmpt mixes the module at 44100 Hz, stereo, 16 bit, and SDL's audio plays it.
//
// All functions are for the main thread; the callback runs on the mixer thread. They return true on
// success. Otherwise they set the error and change nothing else, also for null and freed handles,
// a second FSOUND_Init and a missing one.
#pragma once

struct FMUSIC_MODULE;

// Receives the parameter of a Zxx effect that `module` has just performed. A row's effects come in
// channel order, while the block of 512 audio frames (11.6 ms) in which the row begins is mixed;
// the device plays it a little later. Zxx does nothing to the sound. Called on the mixer thread,
// with none of the sound library's locks held.
using FMUSIC_CALLBACK = void (*)(FMUSIC_MODULE* module, unsigned char parameter);

// The version of the interface.
float FSOUND_GetVersion();

// Chooses the output before FSOUND_Init. The only choice is 0, the silent output, which mixes at
// the pace of the clock and drops the sound. Without this call the sound goes to SDL's audio
// device. The choice holds until FSOUND_Close.
signed char FSOUND_SetOutput(int output);

// Chooses the output's driver before FSOUND_Init; the only one is 0.
signed char FSOUND_SetDriver(int driver);

// Opens the output and starts the mixer, at 44100 Hz only. False if no sound device can be opened.
// Channels and flags are ignored: every channel of a module is mixed.
signed char FSOUND_Init(int mixRateHz, int maxSoftwareChannels, unsigned int flags);

// The code of the latest error; 0 when there was none.
int FSOUND_GetError();

// Loads an XM module. The handle belongs to the caller until FMUSIC_FreeSong; null on failure:
// error 9 if there is no such file, 10 if it is not an XM file, 13 if its version is not 1.02 to
// 1.04, 11 if it is damaged, over 64 MiB or not a regular file, 12 if there is no memory for it.
FMUSIC_MODULE* FMUSIC_LoadSong(const char* path);

// 0 (silent) to 256 (the module's own level).
signed char FMUSIC_SetMasterVolume(FMUSIC_MODULE* module, int volume);

signed char FMUSIC_SetZxxCallback(FMUSIC_MODULE* module, FMUSIC_CALLBACK callback);

// Plays from the first order position on, over and over until it is stopped. A module that is
// already playing is replaced.
signed char FMUSIC_PlaySong(FMUSIC_MODULE* module);

// Continues at row 0 of an order position and performs that row's effects; sounding notes are cut.
// Tempo, speed and volume are those that the module would have there. An order position past the
// end of the order list is an error.
signed char FMUSIC_SetOrder(FMUSIC_MODULE* module, int order);

// Both end the sound and return at once. Until FSOUND_Close, callbacks of the row that the mixer is
// just performing may still come; their handle, if freed, may be compared but not used.
signed char FMUSIC_StopSong(FMUSIC_MODULE* module);
signed char FMUSIC_FreeSong(FMUSIC_MODULE* module);

// Ends the mixer and closes the output. Waits for a running callback; no callback comes after it
// has returned.
void FSOUND_Close();
