#pragma once

// A scene. It is built once, at start-up, loads what it needs in its constructor and is never
// destroyed. All operations run on the main thread.
class Part {
public:
    Part() = default;
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    virtual ~Part() = default;

    // Reacts to one event of the music, 64 to 255. Called only for the current scene, before it
    // draws, with the queue's lock held: it must be short and must not draw, use the queue or end
    // the process.
    virtual void syncEvent(int value) = 0;

    // Draws the whole frame at `seconds` of demo time: clears, draws, and swaps the buffers.
    virtual void drawFrame(float seconds) = 0;
};
