#pragma once

#include "image/bitmap.h"
#include "render/screen_quad.h"
#include "scenes/part.h"

// Scene 2, the image trail: over the warped grid, 25 copies of one picture, added up, the last of
// them twice, scatter from the top centre in a trembling walk and flicker.
//
// Events (cues::image_trail) choose how wide its steps are, or push the warp two seconds ahead.
// Leaves additive blending on.
class Kolmaspart : public Part {
public:
    // Loads the picture from "data". Needs the display.
    Kolmaspart();

    void syncEvent(int value) override;
    void drawFrame(float seconds) override;

private:
    void drawTrail(float seconds);
    void drawCopy(int x, int y);

    Bitmap image_;
    ScreenQuad quad_;
    float stepScale_ = 5.0F;  // pixels, of a step of the walk
    float timeOffset_ = 0.0F; // seconds, of the warp
};
