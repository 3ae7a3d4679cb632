// Errors, with the numbers that the sound library's callers expect.
#pragma once

enum class SoundError : int {
    none = 0,
    alreadyInitialised = 1,
    notInitialised = 2,
    noOutputDevice = 3,
    fileNotFound = 9,
    unknownFormat = 10,
    unreadableFile = 11,
    outOfMemory = 12,
    unknownVersion = 13,
    invalidParameter = 14,
};
