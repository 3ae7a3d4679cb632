#pragma once

// A scene. It is built once, at start-up, loads what it needs in its constructor and is never
// destroyed. All operations run on the main thread.
class Part {
public:
    Part() = default;
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    virtual ~Part() = default;

    // One sync event of the music, 64 to 255. Only the current scene hears it, before it draws.
    // Called with the queue's lock held: short, draws nothing, leaves the queue alone and never
    // ends the process.
    virtual void syncEvent(int value) = 0;

    // Draws the whole frame of demo time `seconds`: clears, draws, and swaps the buffers.
    virtual void drawFrame(float seconds) = 0;
};
