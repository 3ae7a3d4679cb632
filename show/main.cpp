// The whole show in the order in which it happens.

#include "base/window_and_view.h"
#include "show/display.h"
#include "show/music.h"
#include "show/options.h"
#include "show/scheduler.h"
#include "show/world.h"

#include <SDL.h>

namespace {

constexpr Uint32 kPauseMs = 1000;   // lets the display settle before the show
constexpr int kStatusAfterShow = 1; // 0 is the status of a failure

// Takes all of SDL's pending events; true if the viewer has pressed a key or closed the window.
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
