// The sound library's interface as the music code calls it: output, one module, and the callback
// for the module's Zxx effects. The names, argument orders and error codes are the library's own;
// the module is mixed by libopenmpt at 44100 Hz, stereo, 16 bit, and goes out through SDL's audio.
//
// All calls belong to the main thread; the callback runs on the mixer thread.
#pragma once

struct FMUSIC_MODULE;

// Receives the parameter of a Zxx effect that `module` has just performed. Mixer thread.
using FMUSIC_CALLBACK = void (*)(FMUSIC_MODULE* module, unsigned char parameter);

// The version of the interface.
float FSOUND_GetVersion();

// Chooses the output before FSOUND_Init: 0 is the silent one, which plays against the clock and
// drops the sound. Without this call the sound goes to SDL's audio device.
signed char FSOUND_SetOutput(int output);

// Chooses the output's driver before FSOUND_Init; there is only the first, 0.
signed char FSOUND_SetDriver(int driver);

// Opens the output and starts the mixer. False when there is no device that it can play on.
signed char FSOUND_Init(int mixRateHz, int maxSoftwareChannels, unsigned int flags);

// The code of the latest error; 0 when there was none.
int FSOUND_GetError();

// Loads a module. The handle belongs to the caller until FMUSIC_FreeSong; null on failure.
FMUSIC_MODULE* FMUSIC_LoadSong(const char* path);

// 0 (silent) to 256 (the module's own level).
signed char FMUSIC_SetMasterVolume(FMUSIC_MODULE* module, int volume);

signed char FMUSIC_SetZxxCallback(FMUSIC_MODULE* module, FMUSIC_CALLBACK callback);

// Plays from the first order position on, over and over until it is stopped.
signed char FMUSIC_PlaySong(FMUSIC_MODULE* module);

// Continues at row 0 of an order position.
signed char FMUSIC_SetOrder(FMUSIC_MODULE* module, int order);

signed char FMUSIC_StopSong(FMUSIC_MODULE* module);
signed char FMUSIC_FreeSong(FMUSIC_MODULE* module);

// Ends the mixer and closes the output. No callback arrives once it has returned.
void FSOUND_Close();
