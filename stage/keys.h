// Which keys end the show.
#pragma once

#include <SDL.h>

// False for keys that are pressed for the sake of another one or of the machine: modifiers and
// locks, volume, playback, brightness, print screen, and keys that SDL has no name for.
bool isForTheShow(SDL_Scancode key);
