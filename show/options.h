#pragma once

// What the command line chose. Written once by readOptions, before anything else runs.
struct Options {
    int fullscreen = 1; // "-window" makes it 0
    int noSound = 0;    // "-nosound" makes it 1
    int startScene = 0; // 2 to 9, or 0 to play from the beginning
};

extern Options options;

// Fills `options` from main's arguments. What an argument may be depends on its position; anything
// else there is ignored without a message.
void readOptions(int argumentCount, char** arguments);
