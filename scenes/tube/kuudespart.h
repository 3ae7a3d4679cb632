#pragma once

#include "cues/scenes_and_events.h"
#include "image/bitmap.h"
#include "render/bump_tube.h"
#include "render/screen_quad.h"
#include "scenes/part.h"

#include <array>
#include <cstddef>

// Scene 5, the tube and the greetings: a flight through a bulging, lit tube that rolls and sways.
// Over it ten lines of greetings, each a band of one picture, at random places that never change.
//
// Events (cues::tube) light one line each, which then fades by 2 % per drawn frame. Leaves depth
// testing on with GL_ALWAYS, and blending on.
class Kuudespart : public Part {
public:
    // Loads the pictures from "data". Needs the display.
    Kuudespart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    static constexpr std::size_t kLines = cues::tube::kEvents.size();

    struct Position {
        int x, y; // pixels of the view, a line's top left corner
    };

    void drawTube(float seconds);
    void drawLines();
    void drawLine(std::size_t k);
    void fadeLines();

    float tilt_ = 0.0F; // degrees about the x axis, of this frame
    BumpTube tube_;
    Bitmap heightMap_;
    Bitmap lightImage_;
    Bitmap ballImage_;
    Bitmap greetImage_;
    std::array<float, kLines> lineAlpha_{};
    ScreenQuad greetQuad_;
    std::array<Position, kLines> linePos_{};
};
