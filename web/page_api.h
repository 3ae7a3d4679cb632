// What a page calls to play the show: the contract between the show and web/page/show.js.
//
// One instance of the program plays the show once. In this order: pageStart; then, for every frame,
// pageMix as often as needed, pageFrame, and pageFrameList if there is something new; until
// pageHasEnded, or until the page drops the instance. A page that wants frames exactly as the
// recorder has them calls pageVirtualFrame instead of pageMix and pageFrame.
//
// What the show calls fatal, like a missing picture, ends the program in the middle of a call, with
// its message on standard output or standard error; after that the instance is of no use.
#pragma once

#include "web/gl/frame_list.h"

#include <cstdint>

extern "C" {

// Begins the show as the program does, with a start scene from 2 to 7, or 0 for its beginning:
// reads pictures and music from "data" and starts the music. In virtual time, the time of day that
// seeds the random numbers is the recorder's.
void pageStart(int startScene, int isVirtual);

// Mixes the next `audioFrames` at 44100 Hz: first all of the left channel, then all of the right
// one, from -1 to 1. Valid until the next call.
const float* pageMix(int audioFrames);

// How many audio frames were mixed.
double pageMixed();

// The audio frame of the events that came last, to measure how far they are from their sound; -1 if
// none came.
double pageLatestEvent();

// Draws the frame of a moment: `seconds` since the beginning, while the sound is at `audioFrame`.
// Events of the music that are due by then come first. True if there is something new to show: for
// numbers that are no scene, the last frame stays.
int pageFrame(double seconds, double audioFrame);

// Draws the next frame of virtual time, at 60 frames a second, after mixing the sound up to its
// moment, one audio frame at a time.
int pageVirtualFrame();

// The sound of that frame, like pageMix's: the audio frames since the frame before it, up to and
// with its own moment's.
const float* pageVirtualSound();
int pageVirtualSoundLength(); // in audio frames

// What the latest frame is made of.
const FrameList* pageFrameList();

// Unpacks a file of show.pack (web/pack/packed_file.h). Its bytes are at pageUnpacked, and there
// are as many as this returns, until the next call; -1 if it was cut or damaged.
int pageUnpack(const std::uint8_t* packed, int length);
const std::uint8_t* pageUnpacked();

// The scene that the music has chosen, and whether it has ended the show.
int pageScene();
int pageHasEnded();
}
