// The whole show in the order in which it happens.

#include "runtime/display.h"
#include "runtime/music.h"
#include "runtime/options.h"
#include "runtime/scheduler.h"
#include "runtime/world.h"

#include <SDL.h>

namespace {

constexpr int kWindowWidth = 640;
constexpr int kWindowHeight = 480;
constexpr int kViewWidth = 640; // a letterbox in the window
constexpr int kViewHeight = 272;
constexpr Uint32 kPauseMs = 1000;   // lets the display settle before the show
constexpr int kStatusAfterShow = 1; // 0 is the status of a failure

// Takes every pending event; true when one of them ends the show.
bool viewerWantsOut()
{
    bool wantsOut = false;
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_KEYDOWN || event.type == SDL_QUIT) {
            wantsOut = true;
        }
    }
    return wantsOut;
}

// Frames follow each other as fast as the buffer swap lets them, until the viewer or the music ends
// the show.
void mainLoop()
{
    bool ending = false;
    while (!ending) {
        runFrame();
        ending = viewerWantsOut() || quitRequested != 0;
    }
    stopMusic();
}

} // namespace

int main(int argc, char** argv)
{
    readOptions(argc, argv);
    initVideo(kWindowWidth, kWindowHeight);
    initGL(kWindowWidth, kWindowHeight, kViewWidth, kViewHeight);
    initMusic();
    SDL_Delay(kPauseMs);
    buildWorld();
    startMusic(options.startScene);
    mainLoop();
    return kStatusAfterShow;
}
